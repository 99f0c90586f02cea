// The add tool: builds the lap, session and activity messages that a device has not stored, from the records. The file
// is taken in segments, one for each definition of records; each gets a lap and a session of its own behind it.
// The only tool that invents definitions.
#include "core/units.h"
#include "fit/add_layout.h"
#include "fit/add_segment.h"
#include "fit/fit_types.h"
#include "fit/message_fields.h"
#include "fit/tool_support.h"

#include <algorithm>
#include <bit>

namespace torvane {

namespace {

// What a walk ahead has found, and what follows from it.
struct AddPlan {
    uint32_t localUsed = 0;                         // bit n: local type n is defined somewhere, or has data
    std::array<bool, addedKindCount> inSource = {}; // the source defines this kind of message
    uint16_t recordDefinitionTotal = 0;
    uint16_t sessionTotal = 0; // session data messages
    bool recordsHaveTime = false;
    size_t plannedSize = 0;
    DefinitionsInForce activities = {};                 // that of activity data met so far, by local type
    bool activityDefinedAnew = false;                   // one of these local types is, behind the data
    std::array<uint8_t, addedKindCount> localType = {}; // of the messages that are added
};

constexpr size_t activitySize = 12;     // definition and data with the number of sessions alone
constexpr size_t activityTimeSize = 21; // three fields of four bytes and their triples

bool isAdded(const ParameterBlock& options, size_t kind)
{
    return options.*addedMessages[kind].option != 0;
}

void planRecordDefinition(AddPlan& plan, const LocalDefinition& record, const ParameterBlock& options)
{
    plan.recordDefinitionTotal++;
    for (size_t kind : {addedLap, addedSession})
        if (isAdded(options, kind))
            plan.plannedSize += addedSize(placeFields(addedMessages[kind], record));
    for (const FieldDefinition& field : record.fieldList())
        plan.recordsHaveTime |= field.number == recordTimestamp;
}

// Devices define the same again and again; another definition of a local type takes the meaning of its activities away.
void followActivities(AddPlan& plan, const FitMessage& message)
{
    std::span<const uint8_t>& activity = plan.activities[message.localType];
    if (message.isData(messageActivity))
        activity = message.definition->message;
    plan.activityDefinedAnew |= !activity.empty() && !sameDefinition(activity, message.definition->message);
}

void planMessage(AddPlan& plan, const FitMessage& message, const ParameterBlock& options)
{
    followActivities(plan, message);
    plan.localUsed |= 1u << message.localType;
    if (!message.isDefinition) {
        plan.sessionTotal += message.globalMessage() == messageSession;
        return;
    }
    for (size_t kind = 0; kind < addedKindCount; ++kind)
        plan.inSource[kind] |= message.globalMessage() == addedMessages[kind].message;
    if (message.globalMessage() == messageRecord)
        planRecordDefinition(plan, *message.definition, options);
}

// 0, or fitInvalid.
StatusCode planAddedSize(AddPlan& plan, const FitImage& source, const ParameterBlock& options)
{
    plan.plannedSize = source.data.size();
    StatusCode code = walkMessages(source, [&](const FitMessage& message) { planMessage(plan, message, options); });
    if (isAdded(options, addedActivity))
        plan.plannedSize += activitySize + (plan.recordsHaveTime ? activityTimeSize : 0);
    return code;
}

// Gives each added message the lowest local type that is free. False when there are too few.
bool assignLocalTypes(AddPlan& plan, const ParameterBlock& options)
{
    for (size_t kind = 0; kind < addedKindCount; ++kind) {
        if (!isAdded(options, kind))
            continue;
        int lowest = std::countr_one(plan.localUsed);
        if (lowest >= localTypeCount)
            return false;
        plan.localType[kind] = static_cast<uint8_t>(lowest);
        plan.localUsed |= 1u << lowest;
    }
    return true;
}

// The run once its sizes are known.
struct AddRun {
    const FitImage& source;
    const ParameterBlock& options;
    const AddPlan& plan;
    FitOutput out;
    FitWalk walk = {};           // over the segments
    LocalDefinition record = {}; // latest definition of records
    Segment segment = {};
    std::array<CountedFields, localTypeCount> counted = {}; // of the definitions of records, by local type
    DefinitionsInForce inForce = {};                        // in the output
    size_t repeatedBytes = 0;                               // of definitions that were written again
    size_t activitiesFrom = source.data.size();             // offset; those behind it were copied
};

// A message that comes to stand elsewhere can find its local type defined otherwise there: its own definition is then
// written again in front of it.
std::span<uint8_t> copyDefined(AddRun& run, const FitMessage& message)
{
    std::span<const uint8_t>& inForce = run.inForce[message.localType];
    std::span<const uint8_t> wanted = message.definition->message;
    if (!message.isDefinition && !sameDefinition(wanted, inForce)) {
        copyBytes(run.out, wanted);
        run.repeatedBytes += wanted.size();
    }
    inForce = wanted;
    return copyMessage(run.out, message);
}

uint16_t sessionNumber(const AddRun& run)
{
    if (run.plan.sessionTotal == 0 && run.options.addSession != 0)
        return run.plan.recordDefinitionTotal;
    return run.plan.sessionTotal;
}

StatusCode copyFileId(AddRun& run)
{
    return walkMessages(run.source, [&](const FitMessage& message) {
        if (message.globalMessage() == messageFileId)
            markManufacturer(message, copyDefined(run, message));
    });
}

// A timer that the source's own summary gives goes before the one that is summed up.
void takeSummaryTimer(AddRun& run, const FitMessage& message)
{
    bool counts = message.isData(messageSession) || (message.isData(messageLap) && !run.plan.inSource[addedSession]);
    std::optional<uint32_t> timer = counts ? lastUint32(message, summaryTotalTimer) : std::nullopt;
    if (timer)
        run.segment.set.entry.totalTimer = *timer;
}

void copySegmentMessage(AddRun& run, const FitMessage& message)
{
    bool skipped = message.globalMessage() == messageFileId || message.isData(messageActivity);
    if (skipped)
        return;
    applySport(message, copyDefined(run, message), run.options.addOutput);
    if (message.defines(messageRecord)) {
        run.record = *message.definition;
        run.counted[message.localType] = countedFieldsOf(run.record);
    }
    takeSummaryTimer(run, message);
    if (message.isData(messageRecord))
        countRecord(run.segment, run.counted[message.localType], message.payload);
}

// Copies up to the next segment's definition of records and sums the records up.
StatusCode segmentWalk(AddRun& run)
{
    FitMessage message;
    bool ownDefinitionSeen = false;
    for (;;) {
        WalkStep step = nextMessage(run.walk, message);
        if (step == WalkStep::fault)
            return fitInvalid;
        if (step == WalkStep::end)
            break;
        bool opensNext = message.defines(messageRecord) && ownDefinitionSeen;
        if (opensNext) {
            run.walk.position = message.offset; // to be met again as the first of its segment
            break;
        }
        ownDefinitionSeen |= message.defines(messageRecord);
        copySegmentMessage(run, message);
    }
    finaliseSessionLap(run.segment.set);
    return fitOk;
}

void appendBytes(AddRun& run, std::initializer_list<uint8_t> bytes)
{
    copyBytes(run.out, {bytes.begin(), bytes.size()});
}

void appendNumber(AddRun& run, uint32_t value, uint8_t size)
{
    writeUint32Field(reserveBytes(run.out, size), value, run.record.bigEndian());
}

void writeAddedDefinition(AddRun& run, size_t kind, const std::vector<PlacedField>& fields)
{
    appendBytes(run, {static_cast<uint8_t>(run.plan.localType[kind] | headerDefinition), 0, run.record.architecture});
    appendNumber(run, addedMessages[kind].message, 2);
    appendNumber(run, static_cast<uint32_t>(fields.size()), 1);
    for (const PlacedField& field : fields)
        appendBytes(run, {field.definition.number, field.definition.size, field.definition.baseType});
}

void writeAddedData(AddRun& run, size_t kind, const std::vector<PlacedField>& fields)
{
    appendBytes(run, {run.plan.localType[kind]});
    uint32_t last = kind == addedActivity ? sessionNumber(run) : sportValue(run.options.addOutput.sportIndex);
    for (const PlacedField& field : fields)
        appendNumber(run, field.value != nullptr ? field.value(run.segment.set.entry) : last, field.definition.size);
}

// A definition cannot hold more fields than its count byte tells.
StatusCode writeAdded(AddRun& run, size_t kind)
{
    std::vector<PlacedField> fields = placeFields(addedMessages[kind], run.record);
    if (fields.size() > maxFieldCount)
        return fitInvalid;
    writeAddedDefinition(run, kind, fields);
    writeAddedData(run, kind, fields);
    return fitOk;
}

void copyActivity(AddRun& run, const FitMessage& message)
{
    std::span<uint8_t> copy = copyDefined(run, message);
    forEachCopiedField(message, copy, [&](const FieldDefinition& field, size_t, std::span<uint8_t> bytes) {
        if (field.number == activitySessionCount)
            writeUint16Field(bytes, sessionNumber(run), message.definition->bigEndian());
    });
}

// All activity data from here to the end of the source. Where their local type is defined anew each is copied once.
StatusCode copyActivities(AddRun& run, FitWalk ahead)
{
    size_t before = run.plan.activityDefinedAnew ? run.activitiesFrom : run.source.data.size();
    FitMessage message;
    WalkStep step;
    while ((step = nextMessage(ahead, message)) == WalkStep::message)
        if (message.isData(messageActivity) && message.offset < before)
            copyActivity(run, message);
    return step == WalkStep::end ? fitOk : fitInvalid;
}

// Looks ahead from the segment.
StatusCode copyActivitiesBehind(AddRun& run)
{
    StatusCode code = copyActivities(run, run.walk);
    run.activitiesFrom = std::min(run.activitiesFrom, run.walk.position);
    return code;
}

// Behind each segment. A kind that is not asked for but stands in the source brings the activities behind the segment
// along instead; the plan has room for each of them once, so where they come more often the run ends with a fault.
StatusCode writeSegmentMessages(AddRun& run)
{
    for (size_t kind : {addedLap, addedSession}) {
        StatusCode code = fitOk;
        if (isAdded(run.options, kind))
            code = writeAdded(run, kind);
        else if (run.plan.inSource[kind])
            code = copyActivitiesBehind(run);
        if (code != fitOk)
            return code;
    }
    return fitOk;
}

// At the end of the file: the source's own activities, and behind them the added one. There can be both, since the
// check does not see an activity whose local type means something else in the end.
StatusCode writeActivity(AddRun& run)
{
    StatusCode code = run.plan.inSource[addedActivity] ? copyActivities(run, startWalk(run.source)) : fitOk;
    return code == fitOk && isAdded(run.options, addedActivity) ? writeAdded(run, addedActivity) : code;
}

// Low 16 bits, as all speeds of records.
uint16_t thresholdOf(const ParameterBlock& options)
{
    return static_cast<uint16_t>(truncateToInteger(options.thresholdSpeed * 1000 / kphPerMps)); // mm/s from kph
}

StatusCode writeSegments(AddRun& run)
{
    uint32_t totalTimer = 0;
    run.walk = startWalk(run.source);
    for (int i = 0; i < run.plan.recordDefinitionTotal; ++i) {
        run.segment = {.threshold = thresholdOf(run.options)};
        StatusCode code = segmentWalk(run);
        if (code == fitOk)
            code = writeSegmentMessages(run);
        if (code != fitOk)
            return code;
        totalTimer += run.segment.set.entry.totalTimer;
    }
    run.segment.set.entry.totalTimer = totalTimer;
    return fitOk;
}

// Writes the whole data block, as far as it has room. 0, or fitInvalid.
StatusCode writeBlock(AddRun& run)
{
    StatusCode code = copyFileId(run);
    if (code == fitOk)
        code = writeSegments(run);
    if (code == fitOk)
        code = writeActivity(run);
    bool asPlanned = run.out.position == run.plan.plannedSize + run.repeatedBytes;
    return code == fitOk && !asPlanned ? fitInvalid : code;
}

// Fills destination.data. How much room repeated definitions take is known once the block has been written without it.
StatusCode addMessages(FitImage& destination, const FitImage& source, const ParameterBlock& options)
{
    AddPlan plan;
    if (StatusCode code = planAddedSize(plan, source, options); code != fitOk)
        return code;
    if (!assignLocalTypes(plan, options))
        return fitAddFailed;
    size_t size = plan.plannedSize;
    do {
        if (size > mostMade(source.data.size()))
            return fitTooLarge;
        destination.data.assign(size, 0);
        AddRun run = {source, options, plan, {destination.data}};
        if (StatusCode code = writeBlock(run); code != fitOk)
            return code;
        size = run.out.position;
    } while (size != destination.data.size());
    return fitOk;
}

void warnAndClear(ParameterBlock& options, size_t kind, const char* text, Verdict& verdict)
{
    options.*addedMessages[kind].option = 0;
    refuse(verdict, "warning", text);
}

// In the order of the local types, as they stand defined at the end of the source.
void checkExisting(const SourceFileInfo& info, ParameterBlock& options, Verdict& verdict)
{
    for (uint16_t message : info.messagesAtEnd)
        for (size_t kind = 0; kind < addedKindCount; ++kind)
            if (message == addedMessages[kind].message && isAdded(options, kind))
                warnAndClear(options, kind, addedMessages[kind].alreadyThere, verdict);
}

// A local type once defined stays so to the end of the file.
bool enoughLocalTypes(const SourceFileInfo& info, const ParameterBlock& options)
{
    AddPlan plan;
    plan.localUsed = info.localTypesDefined;
    return assignLocalTypes(plan, options);
}

bool checkAddable(const SourceFileInfo& info, ParameterBlock& options, Verdict& verdict)
{
    checkExisting(info, options, verdict);
    if (!endsWithDefinitionOf(info, messageRecord))
        return refuse(verdict, "error", "not existing record message");
    if (info.recordDefinitionCount < info.sessionCount && options.addLap != 0)
        warnAndClear(options, addedLap,
                     "lap message could not be added to a fit file with much session messages than record "
                     "definitions.\nthat might be a rare case strange architecture in guessing.",
                     verdict);
    if (!enoughLocalTypes(info, options))
        return refuse(verdict, "error", "no free local message type in a source file");
    return true;
}

} // namespace

Verdict checkAddMessages(ToolInputs& inputs, ParameterBlock& options)
{
    Verdict verdict;
    FitImage source = {};
    if (checkSourceHeader(inputs, source, verdict, "detect an invalid source file structure") &&
        checkActivity(inputs, source, verdict, "failed to read a source file which might be an invalid structure") &&
        checkAddable(inputs.files[0], options, verdict))
        checkDestination(inputs, verdict);
    return verdict;
}

ToolOutcome runAddMessages(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress)
{
    auto fill = [&](FitImage& destination, const FitImage& source) {
        return addMessages(destination, source, options);
    };
    return rewriteSource(inputs, options.addOutput, progress, {fitAdded, fitAddFailed}, fill);
}

} // namespace torvane
