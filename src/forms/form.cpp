// The engine: what every page and dialog does, whatever its rows.
#include "forms/form.h"

#include "core/choices.h"
#include "core/text.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace torvane {

namespace {

size_t indexOf(const FormState& state, const Row& row)
{
    return static_cast<size_t>(&row - state.form->rows.data());
}

RowState& stateOf(FormState& state, const Row& row)
{
    return state.rows[indexOf(state, row)];
}

const RowState& stateOf(const FormState& state, const Row& row)
{
    return state.rows[indexOf(state, row)];
}

template <typename Value>
Value loadField(const ParameterBlock& block, size_t offset)
{
    Value value;
    std::memcpy(&value, reinterpret_cast<const char*>(&block) + offset, sizeof value);
    return value;
}

template <typename Value>
void storeField(ParameterBlock& block, size_t offset, Value value)
{
    std::memcpy(reinterpret_cast<char*>(&block) + offset, &value, sizeof value);
}

void copyField(ParameterBlock& to, const ParameterBlock& from, const Row& row)
{
    size_t size = row.kind == RowKind::real ? sizeof(double) : sizeof(int32_t);
    std::memcpy(reinterpret_cast<char*>(&to) + row.offset, reinterpret_cast<const char*>(&from) + row.offset, size);
}

int32_t toWhole(double value)
{
    constexpr double least = std::numeric_limits<int32_t>::min();
    constexpr double most = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::fmin(std::fmax(value, least), most));
}

double storedAsShown(const ParameterBlock& block, const Row& row)
{
    if (row.kind == RowKind::real)
        return loadField<double>(block, row.offset) * row.shownPerStored;
    return loadField<int32_t>(block, row.offset);
}

// As an edit box reads: as far as the text is a number. Words for infinity and the like are none.
double readReal(const std::string& text)
{
    double value = std::strtod(text.c_str(), nullptr);
    if (std::isfinite(value))
        return value;
    bool digits = text.find_first_of("0123456789") != text.npos;
    return digits && !std::isnan(value) ? std::copysign(std::numeric_limits<double>::max(), value) : 0;
}

double readWhole(const std::string& text)
{
    return toWhole(static_cast<double>(std::strtoll(text.c_str(), nullptr, 10)));
}

std::string textOf(const Row& row, double shown)
{
    return row.kind == RowKind::real ? formatText(row.format, shown) : formatText(row.format, toWhole(shown));
}

double readValue(const Row& row, const std::string& text)
{
    return row.kind == RowKind::real ? readReal(text) : readWhole(text);
}

void printText(FormState& state, const Row& row)
{
    RowState& own = stateOf(state, row);
    if (!own.typed)
        own.shown = row.shows ? row.shows(state, row) : storedAsShown(state.values, row);
    own.text = textOf(row, own.shown);
    state.printed[indexOf(state, row)] = own;
    if (row.offset != noField)
        copyField(state.printedValues, state.values, row);
}

void takeShown(FormState& state, const Row& row, double shown)
{
    RowState& own = stateOf(state, row);
    own.shown = shown;
    own.typed = true;
    if (row.offset == noField)
        return;
    if (row.kind == RowKind::real)
        storeField(state.values, row.offset, shown / row.shownPerStored);
    else
        storeField(state.values, row.offset, toWhole(shown));
}

void tellChanged(FormState& state, const Row& row)
{
    if (state.form->changed)
        state.form->changed(state, row);
}

// A stored index that its list does not have is taken as its first entry.
void holdChoice(FormState& state, const Row& row)
{
    int32_t value = loadField<int32_t>(state.values, row.offset);
    int32_t count = row.kind == RowKind::check ? 2 : static_cast<int32_t>(rowLabels(state, row).size());
    if (row.kind == RowKind::check)
        value = value != 0;
    storeField(state.values, row.offset, value < 0 || value >= count ? 0 : value);
}

void loadValues(FormState& state, const ParameterBlock& saved, const ParameterBlock& working)
{
    const Form& form = *state.form;
    state.fromDefaults = form.opensWith == OpensWith::initialValueMode && working.initialValueMode == initialDefaults;
    state.values = state.fromDefaults ? saved : working;
    for (const Row& row : form.rows)
        if (isChosen(row) && row.offset != noField)
            holdChoice(state, row);
    state.entry = state.values;
    state.stored = state.values;
}

