// The dialogs of the FIT tools. Their confirming button runs the tool's check, which judges files and paths.
#include "core/text.h"
#include "fit/fit_bytes.h"
#include "forms/dialogs.h"
#include "forms/output_rows.h"
#include "forms/prepare_rows.h"

#include <cstdlib>

namespace torvane {

namespace {

constexpr Form toolForm(int id, const char* title, const char* confirm, GpsDialog dialog, std::span<const Row> rows,
                        Verdict (*check)(FormState&))
{
    Form form = gpsForm(id, title, confirm, dialog, rows);
    form.check = check;
    return form;
}

template <ToolCheck check>
Verdict checkTool(FormState& state)
{
    return aboutPaths(state, check(state.inputs, state.values));
}

// Combine

constexpr size_t combineOutput = offsetof(ParameterBlock, combineOutput);
constexpr int combineFormats[] = {8141, 8142};

constexpr Row combineRows[] = {
    sourceRow(8111, 8121, "source", 0),  sourceRow(8112, 8122, "source2", 1),
    sourceRow(8113, 8123, "source3", 2), sourceRow(8114, 8124, "source4", 3),
    sourceRow(8115, 8125, "source5", 4), destinationRow(8116, 8126),
    convertBoxRow(8131, combineOutput),  headerFormRow(combineFormats, combineOutput),
    sportBoxRow(8132, combineOutput),    sportRow(8151, combineOutput),
};

// Convert

constexpr size_t convertOutput = offsetof(ParameterBlock, convertOutput);
constexpr int convertFormats[] = {8221, 8222};
constexpr const char* convertLabels[] = {"to legacy", "to modern"};

constexpr Row convertRows[] = {
    sourceRow(8241, 8251),
    destinationRow(8242, 8252),
    convertBoxRow(8211, convertOutput),
    headerFormRow(convertFormats, convertOutput, convertLabels),
    sportBoxRow(8212, convertOutput),
    sportRow(8231, convertOutput),
    checkRow(8213, TORVANE_FIELD(convertSpeedUnit)),
};

// Add and exclude. Nothing can be entered before one of the three messages is asked for.

bool addsAny(const ParameterBlock& values)
{
    return values.addLap != 0 || values.addSession != 0 || values.addActivity != 0;
}

// An added lap or session always carries a sport.
bool addsSport(const ParameterBlock& values)
{
    return values.addLap != 0 || values.addSession != 0;
}

bool excludesAny(const ParameterBlock& values)
{
    return values.excludeLap != 0 || values.excludeSession != 0 || values.excludeActivity != 0;
}

// No field of a sport remains.
bool excludesSports(const ParameterBlock& values)
{
    return values.excludeLap != 0 && values.excludeSession != 0;
}

// What the two tools ask for is the same but for these.
struct MessageTool {
    bool (*asksAny)(const ParameterBlock& values);
    bool (*fixesSport)(const ParameterBlock& values); // the sport box is forced and cannot be changed
    bool forcedSport;
    OutputChoice ParameterBlock::*output;
};

constexpr MessageTool addTool = {addsAny, addsSport, true, &ParameterBlock::addOutput};
constexpr MessageTool excludeTool = {excludesAny, excludesSports, false, &ParameterBlock::excludeOutput};

template <const MessageTool& tool>
struct MessageRules {
    static bool asksAny(const FormState& state, const Row&)
    {
        return tool.asksAny(state.values);
    }
    static bool formatCounts(const FormState& state, const Row&)
    {
        return tool.asksAny(state.values) && (state.values.*tool.output).convertEnabled != 0;
    }
    static bool sportIsFree(const FormState& state, const Row&)
    {
        return tool.asksAny(state.values) && !tool.fixesSport(state.values);
    }
    static bool sportShown(const FormState& state)
    {
        return tool.fixesSport(state.values) ? tool.forcedSport : (state.values.*tool.output).sportEnabled != 0;
    }
    static double sportBox(const FormState& state, const Row&)
    {
        return sportShown(state);
    }
    static bool sportCounts(const FormState& state, const Row&)
    {
        return tool.asksAny(state.values) && sportShown(state);
    }
    static bool mayConfirm(const FormState& state)
    {
        return tool.asksAny(state.values);
    }
};

using AddRules = MessageRules<addTool>;
using ExcludeRules = MessageRules<excludeTool>;

constexpr Row shownAs(Row row, double (*shows)(const FormState&, const Row&))
{
    row.shows = shows;
    return row;
}

constexpr size_t addOutput = offsetof(ParameterBlock, addOutput);
constexpr int addFormats[] = {8351, 8352};

constexpr Row addRows[] = {
    checkRow(8311, TORVANE_FIELD(addLap)),
    checkRow(8312, TORVANE_FIELD(addSession)),
    checkRow(8313, TORVANE_FIELD(addActivity)),
    enabledWhen(sourceRow(8321, 8331), AddRules::asksAny),
    enabledWhen(destinationRow(8322, 8332), AddRules::asksAny),
    enabledWhen(convertBoxRow(8341, addOutput), AddRules::asksAny),
    enabledWhen(headerFormRow(addFormats, addOutput), AddRules::formatCounts),
    shownAs(enabledWhen(sportBoxRow(8342, addOutput), AddRules::sportIsFree), AddRules::sportBox),
    enabledWhen(sportRow(8361, addOutput), AddRules::sportCounts),
};

constexpr size_t excludeOutput = offsetof(ParameterBlock, excludeOutput);
constexpr int excludeFormats[] = {8551, 8552};

constexpr Row excludeRows[] = {
    checkRow(8511, TORVANE_FIELD(excludeLap)),
    checkRow(8512, TORVANE_FIELD(excludeSession)),
    checkRow(8513, TORVANE_FIELD(excludeActivity)),
    enabledWhen(sourceRow(8521, 8531), ExcludeRules::asksAny),
    enabledWhen(destinationRow(8522, 8532), ExcludeRules::asksAny),
    enabledWhen(convertBoxRow(8541, excludeOutput), ExcludeRules::asksAny),
    enabledWhen(headerFormRow(excludeFormats, excludeOutput), ExcludeRules::formatCounts),
    shownAs(enabledWhen(sportBoxRow(8542, excludeOutput), ExcludeRules::sportIsFree), ExcludeRules::sportBox),
    enabledWhen(sportRow(8561, excludeOutput), ExcludeRules::sportCounts),
};

// A check that passes may still have left nothing to do.
template <const MessageTool& tool, ToolCheck check>
Verdict checkMessages(FormState& state)
{
    Verdict verdict = aboutPaths(state, check(state.inputs, state.values));
    verdict.passed = verdict.passed && tool.asksAny(state.values);
    return verdict;
}

constexpr Form makeAddForm()
{
    Form form = toolForm(2057, "add messages", "Add", gpsAdd, addRows, checkMessages<addTool, checkAddMessages>);
    form.mayConfirm = AddRules::mayConfirm;
    form.confirmNeeds = "one of addLap, addSession, addActivity";
    return form;
}

constexpr Form makeExcludeForm()
{
    Form form = toolForm(2059, "exclude messages", "Exclude", gpsExclude, excludeRows,
                         checkMessages<excludeTool, checkExclude>);
    form.mayConfirm = ExcludeRules::mayConfirm;
    form.confirmNeeds = "one of excludeLap, excludeSession, excludeActivity";
    return form;
}

// Divide

constexpr size_t divideOutput = offsetof(ParameterBlock, divideOutput);
constexpr int divideFormats[] = {8451, 8452};

constexpr Row divideRows[] = {
    sourceRow(8421, 8431),
    destinationRow(8422, 8432),
    convertBoxRow(8441, divideOutput),
    headerFormRow(divideFormats, divideOutput),
    sportBoxRow(8442, divideOutput),
    sportRow(8461, divideOutput),
};

// Increase timestamp. Days, hours and minutes stand for one field in seconds.

constexpr size_t timestampOutput = offsetof(ParameterBlock, timestampOutput);
constexpr int timestampFormats[] = {9161, 9162};
enum TimePart : int { partDays, partHours, partMinutes, partSeconds };
constexpr size_t firstPartRow = 2;

int32_t storedPartOf(int32_t offset, int part)
{
    switch (part) {
    case partDays:
        return offset / 86400;
    case partHours:
        return offset % 86400 / 3600;
    case partMinutes:
        return offset % 86400 % 3600 / 60;
    default:
        return offset;
    }
}

double storedPart(const FormState& state, const Row& row)
{
    return storedPartOf(state.values.timestampOffset, row.index);
}

constexpr Row timePartRow(TimePart part, int id, const char* name, const char* unit, double most)
{
    Row row = numbered(wholeRow(id, id + 10, {name, noField}, {0, most}, nullptr, unit), part);
    row.leastBinds = false;
    row.mostBinds = false;
    row.shows = storedPart;
    return row;
}

// The same to the second, and back in time as the complement; the dialog has no control for it.
constexpr Row wholeOffsetRow()
{
    Row row = numbered(realRow(0, 0, {"timestampOffset", noField}, {-2147483648.0, 4294967295.0}, "%.0lf",
                               "a timestamp offset", "sec"),
                       partSeconds);
    row.shows = storedPart;
    return row;
}

constexpr Row timestampRows[] = {
    sourceRow(9111, 9121),
    destinationRow(9112, 9122),
    timePartRow(partDays, 9131, "days", "days", 365),
    timePartRow(partHours, 9132, "hours", "hours", 23),
    timePartRow(partMinutes, 9133, "minutes", "minutes", 59),
    wholeOffsetRow(),
    checkRow(9151, TORVANE_FIELD(timestampTruncate)),
    convertBoxRow(9152, timestampOutput),
    headerFormRow(timestampFormats, timestampOutput),
    sportBoxRow(9153, timestampOutput),
    sportRow(9171, timestampOutput),
};
static_assert(timestampRows[firstPartRow].index == partDays);

int64_t part(const FormState& state, TimePart which)
{
    return truncateToInteger(shownValue(state, timestampRows[firstPartRow + which]));
}

// Sum of days, hours and minutes. Each is a whole number of 32 bits.
int64_t enteredSeconds(const FormState& state)
{
    return ((part(state, partDays) * 24 + part(state, partHours)) * 60 + part(state, partMinutes)) * 60;
}

// In 32 bits, as timestamps are.
int32_t enteredOffset(const FormState& state)
{
    return static_cast<int32_t>(enteredSeconds(state));
}

// The dialog has no control for the offset as a whole: its days stand for it.
Verdict refuseOffset(FormState& state, int64_t entered)
{
    const Row& whole = timestampRows[firstPartRow + partSeconds];
    const char* frame = entered > 0 ? "found too large value of %s" : "found too small value of %s";
    if (state.withoutControls)
        showValue(state, whole, static_cast<double>(entered));
    return refuseRow(state, state.withoutControls ? whole : timestampRows[firstPartRow],
                     formatText(frame, whole.messageName));
}

// A sum beyond 32 bits would come to another shift; one below 0 leads back by its complement.
Verdict checkOffset(FormState& state)
{
    constexpr int64_t most = UINT32_MAX;
    Verdict verdict = checkLimits(state, 0, state.form->rows.size());
    int64_t entered = enteredSeconds(state);
    if (!verdict.passed || std::abs(entered) <= most)
        return verdict;
    return refuseOffset(state, entered);
}

// The two ways to enter the offset follow each other.
void offsetChanged(FormState& state, const Row& row)
{
    if (row.id == 9131 || row.id == 9132 || row.id == 9133) {
        state.values.timestampOffset = enteredOffset(state);
    } else if (row.offset == noField && row.index == partSeconds && row.kind == RowKind::real) {
        state.values.timestampOffset = static_cast<int32_t>(part(state, partSeconds));
        for (TimePart which : {partDays, partHours, partMinutes})
            showValue(state, timestampRows[firstPartRow + which],
                      storedPart(state, timestampRows[firstPartRow + which]));
    }
}

// An offset beyond its limits is confirmed in order to be refused.
bool movesTime(const FormState& state)
{
    const Row& offset = timestampRows[firstPartRow + partSeconds];
    double seconds = shownValue(state, offset);
    bool moves = state.values.timestampOffset != 0 || seconds < offset.least || seconds > offset.most;
    bool whole = part(state, partDays) != 0 || part(state, partHours) != 0 || part(state, partMinutes) != 0;
    return whole || (state.withoutControls && moves);
}

// With the seconds that the parts do not show, unless one of them was entered.
void storeOffset(FormState& state, ParameterBlock& working)
{
    working.timestampOffset = state.values.timestampOffset;
}

constexpr Form makeTimestampForm()
{
    Form form = toolForm(2091, "increase timestamp", "Convert", gpsTimestamp, timestampRows, checkTool<checkTimestamp>);
    // The box of the template is that of another dialog, so that its tick has never had an effect.
    form.saveBox = 3055;
    form.saveFlag = noField;
    form.spinRule = SpinRule::stopsAtLimit;
    form.changed = offsetChanged;
    form.validate = checkOffset;
    form.mayConfirm = movesTime;
    form.confirmNeeds = "days, hours, minutes or timestampOffset";
    form.store = storeOffset;
    return form;
}

// Field dump

constexpr Row dumpRows[] = {
    sourceRow(9211, 9221),
    destinationRow(9212, 9222, Browse::saveCsv),
};

constexpr Form makeDumpForm()
{
    Form form = toolForm(2092, "analyse FIT file", "Analyse", gpsTimestamp, dumpRows, checkTool<checkFieldDump>);
    form.saveBox = 0;
    form.saveFlag = noField;
    return form;
}

// Prepare

constexpr Row prepareRows[] = {
    rideSourceRow(9311, 9321),
    destinationRow(9312, 9322),
    gapLimitRow(9331, 9341),
    jumpSpeedRow(9332, 9342),
    dropRow<&PrepareOptions::dropPower>(9351, "dropPower"),
    dropRow<&PrepareOptions::dropCadence>(9352, "dropCadence"),
    rideSportRow(9361),
};

Verdict checkPreparing(FormState& state)
{
    return aboutPaths(state, checkPrepare(state.inputs, state.preparation.options));
}

void prepareChanged(FormState& state, const Row&)
{
    takeLimits(state, prepareRows[2], prepareRows[3]);
}

constexpr Form makePrepareForm()
{
    Form form = keptForm(
        toolForm(2093, "prepare activity FIT file", "Prepare", gpsTimestamp, prepareRows, checkPreparing), 3060);
    form.changed = prepareChanged;
    return form;
}

} // namespace

constinit const Form combineForm =
    toolForm(2055, "combine fit files", "Combine", gpsCombine, combineRows, checkTool<checkCombine>);
constinit const Form convertForm =
    toolForm(2056, "convert FIT file format", "Convert", gpsConvert, convertRows, checkTool<checkConvert>);
constinit const Form addForm = makeAddForm();
constinit const Form divideForm =
    toolForm(2058, "divide a fit file", "Divide", gpsDivide, divideRows, checkTool<checkDivide>);
constinit const Form excludeForm = makeExcludeForm();
constinit const Form timestampForm = makeTimestampForm();
constinit const Form dumpForm = makeDumpForm();
constinit const Form prepareForm = makePrepareForm();

} // namespace torvane
