// The engine: what every page and dialog does, whatever its rows.
#include "forms/form.h"

#include "core/text.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace torvane {

FormMarks formMarks;

namespace {

bool isEdit(const Row& row)
{
    return row.kind == RowKind::real || row.kind == RowKind::whole;
}

bool isChoice(const Row& row)
{
    return row.kind == RowKind::choice || row.kind == RowKind::radio || row.kind == RowKind::check;
}

RowState& stateOf(FormState& state, const Row& row)
{
    return state.rows[static_cast<size_t>(&row - state.form->rows.data())];
}

const RowState& stateOf(const FormState& state, const Row& row)
{
    return state.rows[static_cast<size_t>(&row - state.form->rows.data())];
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

void printText(FormState& state, const Row& row)
{
    RowState& own = stateOf(state, row);
    double shown = own.typed ? own.shown : row.shows ? row.shows(state, row) : storedAsShown(state.values, row);
    own.text = row.kind == RowKind::real ? formatText(row.format, shown) : formatText(row.format, toWhole(shown));
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

void readText(FormState& state, const Row& row)
{
    const std::string& text = stateOf(state, row).text;
    takeShown(state, row, row.kind == RowKind::real ? readReal(text) : readWhole(text));
}

// A notification of an edit box re-reads them all.
void readAllTexts(FormState& state)
{
    if (state.keepsUntyped)
        return;
    for (const Row& row : state.form->rows)
        if (isEdit(row) && isPresent(state, row))
            readText(state, row);
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
    state.fromDefaults = form.opensWith == OpensWith::initialValueMode && working.initialValueMode == 0;
    state.values = state.fromDefaults ? saved : working;
    for (const Row& row : form.rows)
        if (row.ofWorking)
            copyField(state.values, working, row);
    for (const Row& row : form.rows)
        if (isChoice(row) && row.offset != noField)
            holdChoice(state, row);
    state.entry = state.values;
    state.stored = state.values;
}

std::string limitMessage(const char* own, const char* frame, const char* name)
{
    return own ? own : formatText(frame, name ? name : "");
}

Verdict warning(std::string text)
{
    return {false, {{"warning", std::move(text)}}};
}

void append(Verdict& verdict, Verdict more)
{
    verdict.passed = verdict.passed && more.passed;
    for (Box& box : more.boxes)
        verdict.boxes.push_back(std::move(box));
}

Verdict judge(FormState& state)
{
    const Form& form = *state.form;
    if (!mayConfirm(state))
        return {false, {}};
    Verdict verdict = form.validate ? form.validate(state) : checkLimits(state, 0, form.rows.size());
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

void leaveMarks(Marks marks)
{
    formMarks.profile = formMarks.profile || marks == Marks::profile;
    formMarks.condition = formMarks.condition || marks == Marks::condition;
}

} // namespace

void openForm(FormState& state, const Form& form, const ParameterBlock& saved, const ParameterBlock& working,
              bool keepsUntyped)
{
    state = FormState();
    state.form = &form;
    state.keepsUntyped = keepsUntyped;
    state.rows.resize(form.rows.size());
    loadValues(state, saved, working);
    state.saveAsDefault = form.saveFlag != noField && loadField<int32_t>(working, form.saveFlag) != 0;
    if (form.opened)
        form.opened(state);
    for (const Row& row : form.rows) {
        if (!isEdit(row))
            continue;
        if (row.offset == noField && row.shows)
            takeShown(state, row, row.shows(state, row));
        printText(state, row);
    }
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
    if (row.kind == RowKind::path)
        return state.paths[static_cast<size_t>(row.index)];
    return stateOf(state, row).text;
}

double shownValue(const FormState& state, const Row& row)
{
    if (isChoice(row) && row.shows)
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
    stateOf(state, row).text = text;
    readText(state, row);
    readAllTexts(state);
    tellChanged(state, row);
}

void choose(FormState& state, const Row& row, int value)
{
    int count = row.kind == RowKind::check ? 2 : static_cast<int>(rowLabels(state, row).size());
    if (value < 0 || value >= count)
        return;
    readAllTexts(state);
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
    if (!isEdit(row))
        return;
    stateOf(state, row).typed = false;
    printText(state, row);
}

void setPath(FormState& state, const Row& row, std::string_view path)
{
    state.paths[static_cast<size_t>(row.index)] = path;
    tellChanged(state, row);
}

void showValue(FormState& state, const Row& row, double shown)
{
    takeShown(state, row, shown);
    printText(state, row);
}

void spin(FormState& state, const Row& row, bool up)
{
    readAllTexts(state);
    double value = shownValue(state, row);
    double next = up ? value + row.step : value - row.step;
    bool inside = up ? value < row.most : value > row.least;
    if (state.form->spinRule == SpinRule::staysInside)
        inside = next >= row.least && next <= row.most;
    if (!inside)
        return;
    showValue(state, row, next);
    readAllTexts(state);
    tellChanged(state, row);
}

Verdict pressButton(FormState& state, const Row& row, ParameterBlock& working)
{
    readAllTexts(state);
    return row.pressed ? row.pressed(state, row, working) : Verdict();
}

void buttonReturned(FormState& state, const Row& row, const ParameterBlock& working)
{
    if (row.returned)
        row.returned(state, row, working);
}

Verdict checkLimits(const FormState& state, size_t first, size_t end)
{
    for (const Row& row : state.form->rows.subspan(first, end - first)) {
        if (!isEdit(row) || !isPresent(state, row) || (row.checked && !row.checked(state, row)))
            continue;
        double value = shownValue(state, row);
        if (row.leastBinds && !(value >= row.least))
            return warning(limitMessage(row.tooSmall, "found too small value of %s", row.messageName));
        if (row.mostBinds && !(value <= row.most))
            return warning(limitMessage(row.tooLarge, "found too large value of %s", row.messageName));
    }
    return {};
}

Verdict confirmForm(FormState& state, ParameterBlock& working)
{
    readAllTexts(state);
    const Form& form = *state.form;
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
    leaveMarks(form.marks);
    return verdict;
}

void cancelForm(const FormState& state, ParameterBlock& working)
{
    if (state.form->undone)
        state.form->undone(state, working);
}

} // namespace torvane
