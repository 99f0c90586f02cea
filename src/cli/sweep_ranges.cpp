#include "cli/sweep_ranges.h"

#include "cli/entry_help.h"
#include "command/settings_entries.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace torvane {

namespace {

constexpr const char* example = "ENTRY=FROM:TO:STEP, as rideVelocity=20:60:0.5";

const Row* rowOf(const std::vector<const Form*>& forms, std::string_view name)
{
    for (const Form* form : forms)
        for (const Row& row : form->rows)
            if (row.name && row.kind != RowKind::path && row.kind != RowKind::button && row.name == name)
                return &row;
    return nullptr;
}

std::vector<const Form*> pageForms()
{
    std::vector<const Form*> forms;
    for (Sheet sheet : settingsSheets)
        std::ranges::copy(formsOf(sheet), std::back_inserter(forms));
    return forms;
}

// A number and nothing else, in front of `end`.
bool takeNumber(const char*& place, char end, double& value)
{
    char* behind = nullptr;
    value = std::strtod(place, &behind);
    bool taken = behind != place && *behind == end && std::isfinite(value);
    place = taken ? behind + (end != '\0') : place;
    return taken;
}

bool readNumbers(const std::string& text, double& from, double& to, double& step)
{
    const char* place = text.c_str();
    return takeNumber(place, ':', from) && takeNumber(place, ':', to) && takeNumber(place, '\0', step);
}

// The step as often as it goes, the last value included where it is met within rounding.
double valuesBetween(double from, double to, double step)
{
    constexpr double rounding = 1e-9;
    double steps = (to - from) / step;
    return std::floor(steps + rounding * std::max(1.0, steps)) + 1;
}

std::string readRange(const Assignment& entry, const Row& row, SweptRange& range)
{
    double to = 0;
    range = {.name = entry.name, .unit = row.unit};
    if (!readNumbers(entry.value, range.from, to, range.step))
        return entry.name + " takes a range FROM:TO:STEP, as 20:60:0.5, not '" + entry.value + "'";
    if (range.step == 0)
        return entry.name + ": a step of 0 leads nowhere";
    if ((to - range.from) / range.step < 0)
        return formatText("%s: from %.10g to %.10g leads a step %s 0, not %.10g", entry.name.c_str(), range.from, to,
                          to > range.from ? "above" : "below", range.step);
    double values = valuesBetween(range.from, to, range.step);
    if (!(values <= mostCombinations))
        return formatText("%s: that are %.0f values, and a sweep has %zu combinations at most", entry.name.c_str(),
                          values, mostCombinations);
    range.count = static_cast<size_t>(values);
    return {};
}

// Moves the ranges among these entries.
std::string takeOf(std::vector<Assignment>& entries, const std::vector<const Form*>& forms, bool ofPages,
                   std::vector<SweptRange>& ranges)
{
    std::vector<Assignment> fixed;
    for (Assignment& entry : entries) {
        const Row* row = rowOf(forms, entry.name);
        if (!row || row->kind == RowKind::words || entry.value.find(':') == entry.value.npos) {
            fixed.push_back(std::move(entry));
            continue;
        }
        SweptRange range;
        if (std::string fault = readRange(entry, *row, range); !fault.empty())
            return fault;
        range.ofPages = ofPages;
        if (std::ranges::find(ranges, range.name, &SweptRange::name) != ranges.end())
            return range.name + " has two ranges";
        ranges.push_back(std::move(range));
    }
    entries = std::move(fixed);
    for (const Assignment& entry : entries)
        if (std::ranges::find(ranges, entry.name, &SweptRange::name) != ranges.end())
            return entry.name + " has a range and a value";
    return {};
}

std::string tooMany(const std::vector<SweptRange>& ranges)
{
    double all = 1;
    std::string product;
    for (const SweptRange& range : ranges) {
        all *= static_cast<double>(range.count);
        product += formatText("%s%zu", product.empty() ? "" : " x ", range.count);
    }
    if (all <= static_cast<double>(mostCombinations))
        return {};
    return formatText("%s are %.0f combinations, and a sweep has %zu at most: take larger steps", product.c_str(), all,
                      mostCombinations);
}

} // namespace

std::string takeRanges(const Command& command, Request& request)
{
    std::string fault = takeOf(request.entries, formsOf(command), false, request.ranges);
    if (fault.empty())
        fault = takeOf(request.settings, pageForms(), true, request.ranges);
    if (!fault.empty())
        return fault;
    if (request.ranges.size() > mostRanges)
        return formatText("sweep goes through %zu entries at most, not %zu", mostRanges, request.ranges.size());
    return tooMany(request.ranges);
}

size_t combinationsOf(const Request& request)
{
    size_t all = 1;
    for (const SweptRange& range : request.ranges)
        all *= range.count;
    return all;
}

std::vector<Assignment> valuesIn(const Request& request, size_t combination)
{
    std::vector<Assignment> values;
    for (size_t i = request.ranges.size(); i-- > 0;) {
        const SweptRange& range = request.ranges[i];
        double value = range.from + static_cast<double>(combination % range.count) * range.step;
        // Twelve digits: 20.3 and not what three tenths add up to.
        values.insert(values.begin(), {range.name, formatText("%.12g", value)});
        combination /= range.count;
    }
    return values;
}

std::string rangesFault(const Command& command, const Request& request)
{
    return request.ranges.empty() ? "sweep " + consoleName(command) + " needs a range to go through: " + example : "";
}

std::string sweepFault(const Command& command, const Request& request)
{
    std::string name = consoleName(command);
    if (!command.figures)
        return name + " answers without figures; sweep takes commands that have some, as power-and-velocity";
    if (!request.graph.empty() || !request.page.empty() || !request.into.empty() || !request.saveProfile.empty() ||
        request.save)
        return "sweep leaves a table alone: no --graph, --page, --into, --save or --save-profile";
    return {};
}

} // namespace torvane