// A value without digits behind those shown stays so: steps do not gather dust of the arithmetic.
double stepped(const Row& row, double value, double step)
{
    auto asPrinted = [&](double number) { return readValue(row, textOf(row, number)); };
    constexpr double dust = 1e-9;
    bool printedWhole = std::fabs(asPrinted(value) - value) <= dust * std::fmax(1, std::fabs(value));
    return printedWhole ? asPrinted(value + step) : value + step;
}

bool maySpin(SpinRule rule, const Row& row, double value, double next)
{
    bool up = next > value;
    switch (rule) {
    case SpinRule::overshoots:
        return up ? value < row.most : value > row.least;
    case SpinRule::staysInside:
        return next >= row.least && next <= row.most;
    case SpinRule::stopsAtLimit:
        return up ? next <= row.most : next >= row.least;
    }
    return false;
}

std::string limitMessage(const char* own, const char* frame, const char* name)
{
    return own ? own : formatText(frame, name ? name : "");
}

void append(Verdict& verdict, Verdict more)
{
    verdict.passed = verdict.passed && more.passed;
    for (Box& box : more.boxes)
        verdict.boxes.push_back(std::move(box));
}

void takeNumbers(FormState& state)
{
    for (const Row& row : state.form->rows)
        if (row.takesNumber)
            row.takesNumber(state, shownValue(state, row));
}

Verdict judge(FormState& state)
{
    const Form& form = *state.form;
    if (!mayConfirm(state))
        return {false, {}};
    Verdict verdict = form.validate ? form.validate(state) : checkLimits(state, 0, form.rows.size());
    if (verdict.passed)
        takeNumbers(state);
    if (verdict.passed && form.check)
        append(verdict, form.check(state));
    return verdict;
}

void storeRows(FormState& state, ParameterBlock& working)
{
    for (const Row& row : state.form->rows) {
        if (row.offset == noField || !isPresent(state, row))
            continue;
        copyField(working, state.values, row);
        copyField(state.stored, state.values, row);
    }
}

} // namespace

void openForm(FormState& state, const Form& form, const ParameterBlock& saved, const ParameterBlock& working,
              const Model& model, bool withoutControls, const LoadedRide& ride)
{
    state = FormState();
    state.ride = ride;
    state.form = &form;
    state.model = &model;
    state.withoutControls = withoutControls;
    state.rows.resize(form.rows.size());
    state.printed.resize(form.rows.size());
    loadValues(state, saved, working);
    state.saveAsDefault = form.saveFlag != noField && loadField<int32_t>(working, form.saveFlag) != 0;
    if (form.opened)
        form.opened(state);
    for (const Row& row : form.rows)
        if (isNumber(row))
            printText(state, row);
}

bool isPresent(const FormState& state, const Row& row)
{
    return !row.present || row.present(state, row);
}

bool isEnabled(const FormState& state, const Row& row)
{
    return isPresent(state, row) && (!row.enabled || row.enabled(state, row));
}

bool takesEffect(const FormState& state, const Row& row)
{
    return isEnabled(state, row) || (isPresent(state, row) && row.counts && row.counts(state, row));
}

bool mayConfirm(const FormState& state)
{
    return !state.form->mayConfirm || state.form->mayConfirm(state);
}

std::vector<std::string> rowLabels(const FormState& state, const Row& row)
{
    if (row.labelsNow)
        return row.labelsNow(state);
    return {row.labels.begin(), row.labels.end()};
}

std::string rowText(const FormState& state, const Row& row)
{
    if (row.kind == RowKind::label)
        return row.text ? row.text(state, row) : std::string();
    if (row.kind == RowKind::words)
        return state.plan.*row.words;
    if (row.kind == RowKind::path)
        return state.inputs.files[static_cast<size_t>(row.index)].path;
    return stateOf(state, row).text;
}

double shownValue(const FormState& state, const Row& row)
{
    if (isChosen(row) && row.shows)
        return row.shows(state, row);
    const RowState& own = stateOf(state, row);
    if (own.typed || row.offset == noField)
        return own.shown;
    return storedAsShown(state.values, row);
}

