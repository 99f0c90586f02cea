// The dialog of a course ahead: the track, what the rider gives, how the road is taken, what is written.
#include "core/files.h"
#include "fit/fit_tools.h"
#include "forms/dialogs.h"
#include "forms/output_rows.h"

namespace torvane {

namespace {

// Entries of PlanOptions. The console's unit is the one shown; `per` is what it counts for each that is held.

template <auto member, int numerator = 1, int denominator = 1>
double shownNumber(const FormState& state, const Row&)
{
    return static_cast<double>(state.plan.options.*member) * numerator / denominator;
}

template <auto member, int numerator = 1, int denominator = 1>
void takeNumber(FormState& state, double shown)
{
    using Number = std::remove_reference_t<decltype(state.plan.options.*member)>;
    state.plan.options.*member = static_cast<Number>(shown * denominator / numerator);
}

template <auto member, int numerator = 1, int denominator = 1>
constexpr Row planRow(int id, const char* name, Range range, const char* messageName, const char* unit,
                      const char* format = "%6.1lf")
{
    Row row = realRow(id, id + 30, {name, noField}, range, format, messageName, unit);
    row.shows = shownNumber<member, numerator, denominator>;
    row.takesNumber = takeNumber<member, numerator, denominator>;
    row.kept = true;
    return row;
}

constexpr Row stretchesRow(int id)
{
    Row row = wholeRow(id, id + 30, {"stretches", noField}, {1, 100}, "a number of stretches");
    row.shows = shownNumber<&PlanOptions::stretches>;
    row.takesNumber = takeNumber<&PlanOptions::stretches>;
    row.kept = true;
    return row;
}

template <int32_t PlanOptions::*member>
void takeChoice(FormState& state, const Row&, int value)
{
    state.plan.options.*member = value;
}

template <int32_t PlanOptions::*member>
constexpr Row planChoice(int id, const char* name, std::span<const char* const> labels)
{
    Row row = choiceRow(id, {name, noField}, labels);
    row.shows = shownNumber<member>;
    row.takes = takeChoice<member>;
    row.kept = true;
    return row;
}

double fileTypeShown(const FormState& state, const Row&)
{
    return state.plan.fileType;
}

void takeFileType(FormState& state, const Row&, int value)
{
    state.plan.fileType = value;
}

constexpr Row fileTypeRow(int id)
{
    Row row = choiceRow(id, {"fileType", noField}, planFileTypeLabels);
    row.shows = fileTypeShown;
    row.takes = takeFileType;
    return row;
}

constexpr Row wordsRow(int id, const char* name, std::string PlanEntries::*words)
{
    return {.kind = RowKind::words, .id = id, .name = name, .words = words};
}

template <Effort... efforts>
bool hasEffort(const FormState& state, const Row&)
{
    return ((state.plan.options.effort == efforts) || ...);
}

bool hasPacing(const FormState& state, const Row&)
{
    return state.plan.options.effort != effortAsRidden;
}

template <Pacing pacing>
bool paces(const FormState& state, const Row& row)
{
    return hasPacing(state, row) && state.plan.options.pacing == pacing;
}

constexpr Row asRiddenRow(int id, int browse)
{
    Row row = wordsRow(id, "asRidden", &PlanEntries::asRidden);
    row.spin = browse;
    row.browse = Browse::openRide;
    return enabledWhen(row, hasEffort<effortAsRidden>);
}

bool writes(const FormState& state, const Row&)
{
    return !state.inputs.files[toolDestination].path.empty();
}

constexpr Range shares = {0, 300}, percents = {-30, 30, 0.5};

constexpr Row planRows[] = {
    rideSourceRow(9611, 9621),
    destinationRow(9612, 9622, Browse::saveCourse),
    planChoice<&PlanOptions::effort>(9613, "effort", effortLabels),
    enabledWhen(planRow<&PlanOptions::power>(9631, "power", {20, 2000}, "a power", "W"),
                hasEffort<effortPower, effortNormalised>),
    enabledWhen(planRow<&PlanOptions::time, 1, 60>(9632, "time", {1, 14400}, "a time", "min"), hasEffort<effortTime>),
    enabledWhen(planRow<&PlanOptions::ftpShare>(9633, "ftpShare", {10, 150}, "a share of ftp", "%"),
                hasEffort<effortFtpShare>),
    asRiddenRow(9614, 9624),
    enabledWhen(planChoice<&PlanOptions::pacing>(9615, "pacing", pacingLabels), hasPacing),
    enabledWhen(planRow<&PlanOptions::steepFrom>(9634, "steepFrom", percents, "a slope", "%"), paces<pacingThree>),
    enabledWhen(planRow<&PlanOptions::downBelow>(9635, "downBelow", percents, "a slope", "%"), paces<pacingThree>),
    enabledWhen(planRow<&PlanOptions::steepShare>(9636, "steepShare", shares, "a share", "%"), paces<pacingThree>),
    enabledWhen(planRow<&PlanOptions::flatShare>(9637, "flatShare", shares, "a share", "%"), paces<pacingThree>),
    enabledWhen(planRow<&PlanOptions::downShare>(9638, "downShare", shares, "a share", "%"), paces<pacingThree>),
    enabledWhen(planRow<&PlanOptions::least>(9639, "least", {0, 100}, "a least power", "%"), paces<pacingPlan>),
    enabledWhen(planRow<&PlanOptions::most>(9640, "most", {100, 300}, "a most power", "%"), paces<pacingPlan>),
    enabledWhen(stretchesRow(9641), paces<pacingPlan>),
    planRow<&PlanOptions::altitudeSmoothing>(9642, "altitudeSmoothing", {0, 1000, 10}, "a smoothing", "m"),
    planRow<&PlanOptions::windSpeed>(9643, "windSpeed", {0, 30, 0.1}, "a wind speed", "m/s"),
    planRow<&PlanOptions::windDirection>(9644, "windDirection", {0, 360}, "a wind direction", "deg"),
    planRow<&PlanOptions::topSpeed, 36, 10>(9645, "topSpeed", {10, 150}, "a top speed", "kph"),
    planRow<&PlanOptions::bendAcceleration>(9646, "bendAcceleration", {0.5, 10, 0.1}, "an acceleration in bends",
                                            "mpss"),
    planRow<&PlanOptions::brakeDeceleration>(9647, "brakeDeceleration", {0.3, 8, 0.1}, "a deceleration", "mpss"),
    planRow<&PlanOptions::leastCadence>(9648, "leastCadence", {20, 80}, "a least cadence", "rpm"),
    wordsRow(9616, "stops", &PlanEntries::stops),
    wordsRow(9617, "start", &PlanEntries::start),
    enabledWhen(fileTypeRow(9618), writes),
};

const Row* rowNamed(const FormState& state, std::string_view name)
{
    for (const Row& row : state.form->rows)
        if (row.name == name)
            return &row;
    return nullptr;
}

Verdict refuseWords(FormState& state, const char* name, const char* text)
{
    return refuseRow(state, *rowNamed(state, name), text);
}

Verdict checkWords(FormState& state)
{
    PlanEntries& plan = state.plan;
    if (!takeStops(plan.stops, plan.options))
        return refuseWords(state, "stops",
                           "stops are \"3x10min\", evenly over the course, or \"40:10min 85.5:300s\" at kilometres; "
                           "10 days in all at most");
    if (!startOf(plan.start))
        return refuseWords(state, "start", "a start is \"8:30\" or \"2026-05-01 8:30\"");
    if (plan.options.effort != effortAsRidden)
        return {};
    plan.options.asRidden = absolutePath(plan.asRidden);
    if (plan.asRidden.empty() || !fileExists(plan.options.asRidden))
        return refuseWords(state, "asRidden", "not existing a ride to ride as");
    return {};
}

Verdict checkFiles(FormState& state)
{
    Verdict verdict;
    std::string& destination = state.inputs.files[toolDestination].path;
    if (!fileExists(state.inputs.files[0].path))
        return aboutPaths(state, {false, {{"error", "not existing a source file"}}});
    if (destination.empty())
        return {};
    verdict.passed = checkCourseDestination(state.inputs, verdict) &&
                     checkNoSource(destination, state.plan.options.asRidden, verdict);
    return aboutPaths(state, std::move(verdict));
}

Verdict checkPlan(FormState& state)
{
    Verdict verdict = checkWords(state);
    return verdict.passed ? checkFiles(state) : verdict;
}

constexpr Form makePlanForm()
{
    Form form = keptForm(gpsForm(2096, "a course ahead", "Plan", gpsOneStroke, planRows), 3062);
    form.check = checkPlan;
    return form;
}

} // namespace

constinit const Form planForm = makePlanForm();

} // namespace torvane
