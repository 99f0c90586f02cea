// A page or dialog as data, and the one engine that loads, reads, validates and commits any of them.
// The front ends only move text: the desktop between controls and a FormState, the console between its arguments and a
// FormState. No window calls here, no limits anywhere else.
#pragma once

#include "core/parameter_block.h"
#include "core/verdict.h"
#include "forms/sheet.h"
#include "gps/loaded_ride.h"
#include "gps/prepare.h"
#include "model/model.h"
#include "plan/calibrate.h"
#include "plan/plan_entries.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace torvane {

struct FormState;
struct Row;

enum class RowKind : uint8_t {
    real,   // edit box over a double
    whole,  // edit box over an int32_t
    choice, // combo box over an int32_t: index of the label
    radio,  // radio buttons over an int32_t: index of the button
    check,  // check box over an int32_t: 0 or 1
    words,  // edit box over a text of FormState::plan, with or without a browse button
    path,   // edit box with a browse button; `index` of FormState::inputs
    label,  // static text or read-only edit box that the form computes
    button, // asks for another form, `child`
};

enum class Browse : uint8_t { none, openFit, openRide, saveFit, saveCsv, saveProfile, saveCourse };

constexpr size_t noField = SIZE_MAX;
constexpr int destinationPath = static_cast<int>(toolDestination); // `index` of a destination

using RowTest = bool (*)(const FormState&, const Row&);

// One control. Several rows may share a control id when the control serves another field under another choice: the one
// whose `present` holds is the one that the control shows, and at most one holds at a time. A row that comes to be
// present goes back to its stored value.
struct Row {
    RowKind kind;
    int id = 0;                    // edit box, combo box, check box, first radio button, static; 0: console alone
    int spin = 0;                  // up-down control or browse button, 0 none
    const char* name = nullptr;    // as the console names it: field of ParameterBlock, "source", "destination"
    size_t offset = noField;       // where in ParameterBlock
    const char* unit = "";         // as shown beside the control
    const char* format = "%7.1lf"; // of an edit box
    double step = 1;               // of the up-down control
    double least = 0, most = 0;    // in the unit shown; both are legal values
    bool leastBinds = true;        // false: a typed value below `least` is accepted, the limit holds the up-down alone
    bool mostBinds = true;         // the same above `most`
    double shownPerStored = 1;     // 3.6 where m/s are shown as kph
    const char* messageName = nullptr; // "a power": completes "found too small value of %s"
    const char* tooSmall = nullptr;    // whole messages where a row has its own
    const char* tooLarge = nullptr;
    std::span<const char* const> labels =
        {};                             // of a choice or of radio buttons; of a button: of all buttons with its name
    std::span<const int> radioIds = {}; // of radio buttons, in the order of their values
    int index = 0;                      // of a path; elsewhere which one of a family of rows this is
    Browse browse = Browse::none;
    int child = 0;         // form that a button opens
    bool kept = false;     // without a field: "save as default" writes it to the entry file
    const char* when = ""; // of rows that share their name: when this one is used, in words for the console

    RowTest present = nullptr; // null: always
    RowTest enabled = nullptr; // null: always
    RowTest checked = nullptr; // whether limits are tested; null: always while present
    RowTest counts = nullptr;  // whether its value takes effect while it is disabled; null: never
    // Labels that depend on the profile, instead of `labels`.
    std::vector<std::string> (*labelsNow)(const FormState&) = nullptr;
    std::string (*text)(const FormState&, const Row&) = nullptr; // of a label
    // What the control shows where that is not the field's own value: of an edit box without a field at opening, of a
    // choice, radio or check at any time (the stored value stays as it is).
    double (*shows)(const FormState&, const Row&) = nullptr;
    // A choice without a field of its own: its entry was chosen.
    void (*takes)(FormState&, const Row&, int value) = nullptr;
    // An edit box without a field: takes its value, within the limits, before the form's own check.
    void (*takesNumber)(FormState&, double shown) = nullptr;
    std::string PlanEntries::*words = nullptr;
    // A button: asked before the child opens; a verdict that did not pass keeps it closed.
    Verdict (*pressed)(FormState&, const Row&, ParameterBlock& working) = nullptr;
    // A button: after the child was confirmed.
    void (*returned)(FormState&, const Row&, const ParameterBlock& working) = nullptr;
};

// An edit box over a number.
inline bool isNumber(const Row& row)
{
    return row.kind == RowKind::real || row.kind == RowKind::whole;
}

// One of few values: a label, or on and off.
inline bool isChosen(const Row& row)
{
    return row.kind == RowKind::choice || row.kind == RowKind::radio || row.kind == RowKind::check;
}

// Where the private copy comes from.
enum class OpensWith : uint8_t {
    initialValueMode, // the saved copy when the preference is 0, else the working copy
    working,          // pages
};

// What an up-down control does at a limit.
enum class SpinRule : uint8_t {
    overshoots,  // pages: steps while the value is inside the limit, and may pass it by less than a step
    staysInside, // dialogs: steps only to a value within the limits
    stopsAtLimit // where any value may be typed: steps up to the greatest, down to the least, wherever it starts
};

// What accepting the page marks as changed, for the command of its sheet.
enum class Marks : uint8_t { nothing, profile, condition };

struct Form {
    int id;              // dialog template; of a page the id of its "save as default" box
    const char* title;   // of the dialog, or of the page's tab
    const char* confirm; // label of the confirming button; null for a page of a sheet
    int saveBox;         // "save as default" check box, 0 none
    size_t saveFlag;     // its int32_t flag in ParameterBlock; noField: none, the box does nothing
    OpensWith opensWith = OpensWith::initialValueMode;
    SpinRule spinRule = SpinRule::staysInside;
    Marks marks = Marks::nothing;
    std::span<const Row> rows;