int chosenValue(const FormState& state, const Row& row)
{
    return toWhole(shownValue(state, row));
}

void typeText(FormState& state, const Row& row, std::string_view text)
{
    std::string& own = stateOf(state, row).text;
    own = text;
    takeShown(state, row, readValue(row, own));
    tellChanged(state, row);
}

void editText(FormState& state, const Row& row, std::string_view text)
{
    const RowState& printed = state.printed[indexOf(state, row)];
    if (text != printed.text)
        return typeText(state, row, text);
    stateOf(state, row) = printed;
    if (row.offset != noField)
        copyField(state.values, state.printedValues, row);
    tellChanged(state, row);
}

void choose(FormState& state, const Row& row, int value)
{
    int count = row.kind == RowKind::check ? 2 : static_cast<int>(rowLabels(state, row).size());
    bool chosenAlready = row.offset != noField && value == loadField<int32_t>(state.values, row.offset);
    if (value < 0 || value >= count || chosenAlready)
        return;
    std::vector<bool> before;
    for (const Row& other : state.form->rows)
        before.push_back(isPresent(state, other));
    if (row.takes)
        row.takes(state, row, value);
    else
        storeField(state.values, row.offset, static_cast<int32_t>(value));
    for (const Row& other : state.form->rows)
        if (isPresent(state, other) && !before[static_cast<size_t>(&other - state.form->rows.data())])
            reloadRow(state, other);
    tellChanged(state, row);
}

void reloadRow(FormState& state, const Row& row)
{
    if (row.offset == noField)
        return;
    copyField(state.values, state.stored, row);
    if (isNumber(row))
        reprintRow(state, row);
}

void reprintRow(FormState& state, const Row& row)
{
    stateOf(state, row).typed = false;
    printText(state, row);
}

void setPath(FormState& state, const Row& row, std::string_view path)
{
    if (row.kind == RowKind::words)
        state.plan.*row.words = path;
    else
        state.inputs.files[static_cast<size_t>(row.index)].path = path;
    tellChanged(state, row);
}

void showValue(FormState& state, const Row& row, double shown)
{
    takeShown(state, row, shown);
    printText(state, row);
}

void spin(FormState& state, const Row& row, bool up)
{
    double value = shownValue(state, row);
    double next = stepped(row, value, up ? row.step : -row.step);
    if (!maySpin(state.form->spinRule, row, value, next))
        return;
    showValue(state, row, next);
    tellChanged(state, row);
}

Verdict pressButton(FormState& state, const Row& row, ParameterBlock& working)
{
    return row.pressed ? row.pressed(state, row, working) : Verdict();
}

void buttonReturned(FormState& state, const Row& row, const ParameterBlock& working)
{
    if (row.returned)
        row.returned(state, row, working);
}

Verdict refuseRow(FormState& state, const Row& row, std::string text)
{
    state.refused = &row;
    return {false, {{"warning", std::move(text)}}};
}

Verdict checkLimits(FormState& state, size_t first, size_t end)
{
    for (const Row& row : state.form->rows.subspan(first, end - first)) {
        if (!isNumber(row) || !isPresent(state, row) || (row.checked && !row.checked(state, row)))
            continue;
        double value = shownValue(state, row);
        if (row.leastBinds && !(value >= row.least))
            return refuseRow(state, row, limitMessage(row.tooSmall, "found too small value of %s", row.messageName));
        if (row.mostBinds && !(value <= row.most))
            return refuseRow(state, row, limitMessage(row.tooLarge, "found too large value of %s", row.messageName));
    }
    return {};
}

Verdict confirmForm(FormState& state, ParameterBlock& working)
{
    const Form& form = *state.form;
    state.refused = nullptr;
    Verdict verdict = judge(state);
    if (!verdict.passed) {
        cancelForm(state, working);
        return verdict;
    }
    storeRows(state, working);
    if (form.store)
        form.store(state, working);
    if (form.saveFlag != noField)
        storeField(working, form.saveFlag, static_cast<int32_t>(state.saveAsDefault));
    return verdict;
}

void cancelForm(const FormState& state, ParameterBlock& working)
{
    if (state.form->undone)
        state.form->undone(state, working);
}

} // namespace torvane
