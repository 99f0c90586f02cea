// The divide tool: one file for each session, else for each lap, else for each definition of records. Each part holds
// the file_id, its own messages and the activity.
#include "core/text.h"
#include "fit/message_fields.h"
#include "fit/tool_support.h"

#include <algorithm>
#include <utility>

namespace torvane {

namespace {

enum class DivideMode { none, bySession, byLap, byRecordDefinition };

struct DividePlan {
    DivideMode mode;
    int32_t parts;
};

// The first count above 1 decides.
DividePlan planDivision(const SourceFileInfo& info)
{
    if (info.sessionCount >= 2)
        return {DivideMode::bySession, info.sessionCount};
    if (info.lapCount >= 2)
        return {DivideMode::byLap, info.lapCount};
    if (info.recordDefinitionCount >= 2)
        return {DivideMode::byRecordDefinition, info.recordDefinitionCount};
    return {DivideMode::none, 0};
}

// What one part has got so far.
struct Part {
    std::vector<uint8_t> block;
    DefinitionsInForce inForce = {}; // as the part itself has them
    size_t start = 0;                // of the part's own stretch, in its block
    DefinitionsInForce atStart = {}; // in force there in the source
    bool lacksDefinition = false;    // some message of it finds another definition than in the source, or none
    uint32_t keptRecords = 0;
    uint32_t firstDistance = 0; // of the part's first record
    uint32_t firstCycles = 0;
    uint32_t firstTimestamp = 0;
    uint32_t partTimer = 0; // ms from a kept session or lap, s from records: the last one goes to the activity
    uint32_t partTime = 0;  // FIT seconds
    size_t mostBytes = largestDataSize;
    bool tooLarge = false;
};

// One walk of the source fills as many parts as this: an ordinary file is divided in one walk, and a strange one with a
// part for every few bytes still needs little memory.
constexpr int32_t partsPerWalk = 128;

struct PartsWalk {
    const OutputChoice& output;
    DivideMode mode;
    int32_t firstPart; // number of parts[0]
    std::vector<Part> parts;
    int32_t sessionsSeen = 0;
    int32_t lapsSeen = 0;
    int32_t recordDefinitionsSeen = -1;
    DefinitionsInForce definitions = {}; // in force in the source
};

// The part whose stretch of the file the walk is in; outside all of them there are no parts.
std::span<Part> presentPart(PartsWalk& walk)
{
    int32_t seen = walk.mode == DivideMode::bySession ? walk.sessionsSeen
                   : walk.mode == DivideMode::byLap   ? walk.lapsSeen
                                                      : walk.recordDefinitionsSeen;
    seen -= walk.firstPart;
    if (seen < 0 || static_cast<size_t>(seen) >= walk.parts.size())
        return {};
    return std::span(walk.parts).subspan(static_cast<size_t>(seen), 1);
}

// The parts that keep a message.
std::span<Part> keepers(PartsWalk& walk, uint16_t message)
{
    bool byAll = message == messageFileId || message == messageActivity ||
                 (message == messageSession && walk.mode != DivideMode::bySession) ||
                 (message == messageLap && walk.mode == DivideMode::byRecordDefinition);
    return byAll ? std::span(walk.parts) : presentPart(walk);
}

// Returns the copy, empty where the part is too large to take it.
std::span<uint8_t> append(Part& part, std::span<const uint8_t> bytes)
{
    size_t start = part.block.size();
    part.tooLarge = part.tooLarge || bytes.size() > part.mostBytes - start;
    if (part.tooLarge)
        return {};
    part.block.insert(part.block.end(), bytes.begin(), bytes.end());
    return std::span(part.block).subspan(start);
}

void appendDefinition(Part& part, const FitMessage& message)
{
    part.inForce[message.localType] = message.definition->message;
    append(part, message.definition->message);
}

// Opens the part of this definition of records, where there is one.
std::span<Part> openPart(PartsWalk& walk)
{
    std::span<Part> own = presentPart(walk);
    for (Part& part : own) {
        part.start = part.block.size();
        part.atStart = walk.definitions;
    }
    return own;
}

// The parts that take a definition where it stands; others write theirs in front of the messages that need it.
std::span<Part> takersOf(PartsWalk& walk, uint16_t message)
{
    if (message == messageFileId || message == messageActivity)
        return walk.parts;
    if (message != messageRecord)
        return {};
    walk.recordDefinitionsSeen++;
    return walk.mode == DivideMode::byRecordDefinition ? openPart(walk) : walk.parts;
}

void takeDefinition(PartsWalk& walk, const FitMessage& message)
{
    for (Part& part : takersOf(walk, message.globalMessage()))
        appendDefinition(part, message);
    walk.definitions[message.localType] = message.bytes;
}

// Writes a value less the one that the part's first record has.
void writeFromFirst(const Part& part, uint32_t& first, uint32_t value, std::span<uint8_t> bytes, bool bigEndian)
{
    if (part.keptRecords == 0)
        first = value;
    writeUint32Field(bytes, value - first, bigEndian);
}

void patchRecordField(Part& part, uint8_t field, uint32_t value, std::span<uint8_t> bytes, bool bigEndian)
{
    switch (field) {
    case recordDistance:
        return writeFromFirst(part, part.firstDistance, value, bytes, bigEndian);
    case recordTotalCycles:
        return writeFromFirst(part, part.firstCycles, value, bytes, bigEndian);
    case recordTimestamp:
        if (part.keptRecords == 0)
            part.firstTimestamp = value;
        part.partTime = value;
        part.partTimer = value - part.firstTimestamp;
        return;
    }
}

void patchActivityField(const Part& part, uint8_t field, std::span<uint8_t> bytes, bool bigEndian)
{
    switch (field) {
    case activityTotalTimer:
        return writeUint32Field(bytes, part.partTimer, bigEndian);
    case activitySessionCount:
        return writeUint16Field(bytes, 1, bigEndian);
    case activityLocalTimestamp:
    case timestampField:
        return writeUint32Field(bytes, part.partTime, bigEndian);
    }
}

void takeSummaryField(Part& part, uint8_t field, uint32_t value)
{
    if (field == summaryTotalTimer)
        part.partTimer = value;
    else if (field == timestampField)
        part.partTime = value;
}

void patchField(Part& part, const FitMessage& message, const FieldDefinition& field, size_t offset,
                std::span<uint8_t> bytes)
{
    bool bigEndian = message.definition->bigEndian();
    uint32_t value = readUint32(message.payload, offset, bigEndian);
    switch (message.globalMessage()) {
    case messageSession:
    case messageLap:
        return takeSummaryField(part, field.number, value);
    case messageRecord:
        return patchRecordField(part, field.number, value, bytes, bigEndian);
    case messageActivity:
        return patchActivityField(part, field.number, bytes, bigEndian);
    }
}

bool wantsOwnDefinition(uint16_t message)
{
    return message != messageFileId && message != messageActivity && message != messageRecord;
}

// Definitions stand in front of each message that needs one, not only of the first: the file stays valid.
void copyKept(const PartsWalk& walk, Part& part, const FitMessage& message)
{
    if (wantsOwnDefinition(message.globalMessage()))
        appendDefinition(part, message);
    part.lacksDefinition |= !sameDefinition(part.inForce[message.localType], message.definition->message);
    std::span<uint8_t> copy = append(part, message.bytes);
    markManufacturer(message, copy);
    applySport(message, copy, walk.output);
    forEachCopiedField(message, copy, [&](const FieldDefinition& field, size_t offset, std::span<uint8_t> bytes) {
        patchField(part, message, field, offset, bytes);
    });
}

// The part's own stretch of the source is read with definitions that stand in front of it.
void restoreDefinitions(Part& part)
{
    if (!part.lacksDefinition || part.tooLarge)
        return;
    std::vector<uint8_t> front;
    for (std::span<const uint8_t> definition : part.atStart)
        front.insert(front.end(), definition.begin(), definition.end());
    part.block.insert(part.block.begin() + static_cast<std::ptrdiff_t>(part.start), front.begin(), front.end());
}

// A session or lap closes its part, so it is counted behind itself.
void countData(PartsWalk& walk, uint16_t message)
{
    if (message == messageRecord)
        for (Part& part : presentPart(walk))
            part.keptRecords++;
    walk.sessionsSeen += message == messageSession;
    walk.lapsSeen += message == messageLap;
}

void takeMessage(PartsWalk& walk, const FitMessage& message)
{
    if (message.isDefinition)
        return takeDefinition(walk, message);
    for (Part& part : keepers(walk, message.globalMessage()))
        copyKept(walk, part, message);
    countData(walk, message.globalMessage());
}

// Parts from one number on, as many as a walk fills. 0, or fitInvalid as every walk.
StatusCode fillParts(std::vector<Part>& parts, const FitImage& source, const OutputChoice& output,
                     const DividePlan& plan, int32_t first)
{
    size_t count = static_cast<size_t>(std::min(partsPerWalk, plan.parts - first));
    Part empty;
    empty.mostBytes = mostMade(source.data.size());
    PartsWalk walk = {output, plan.mode, first, std::vector<Part>(count, empty)};
    StatusCode code = walkMessages(source, [&](const FitMessage& message) { takeMessage(walk, message); });
    std::ranges::for_each(walk.parts, restoreDefinitions);
    parts = std::move(walk.parts);
    return code;
}

StatusCode savePart(Part& part, const FitImage& source, const OutputChoice& form, const std::string& path)
{
    if (part.tooLarge)
        return fitTooLarge;
    FitImage destination = {};
    destination.data = std::exchange(part.block, {});
    return saveDestination(destination, source, form, path) ? fitOk : fitDivideFailed;
}

// What is told of the parts that were written.
struct Division {
    std::string names;
    std::vector<int32_t> withoutRecord; // numbers of parts
};

void note(Division& division, const Part& part, int32_t number, const std::string& path)
{
    division.names += (number == 0 ? "" : ", ");
    division.names += reportedName(path);
    if (part.keptRecords == 0)
        division.withoutRecord.push_back(number);
}

// "001, 003 to 007"
std::string partNumbers(std::span<const int32_t> numbers)
{
    std::string text;
    constexpr size_t longest = 200; // characters that a box may well show
    for (size_t i = 0, end = 0; i < numbers.size(); i = end) {
        if (text.size() > longest)
            return text + ", ...";
        for (end = i + 1; end < numbers.size() && numbers[end] == numbers[end - 1] + 1;)
            end++;
        text += formatText(i == 0 ? "%03d" : ", %03d", static_cast<int>(numbers[i]));
        if (end - i > 1)
            text += formatText(" to %03d", static_cast<int>(numbers[end - 1]));
    }
    return text;
}

std::vector<Box> boxesOf(const Division& division, int32_t parts)
{
    if (division.withoutRecord.empty())
        return {};
    std::string text =
        formatText("%d of %d divided files have no record message: ", static_cast<int>(division.withoutRecord.size()),
                   static_cast<int>(parts));
    return {{"warning", text + partNumbers(division.withoutRecord)}};
}

} // namespace

std::string dividedFileName(const std::string& basePath, int32_t part)
{
    size_t dot = std::min(basePath.rfind('.'), basePath.size());
    return basePath.substr(0, dot) + formatText("_%03d", static_cast<int>(part)) + basePath.substr(dot);
}

int32_t dividedPartCount(const SourceFileInfo& source)
{
    return planDivision(source).parts;
}

namespace {

bool checkParts(const DividePlan& plan, Verdict& verdict)
{
    if (plan.mode == DivideMode::none)
        return refuse(verdict, "error", "found no condition for divide a source file");
    return plan.parts <= mostParts || refuse(verdict, "error", "found too many parts for divide a source file");
}

} // namespace

Verdict checkDivide(ToolInputs& inputs, ParameterBlock&)
{
    Verdict verdict;
    FitImage source = {};
    if (!checkSourceHeader(inputs, source, verdict, "detect an invalid source file structure") ||
        !checkActivity(inputs, source, verdict, "failed to read a source file which might be invalid structure"))
        return verdict;
    if (checkParts(planDivision(inputs.files[0]), verdict))
        checkPartDestinations(inputs, verdict);
    return verdict;
}

// The form of the parts' headers is that of the add tool's choice; the divide dialog's own form has no effect.
ToolOutcome runDivide(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress)
{
    SourceFileInfo info = inputs.files[0];
    FitImage source = {};
    if (StatusCode code = openSource(source, info, progress); code != fitOk)
        return {code, info.path};
    DividePlan plan = planDivision(info);
    if (plan.parts > mostParts)
        return {fitTooLarge, info.path};
    std::vector<Part> parts;
    Division division;
    for (int32_t k = 0; k < plan.parts; ++k) {
        if (k % partsPerWalk == 0)
            if (StatusCode code = fillParts(parts, source, options.divideOutput, plan, k); code != fitOk)
                return {code, info.path};
        if (progress != nullptr)
            progress->goToTheEnd();
        std::string path = dividedFileName(inputs.files[toolDestination].path, k);
        Part& part = parts[static_cast<size_t>(k % partsPerWalk)];
        if (StatusCode code = savePart(part, source, options.addOutput, path); code != fitOk)
            return {code, info.path};
        note(division, part, k, path);
    }
    return {fitDivided, division.names, true, boxesOf(division, plan.parts)};
}

} // namespace torvane
