// The add tool: builds the lap, session and activity messages that a device has not stored, from the records. The file
// is taken in segments, one for each definition of records; each gets a lap and a session of its own behind it.
// The only tool that invents definitions.
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
    uint32_t localUsed = 0;                         // bit n: local type n is defined somewhere
    std::array<bool, addedKindCount> inSource = {}; // the source defines this kind of message
    uint16_t recordDefinitionTotal = 0;
    uint16_t sessionTotal = 0; // session data messages
    bool recordsHaveTime = false;
    size_t plannedSize = 0;
    std::array<std::span<const uint8_t>, localTypeCount> definedBy = {};  // definition message in force
    std::array<std::span<const uint8_t>, localTypeCount> activities = {}; // that of activity data met so far
    bool activitiesCanMove = true;                      // to the end of the file, where their definitions still hold
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
    if (message.isDefinition)
        plan.definedBy[message.localType] = message.bytes;
    else if (message.globalMessage() == messageActivity)
        activity = plan.definedBy[message.localType];
    if (!activity.empty() && !std::ranges::equal(activity, plan.definedBy[message.localType]))
        plan.activitiesCanMove = false;
}

void planMessage(AddPlan& plan, const FitMessage& message, const ParameterBlock& options)
{
    followActivities(plan, message);
    if (!message.isDefinition) {
        plan.sessionTotal += message.globalMessage() == messageSession;
        return;
    }
    plan.localUsed |= 1u << message.localType;
    for (size_t kind = 0; kind < addedKindCount; kind++)
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
    for (size_t kind = 0; kind < addedKindCount; kind++) {
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
};

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
            markManufacturer(message, copyMessage(run.out, message));
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
    applySport(message, copyMessage(run.out, message), run.options.addOutput);
    if (message.defines(messageRecord))
        run.record = *message.definition;
    takeSummaryTimer(run, message);
    if (message.isData(messageRecord))
        countRecord(run.segment, message);
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
    std::span<uint8_t> copy = copyMessage(run.out, message);
    forEachCopiedField(message, copy, [&](const FieldDefinition& field, size_t, std::span<uint8_t> bytes) {
        if (field.number == activitySessionCount)
            writeUint16Field(bytes, sessionNumber(run), message.definition->bigEndian());
    });
}

// All activity data from here to the end of the source.
StatusCode copyActivities(AddRun& run, FitWalk ahead)
{
    FitMessage message;
    WalkStep step;
    while ((step = nextMessage(ahead, message)) == WalkStep::message)
        if (message.isData(messageActivity))
            copyActivity(run, message);
    return step == WalkStep::end ? fitOk : fitInvalid;
}

// Looks ahead from the segment and leaves the slots as they were.
StatusCode copyActivitiesBehind(AddRun& run)
{
    auto slots = localDefinitions;
    StatusCode code = copyActivities(run, run.walk);
    localDefinitions = slots;
    return code;
}

// Behind each segment. A kind that is not asked for but stands in the source brings the activities behind the segment
// along instead; the plan has no room for these, so where there are any the run ends with a fault.
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

// At the end of the file: the added activity, or the source's own.
StatusCode writeActivity(AddRun& run)
{
    if (isAdded(run.options, addedActivity))
        return writeAdded(run, addedActivity);
    return run.plan.inSource[addedActivity] ? copyActivities(run, startWalk(run.source)) : fitOk;
}

// Low 16 bits, as all speeds of records.
uint16_t thresholdOf(const ParameterBlock& options)
{
    return static_cast<uint16_t>(truncateToInteger(options.thresholdSpeed * 1000 / 3.6)); // mm/s from kph
}

StatusCode writeSegments(AddRun& run)
{
    uint32_t totalTimer = 0;
    run.walk = startWalk(run.source);
    for (int i = 0; i < run.plan.recordDefinitionTotal; i++) {
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

// Fills destination.data.
StatusCode addMessages(FitImage& destination, const FitImage& source, const ParameterBlock& options)
{
    AddPlan plan;
    if (StatusCode code = planAddedSize(plan, source, options); code != fitOk)
        return code;
    if (plan.plannedSize > largestDataSize)
        return fitInvalid;
    bool activitiesMove = !isAdded(options, addedActivity);
    if (!assignLocalTypes(plan, options) || (activitiesMove && !plan.activitiesCanMove))
        return fitAddFailed;
    destination.data.resize(plan.plannedSize);
    AddRun run = {source, options, plan, {destination.data}};
    StatusCode code = copyFileId(run);
    if (code == fitOk)
        code = writeSegments(run);
    if (code == fitOk)
        code = writeActivity(run);
    if (code == fitOk && run.out.position != plan.plannedSize)
        code = fitInvalid;
    return code;
}

void warnAndClear(ParameterBlock& options, size_t kind, const char* text, Verdict& verdict)
{
    options.*addedMessages[kind].option = 0;
    refuse(verdict, "warning", text);
}

// In the order of the local types, as they stand defined at the end of the source.
void checkExisting(ParameterBlock& options, Verdict& verdict)
{
    for (const LocalDefinition& slot : localDefinitions)
        for (size_t kind = 0; kind < addedKindCount; kind++)
            if (slot.globalMessage == addedMessages[kind].message && isAdded(options, kind))
                warnAndClear(options, kind, addedMessages[kind].alreadyThere, verdict);
}

// A local type once defined stays so to the end of the file.
bool enoughLocalTypes(const ParameterBlock& options)
{
    AddPlan plan;
    for (size_t i = 0; i < localDefinitions.size(); i++)
        plan.localUsed |= localDefinitions[i].defined() ? 1u << i : 0;
    return assignLocalTypes(plan, options);
}

bool checkAddable(const SourceFileInfo& info, ParameterBlock& options, Verdict& verdict)
{
    checkExisting(options, verdict);
    if (!endsWithDefinitionOf(messageRecord))
        return refuse(verdict, "error", "not existing record message");
    if (info.recordDefinitionCount < info.sessionCount && options.addLap != 0)
        warnAndClear(options, addedLap,
                     "lap message could not be added to a fit file with much session messages than record "
                     "definitions.\nthat might be a rare case strange architecture in guessing.",
                     verdict);
    if (!enoughLocalTypes(options))
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

ToolOutcome runAddMessages(ToolInputs& inputs, ParameterBlock& options)
{
    auto fill = [&](FitImage& destination, const FitImage& source) {
        return addMessages(destination, source, options);
    };
    return rewriteSource(inputs, options.addOutput, {fitAdded, fitAddFailed}, fill);
}

} // namespace torvane
