// The dialogs of a recorded ride: express, analyse, create, and the three at one stroke. What the loaded file holds
// decides what can be entered.
#include "core/files.h"
#include "core/ride_choices.h"
#include "forms/dialogs.h"
#include "forms/output_rows.h"
#include "forms/prepare_rows.h"
#include "gps/analysis.h"
#include "gps/one_stroke_check.h"
#include "gps/ride_answer.h"

#include <utility>

namespace torvane {

namespace {

bool fileHasAltitude(const FormState& state, const Row&)
{
    return (state.ride.presence.altitudeFlags & presentInRecords) != 0;
}

bool fileHasPosition(const FormState& state, const Row&)
{
    return (state.ride.presence.positionFlags & eitherInRecords) != 0;
}

bool fileLacksTemperature(const FormState& state, const Row&)
{
    return state.ride.presence.temperatureFlags == 0;
}

bool fileLacksCadence(const FormState& state, const Row&)
{
    return (state.ride.presence.cadenceFlags & presentInRecords) == 0;
}

bool fileLacksPower(const FormState& state, const Row&)
{
    return (state.ride.presence.powerFlags & presentInRecords) == 0;
}

constexpr Range unrealInclinations = {1, 100, 0.1}, unrealAcceles = {0.5, 5, 0.1};

constexpr Row limitRow(int id, Field field, Range range, const char* messageName, const char* unit, RowTest test)
{
    return enabledWhen(realRow(id, id + 10, field, range, "%5.1lf", messageName, unit), test);
}

// Express

bool smoothsExpressed(const FormState& state, const Row& row)
{
    return state.values.expressSmoothing != 0 && fileHasAltitude(state, row);
}

constexpr Row expressRows[] = {
    checkRow(6111, TORVANE_FIELD(expressSmoothing)),
    limitRow(6131, TORVANE_FIELD(expressUnrealInclination), unrealInclinations, "unreal inclination", "%",
             smoothsExpressed),
    limitRow(6132, TORVANE_FIELD(expressUnrealAccele), unrealAcceles, "unreal acceleration", "mpss", smoothsExpressed),
};

// Analyse and predict

constexpr size_t unrealAcceleRow = 3;

bool smoothsInclination(const FormState& state, const Row&)
{
    return state.values.flatCourse == 0 && state.values.analyseSmoothing != 0;
}

bool smoothsAcceleration(const FormState& state, const Row&)
{
    return state.values.analyseSmoothing != 0;
}

// Asks for the unreal acceleration where the wind speed would be expected; it has always been so.
bool hasWindDirection(const FormState& state, const Row& row)
{
    return fileHasPosition(state, row) && state.values.analyseUnrealAccele != 0;
}

bool predictsPower(const FormState& state, const Row&)
{
    return state.values.predictPower != 0;
}

// A ride without positions heads north.
bool hasWind(const FormState& state, const Row&)
{
    return state.values.analyseWindSpeed != 0;
}

constexpr Row windSpeedRow()
{
    return countsWhen(
        limitRow(7133, TORVANE_FIELD(analyseWindSpeed), {0, 30, 0.1}, "wind speed", "m/s", fileHasPosition), always);
}

constexpr Row windDirectionRow()
{
    Row row = wholeRow(7151, 7161, TORVANE_FIELD(analyseWindDirection), {0, 359}, "wind direction", "deg");
    row.format = "%4d";
    return countsWhen(enabledWhen(row, hasWindDirection), hasWind);
}

// Records with temperatures and a summary with their average: the entry has always stood for both.
bool replacesTemperatures(const FormState& state, const Row&)
{
    return state.ride.presence.temperatureFlags == (presentInRecords | presentAverage);
}

constexpr Row temperatureRow()
{
    return countsWhen(
        limitRow(7134, TORVANE_FIELD(averageTemperature), {0, 50, 0.1}, "temperature", "Cel", fileLacksTemperature),
        replacesTemperatures);
}

constexpr Row analyseRows[] = {
    enabledWhen(checkRow(7111, TORVANE_FIELD(flatCourse)), fileHasAltitude),
    checkRow(7112, TORVANE_FIELD(analyseSmoothing)),
    limitRow(7131, TORVANE_FIELD(analyseUnrealInclination), unrealInclinations, "unreal inclination", "%",
             smoothsInclination),
    limitRow(7132, TORVANE_FIELD(analyseUnrealAccele), unrealAcceles, "unreal acceleration", "mpss",
             smoothsAcceleration),
    windSpeedRow(),
    windDirectionRow(),
    temperatureRow(),
    enabledWhen(checkRow(7113, TORVANE_FIELD(predictCadence)), fileLacksCadence),
    enabledWhen(checkRow(7114, TORVANE_FIELD(predictPower)), fileLacksPower),
    enabledWhen(choiceRow(7121, TORVANE_FIELD(analysePowerBase), stageNames), predictsPower),
};
static_assert(analyseRows[unrealAcceleRow].id == 7132);

void applyRulesOfFile(FormState& state)
{
    applyAnalysisRules(state.values, state.ride);
}

// What the file decides cannot be chosen otherwise.
void holdRulesOfFile(FormState& state, const Row& row)
{
    if (row.kind != RowKind::check)
        return;
    double entered = state.values.analyseUnrealAccele;
    applyAnalysisRules(state.values, state.ride);
    state.values.analyseUnrealAccele = entered;
}

bool predictsAnything(const FormState& state)
{
    return state.values.predictCadence != 0 || state.values.predictPower != 0;
}

constexpr Form makeAnalyseForm()
{
    Form form = gpsForm(2053, "analyse and predict", "Analysis", gpsAnalyse, analyseRows);
    form.opened = applyRulesOfFile;
    form.changed = holdRulesOfFile;
    form.mayConfirm = predictsAnything;
    form.confirmNeeds = "predictCadence or predictPower of something that the file lacks";
    return form;
}

// Create

constexpr size_t createOutput = offsetof(ParameterBlock, createOutput);
constexpr int createFormats[] = {7241, 7242};
constexpr int oneStrokeFormats[] = {8651, 8652};

constexpr Row createRows[] = {
    destinationRow(7211, 7221),      convertBoxRow(7231, createOutput), headerFormRow(createFormats, createOutput),
    sportBoxRow(7232, createOutput), sportRow(7251, createOutput),
};

Verdict checkOutput(FormState& state)
{
    Verdict verdict;
    std::string& path = state.inputs.files[toolDestination].path;
    verdict.passed = checkDestinationPath(path, verdict) && checkNoSource(path, state.ride.path, verdict);
    return aboutPaths(state, std::move(verdict));
}

constexpr Form makeCreateForm()
{
    Form form = gpsForm(2054, "create a FIT file analysed", "Create", gpsCreate, createRows);
    form.check = checkOutput;
    return form;
}

// At one stroke

Verdict checkSource(FormState& state, bool needDestination)
{
    return aboutPaths(state, checkOneStrokeSource(state.inputs, state.preparation, needDestination, state.ride));
}

// The settings show the options of the source, so it has to be there first.
Verdict askForSettings(FormState& state, const Row&, ParameterBlock&)
{
    return checkSource(state, false);
}

Verdict checkOneStroke(FormState& state)
{
    return checkSource(state, true);
}

// The stroke can put the file in order first. The console alone asks for it.

bool prepares(const FormState& state, const Row&)
{
    return state.preparation.enabled != 0;
}

double preparesShown(const FormState& state, const Row&)
{
    return state.preparation.enabled;
}

void takePrepares(FormState& state, const Row&, int value)
{
    state.preparation.enabled = value;
}

constexpr Row prepareRow()
{
    Row row = checkRow(0, {"prepare", noField});
    row.shows = preparesShown;
    row.takes = takePrepares;
    return row;
}

constexpr size_t oneStrokeGapLimit = 9, oneStrokeJumpSpeed = 10;

constexpr Row oneStrokeRows[] = {
    sourceRow(8611, 8621),
    destinationRow(8612, 8622),
    {.kind = RowKind::button, .id = 8631, .child = 2053, .pressed = askForSettings},
    checkRow(8641, TORVANE_FIELD(expressFieldsData)),
    convertBoxRow(8642, createOutput),
    headerFormRow(oneStrokeFormats, createOutput),
    sportBoxRow(8643, createOutput),
    sportRow(8661, createOutput),
    prepareRow(),
    enabledWhen(gapLimitRow(0, 0), prepares),
    enabledWhen(jumpSpeedRow(0, 0), prepares),
    enabledWhen(dropRow<&PrepareOptions::dropPower>(0, "dropPower"), prepares),
    enabledWhen(dropRow<&PrepareOptions::dropCadence>(0, "dropCadence"), prepares),
    enabledWhen(rideSportRow(0), prepares),
};
static_assert(oneStrokeRows[oneStrokeGapLimit].kind == RowKind::whole &&
              oneStrokeRows[oneStrokeJumpSpeed].kind == RowKind::real);

void oneStrokeChanged(FormState& state, const Row&)
{
    takeLimits(state, oneStrokeRows[oneStrokeGapLimit], oneStrokeRows[oneStrokeJumpSpeed]);
}

constexpr Form makeOneStrokeForm()
{
    Form form = gpsForm(2060, "load and analyse and create", "Execute", gpsOneStroke, oneStrokeRows);
    form.changed = oneStrokeChanged;
    form.check = checkOneStroke;
    return form;
}

// What a ride cost

Verdict askForRideSettings(FormState& state, const Row&, ParameterBlock&)
{
    return aboutPaths(state, checkRide(state.inputs, state.preparation.options, state.ride));
}

constexpr size_t rideGapLimit = 3, rideJumpSpeed = 4;

constexpr Row rideRows[] = {
    rideSourceRow(9511, 9521),
    destinationRow(9512, 9522),
    {.kind = RowKind::button, .id = 9531, .child = 2053, .pressed = askForRideSettings},
    gapLimitRow(9541, 9551),
    jumpSpeedRow(9542, 9552),
    dropRow<&PrepareOptions::dropPower>(9561, "dropPower"),
    dropRow<&PrepareOptions::dropCadence>(9562, "dropCadence"),
    rideSportRow(9571),
};
static_assert(rideRows[rideGapLimit].kind == RowKind::whole && rideRows[rideJumpSpeed].kind == RowKind::real);

void rideChanged(FormState& state, const Row&)
{
    takeLimits(state, rideRows[rideGapLimit], rideRows[rideJumpSpeed]);
}

// What is in the source its run tells.
Verdict checkRideFiles(FormState& state)
{
    Verdict verdict;
    if (!fileExists(state.inputs.files[0].path))
        return aboutPaths(state, {false, {{"error", "not existing a source file"}}});
    if (!state.inputs.files[toolDestination].path.empty())
        verdict.passed = checkDestination(state.inputs, verdict);
    return aboutPaths(state, std::move(verdict));
}

constexpr Form makeRideForm()
{
    Form form = keptForm(gpsForm(2095, "what a ride cost", "Answer", gpsOneStroke, rideRows), 3061);
    form.changed = rideChanged;
    form.check = checkRideFiles;
    return form;
}

} // namespace

constinit const Form expressForm = gpsForm(2052, "express source data", "Express", gpsExpress, expressRows);
constinit const Form analyseForm = makeAnalyseForm();
constinit const Form createForm = makeCreateForm();
constinit const Form oneStrokeForm = makeOneStrokeForm();
constinit const Form rideAnswerForm = makeRideForm();

} // namespace torvane
