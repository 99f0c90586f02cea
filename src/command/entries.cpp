#include "command/entries.h"

#include "command/nearest.h"
#include "core/text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace torvane {

namespace {

// Paths are given as files, not as entries.
bool goesBy(const Row& row, std::string_view name)
{
    return row.name && row.kind != RowKind::path && name == row.name;
}

// Of the rows with a name the one that the form shows and enables now.
const Row* bestRow(const FormState& state, std::string_view name)
{
    const Row* best = nullptr;
    int bestRank = -1;
    for (const Row& row : state.form->rows) {
        if (!goesBy(row, name) || row.kind == RowKind::button)
            continue;
        int rank = isPresent(state, row) + isEnabled(state, row);
        if (rank > bestRank) {
            best = &row;
            bestRank = rank;
        }
    }
    return best;
}

// Letters in one case, with one kind of blank.
std::string plain(std::string_view text)
{
    std::string result;
    for (char c : text)
        result += c == '-' || c == '_' ? ' ' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

std::string listed(const std::vector<std::string>& labels)
{
    std::string text;
    for (const std::string& label : labels)
        text += (text.empty() ? "" : " | ") + label;
    return text;
}

std::vector<std::string> labelsOf(const FormState& state, const Row& row)
{
    if (row.kind == RowKind::check)
        return {"off", "on"};
    return rowLabels(state, row);
}

int checkValue(std::string_view value)
{
    constexpr std::string_view words[2][4] = {{"0", "off", "no", "false"}, {"1", "on", "yes", "true"}};
    std::string wanted = plain(value);
    for (int i = 0; i < 2; ++i)
        if (std::ranges::find(words[i], wanted) != std::end(words[i]))
            return i;
    return -1;
}

int valueOf(const FormState& state, const Row& row, std::string_view value)
{
    if (row.kind == RowKind::check)
        return checkValue(value);
    std::vector<std::string> labels = labelsOf(state, row);
    if (row.offset != noField)
        return choiceOf(labels, value);
    // The labels of a list without a field are values themselves: a number is not a place in the list.
    auto found = std::ranges::find(labels, value);
    return found == labels.end() ? -1 : static_cast<int>(found - labels.begin());
}

void refuseValue(EntryFaults& faults, const Assignment& assignment, const std::string& text)
{
    faults.refusals.push_back({RefusalKind::badValue, assignment.name, assignment.name + text, assignment.value});
}

void refuseChoice(const FormState& state, const Row& row, const Assignment& assignment, EntryFaults& faults)
{
    refuseValue(faults, assignment,
                " has no choice '" + assignment.value + "'; it takes: " + listed(labelsOf(state, row)));
}

void makeChoice(FormState& state, const Row& row, const Assignment& assignment, EntryFaults& faults)
{
    int value = valueOf(state, row, assignment.value);
    if (value < 0)
        refuseChoice(state, row, assignment, faults);
    else
        choose(state, row, value);
}

bool isNumber(const std::string& text, bool whole)
{
    size_t start = text.find_first_not_of("+-");
    if (text.empty() || start == text.npos || start > 1)
        return false;
    if (!whole && text.find_first_not_of("0123456789+-.eE") != text.npos)
        return false;
    if (whole)
        return text.find_first_not_of("0123456789", start) == text.npos;
    char* end = nullptr;
    std::strtod(text.c_str(), &end);
    return end == text.c_str() + text.size();
}

bool readsAsNumber(const Row& row, const Assignment& assignment, EntryFaults& faults)
{
    bool whole = row.kind == RowKind::whole;
    bool reads = isNumber(assignment.value, whole);
    if (!reads)
        refuseValue(faults, assignment,
                    std::string(" takes a ") + (whole ? "whole " : "") + "number, not '" + assignment.value + "'");
    return reads;
}

void typeEntry(FormState& state, const Row& row, const Assignment& assignment, EntryFaults& faults)
{
    if (readsAsNumber(row, assignment, faults))
        typeText(state, row, assignment.value);
}

bool isBeyond(const Row& row, double value)
{
    return (row.leastBinds && !(value >= row.least)) || (row.mostBinds && !(value <= row.most));
}

// "0 to 3000 W"
std::string limitsText(const Row& row)
{
    std::string text;
    if (row.leastBinds && row.mostBinds)
        text = formatText("%.10g to %.10g", row.least, row.most);
    else
        text = row.leastBinds ? formatText("%.10g or more", row.least) : formatText("%.10g or less", row.most);
    return row.unit[0] != '\0' ? text + " " + row.unit : text;
}

// A value that another choice hides today is in view tomorrow.
void checkHidden(const FormState& state, const Row& row, const Assignment& assignment, EntryFaults& faults)
{
    if (isChosen(row)) {
        if (valueOf(state, row, assignment.value) < 0)
            refuseChoice(state, row, assignment, faults);
    } else if (isNumber(row) && readsAsNumber(row, assignment, faults) && (!row.checked || row.checked(state, row)) &&
               isBeyond(row, std::strtod(assignment.value.c_str(), nullptr))) {
        std::string text = assignment.name + " takes " + limitsText(row) + ", not " + assignment.value;
        faults.refusals.push_back({RefusalKind::beyondLimits, assignment.name, text, assignment.value, &row});
    }
}

void place(FormState& state, const Row& row, const Assignment& assignment, EntryFaults& faults)
{
    if (isChosen(row))
        makeChoice(state, row, assignment, faults);
    else if (isNumber(row))
        typeEntry(state, row, assignment, faults);
    else if (row.kind == RowKind::words)
        setPath(state, row, assignment.value);
}

// What goes to the defaults takes effect there.
bool isKept(const FormState& state, const Row& row)
{
    return state.saveAsDefault && state.form->saveFlag != noField && row.offset != noField;
}

// In the order of the rows, since a row can decide whether one below it is shown.
void makeChoices(FormState& state, const std::vector<Assignment>& assignments, std::vector<bool>& placed,
                 EntryFaults& faults)
{
    for (const Row& row : state.form->rows) {
        for (size_t i = 0; isChosen(row) && i < assignments.size(); ++i) {
            if (!goesBy(row, assignments[i].name) || bestRow(state, assignments[i].name) != &row)
                continue;
            placed[i] = true;
            makeChoice(state, row, assignments[i], faults);
        }
    }
}

} // namespace

void keepRefused(EntryFaults& faults, const FormState& state)
{
    faults.refused = state.refused;
    if (!faults.refused)
        return;
    const Row& row = *faults.refused;
    if (row.kind == RowKind::path || row.kind == RowKind::words)
        faults.given = rowText(state, row);
    if (!isNumber(row))
        return;
    double value = shownValue(state, row);
    faults.beyondLimits = isBeyond(row, value);
    faults.given = formatText("%.10g", value);
}

std::string lessonOf(const EntryFaults& faults)
{
    if (!faults.refused || !faults.refused->name || faults.given.empty())
        return {};
    const Row& row = *faults.refused;
    if (faults.beyondLimits)
        return std::string(row.name) + " takes " + limitsText(row) + ", not " + faults.given;
    return std::string(row.name) + " is " + faults.given + (row.unit[0] != '\0' ? std::string(" ") + row.unit : "");
}

std::vector<Assignment> setEntries(FormState& state, const std::vector<Assignment>& assignments, EntryFaults& faults)
{
    std::vector<bool> placed(assignments.size());
    makeChoices(state, assignments, placed, faults);
    std::vector<Assignment> hidden;
    for (size_t i = 0; i < assignments.size(); ++i) {
        const Row* row = bestRow(state, assignments[i].name);
        if (!row)
            continue;
        if (!placed[i] && !isPresent(state, *row)) {
            hidden.push_back(assignments[i]);
            checkHidden(state, *row, assignments[i], faults);
        } else if (!placed[i]) {
            place(state, *row, assignments[i], faults);
        }
    }
    for (const Assignment& assignment : assignments) {
        const Row* row = bestRow(state, assignment.name);
        if (row && isPresent(state, *row) && !takesEffect(state, *row) && !isKept(state, *row))
            faults.notes.push_back(assignment.name + " has no effect with these choices");
    }
    return hidden;
}

bool hasEntry(const Form& form, std::string_view name)
{
    return std::ranges::any_of(form.rows, [&](const Row& row) { return goesBy(row, name); });
}

void collectNames(const Form& form, std::vector<std::string>& names)
{
    for (const Row& row : form.rows)
        if (row.name && row.kind != RowKind::path)
            names.emplace_back(row.name);
}

int choiceOf(const std::vector<std::string>& labels, std::string_view value)
{
    std::string wanted = plain(value);
    int found = -1, matches = 0;
    for (size_t i = 0; i < labels.size(); ++i) {
        std::string label = plain(labels[i]);
        if (label == wanted)
            return static_cast<int>(i);
        if (!wanted.empty() && label.find(wanted) != label.npos) {
            found = static_cast<int>(i);
            ++matches;
        }
    }
    int number = -1;
    auto [end, fault] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (fault == std::errc() && end == value.data() + value.size())
        return number >= 0 && number < static_cast<int>(labels.size()) ? number : -1;
    return matches == 1 ? found : -1;
}

} // namespace torvane