    void (*opened)(FormState&) = nullptr;                         // after the copy is loaded, before texts are printed
    void (*changed)(FormState&, const Row&) = nullptr;            // after a row took a new value
    Verdict (*validate)(FormState&) = nullptr;                    // instead of the limits in row order
    Verdict (*check)(FormState&) = nullptr;                       // after the limits passed
    void (*store)(FormState&, ParameterBlock& working) = nullptr; // after the rows were stored
    void (*undone)(const FormState&, ParameterBlock& working) = nullptr; // after it was refused or cancelled
    bool (*mayConfirm)(const FormState&) = nullptr;                      // enables the confirming button; null: always
    const char* confirmNeeds = "";                                       // what it waits for, in words for the console
};

// What an edit box holds.
struct RowState {
    std::string text;
    double shown = 0;   // in the unit shown: the text as it reads, or what the program printed, to the last digit
    bool typed = false; // the shown value counts, not the field in `values`
};

// One open form.
struct FormState {
    const Form* form = nullptr;
    const Model* model = nullptr; // in force: lists of gears and teeth
    ParameterBlock values = {};   // the private copy, in stored units
    ParameterBlock entry = {};    // as it was when the form opened
    ParameterBlock stored = {};   // what a reloaded row goes back to: as at the opening, or as last confirmed
    bool fromDefaults = false;    // the private copy came from the saved block
    bool saveAsDefault = false;
    bool withoutControls = false; // rows that have no control can be entered as well (console)
    std::vector<RowState> rows;   // parallel to the form's rows
    // As the program printed them last, with the fields of their values: a text that is none but the printed one stands
    // for a value that can have more digits than are shown.
    std::vector<RowState> printed;
    ParameterBlock printedValues = {};
    const Row* refused = nullptr; // what the last confirmation refused; null: nothing, or no one entry
    // Entries that no block holds; the front end hands them to what runs once the form is confirmed. Never remembered.
    ToolInputs inputs;
    Preparation preparation;
    CalibrationOptions calibration;
    PlanEntries plan;
    LoadedRide ride; // whose settings are asked for: the loaded one, or the source once its button has looked at it
};

// Every form of the program by its id; null for an unknown one.
const Form* findForm(int id);
std::span<const Form* const> allForms();
// Pages of a property sheet in the order of their tabs.
std::span<const Form* const> sheetPages(Sheet sheet);

// Loads the private copy by the form's rule and prints all texts. The model outlives the open form.
void openForm(FormState& state, const Form& form, const ParameterBlock& saved, const ParameterBlock& working,
              const Model& model, bool withoutControls = false, const LoadedRide& ride = {});

bool isPresent(const FormState& state, const Row& row);
bool isEnabled(const FormState& state, const Row& row); // false where the row is not present
// Whether its value changes an answer: where it is enabled, and where what runs reads it all the same.
bool takesEffect(const FormState& state, const Row& row);
bool mayConfirm(const FormState& state);
std::vector<std::string> rowLabels(const FormState& state, const Row& row);
// What an edit box, a path or a label shows now.
std::string rowText(const FormState& state, const Row& row);
// The value of an edit box in the unit shown; the index of a choice or radio; 0 or 1 of a check.
double shownValue(const FormState& state, const Row& row);
int chosenValue(const FormState& state, const Row& row);

// The user typed into an edit box. Text that is no number reads as far as strtod or atoi reads it. Only what was typed
// is read: all other boxes keep their value to the last digit, whatever their format shows of it.
void typeText(FormState& state, const Row& row, std::string_view text);
// The same of a box that the user changed in place: the text that the program printed there brings its value back.
void editText(FormState& state, const Row& row, std::string_view text);
// The user chose the value of a choice, radio or check row. An index outside its labels changes nothing.
void choose(FormState& state, const Row& row, int value);
// Of a path or a text.
void setPath(FormState& state, const Row& row, std::string_view path);
// One press of the up-down control, up or down.
void spin(FormState& state, const Row& row, bool up);
// For the hooks of a form: shows a value in an edit box as if it had been typed to full precision; goes back to the
// stored value; prints anew what an edit box shows beside its field's own value.
void showValue(FormState& state, const Row& row, double shown);
void reloadRow(FormState& state, const Row& row);
void reprintRow(FormState& state, const Row& row);

// A button row was pressed: when the verdict passes, the front end opens the form `child`, and calls buttonReturned
// when that was confirmed.
Verdict pressButton(FormState& state, const Row& row, ParameterBlock& working);
void buttonReturned(FormState& state, const Row& row, const ParameterBlock& working);

// The limits of the rows from first up to, not including, end in their order: the first fault as a "warning" box.
Verdict checkLimits(FormState& state, size_t first, size_t end);
// The same for a rule of the form's own: a "warning" box about one entry.
Verdict refuseRow(FormState& state, const Row& row, std::string text);

// The confirming button: validates, checks, and on success stores into working with its "save as default" flag.
// Where it did not pass, working stays as it is (but for what `undone` puts back) and the form stays open; a
// page of a sheet closes all the same.
Verdict confirmForm(FormState& state, ParameterBlock& working);
// The cancelling button: what forms behind its buttons have stored in working since it was last confirmed goes back.
void cancelForm(const FormState& state, ParameterBlock& working);

} // namespace torvane
