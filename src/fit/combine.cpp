// The combine tool: two to five activities become one, in the order of their start. Message streams are put one behind
// the other: a definition holds from where it stands, so none has to be changed.
#include "core/files.h"
#include "fit/fit_types.h"
#include "fit/message_fields.h"
#include "fit/tool_support.h"

#include <algorithm>

namespace torvane {

namespace {

using SourceImages = std::array<FitImage, combinedSourceCount>;
using SourceOrder = std::array<size_t, combinedSourceCount>;

// The files but for the destination.
template <class Inputs>
auto sourcesOf(Inputs& inputs)
{
    return std::span(inputs.files).template first<combinedSourceCount>();
}

int countInUse(const ToolInputs& inputs)
{
    auto sources = sourcesOf(inputs);
    return static_cast<int>(
        std::count_if(sources.begin(), sources.end(), [](const SourceFileInfo& info) { return info.inUse; }));
}

size_t firstFree(ToolInputs& inputs)
{
    auto sources = sourcesOf(inputs);
    return static_cast<size_t>(std::ranges::find(sources, false, &SourceFileInfo::inUse) - sources.begin());
}

// A file that comes again later, by whatever name, is blanked there, so that it counts once.
bool takeSources(ToolInputs& inputs, Verdict& verdict)
{
    auto sources = sourcesOf(inputs);
    for (size_t i = 0; i < sources.size(); ++i) {
        sources[i].inUse = !sources[i].path.empty();
        if (!sources[i].inUse)
            continue;
        if (!fileExists(sources[i].path))
            return refuse(verdict, "error", "found an invalid fullpath of a source file", i);
        for (SourceFileInfo& later : sources.subspan(i + 1))
            if (isSameFile(later.path, sources[i].path))
                later.path.clear();
    }
    if (countInUse(inputs) < 2)
        return refuse(verdict, "error", "too few source file for combine fit files", firstFree(inputs));
    return true;
}

bool surveySources(ToolInputs& inputs, Verdict& verdict)
{
    auto sources = sourcesOf(inputs);
    for (size_t i = 0; i < sources.size(); ++i) {
        FitImage image = {};
        if (sources[i].inUse && surveyFitFile(image, sources[i]) != fitOk)
            return refuse(verdict, "error", "failed to read a source file which might be invalid structure", i);
    }
    for (size_t i = 0; i < sources.size(); ++i)
        if (sources[i].inUse && sources[i].fileType != fileTypeActivity)
            return refuse(verdict, "error", "found an invalid file id type of a source file", i);
    return true;
}

// Fires only where the later file ends before it starts; files that overlap in the ordinary way pass, as they always
// have.
bool timesCollide(const SourceFileInfo& a, const SourceFileInfo& b)
{
    return (a.startTimestamp < b.startTimestamp && a.startTimestamp > b.endTimestamp) ||
           (a.endTimestamp < b.startTimestamp && a.endTimestamp > b.endTimestamp);
}

bool checkPair(const SourceFileInfo& a, const SourceFileInfo& b, Verdict& verdict)
{
    if (timesCollide(a, b))
        return refuse(verdict, "error", "found timestamp duplication between source files");
    if (a.fieldsPresent != b.fieldsPresent)
        return refuse(verdict, "error",
                      "found different condition about existings of remarkable fields between source files");
    if (a.recordInterval != b.recordInterval)
        return refuse(verdict, "error", "found different recording time-intervals between source files");
    return true;
}

bool checkPairs(ToolInputs& inputs, Verdict& verdict)
{
    auto sources = sourcesOf(inputs);
    for (size_t i = 0; i < sources.size(); ++i)
        for (size_t j = i + 1; j < sources.size(); ++j)
            if (sources[i].inUse && sources[j].inUse && !checkPair(sources[i], sources[j], verdict))
                return false;
    return true;
}

// By start, paths not in use last; equal starts keep their order. Without a start in the first path the order of the
// paths stands, a blank one included, and reading that one will fail.
SourceOrder orderOfSources(const ToolInputs& inputs)
{
    constexpr uint32_t notInUse = 0xFFFFFFFE;
    SourceOrder order;
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    auto key = [&](size_t i) { return inputs.files[i].inUse ? inputs.files[i].startTimestamp : notInUse; };
    if (inputs.files[0].startTimestamp != 0)
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return key(a) < key(b); });
    return order;
}

// What the combined activity says.
struct CombinedTotals {
    uint32_t timer = 0; // ms
    uint32_t sessions = 0;
};

CombinedTotals addUp(std::span<const size_t> order, const ToolInputs& inputs)
{
    CombinedTotals totals;
    for (size_t i : order) {
        totals.timer += inputs.files[i].activityTimer;
        totals.sessions += static_cast<uint32_t>(inputs.files[i].sessionCount);
    }
    return totals;
}

void writeTotals(const FitMessage& message, std::span<uint8_t> copy, const CombinedTotals& totals)
{
    bool bigEndian = message.definition->bigEndian();
    forEachCopiedField(message, copy, [&](const FieldDefinition& field, size_t, std::span<uint8_t> bytes) {
        if (field.number == activityTotalTimer)
            writeUint32Field(bytes, totals.timer, bigEndian);
        else if (field.number == activitySessionCount)
            writeUint32Field(bytes, totals.sessions, bigEndian);
    });
}

// All of the earliest file but the activity.
StatusCode combineCopyFirst(FitOutput& out, const FitImage& source, const OutputChoice& output)
{
    return walkMessages(source, [&](const FitMessage& message) {
        if (message.globalMessage() == messageActivity)
            return;
        std::span<uint8_t> copy = copyMessage(out, message);
        markManufacturer(message, copy);
        applySport(message, copy, output);
    });
}

// All of a later file but its file_id and its activity.
StatusCode combineCopyNext(FitOutput& out, const FitImage& source, const OutputChoice& output)
{
    return walkMessages(source, [&](const FitMessage& message) {
        if (message.globalMessage() != messageFileId && message.globalMessage() != messageActivity)
            applySport(message, copyMessage(out, message), output);
    });
}

// The activity of the last file.
StatusCode combineCopyActivity(FitOutput& out, const FitImage& source, const CombinedTotals& totals)
{
    return walkMessages(source, [&](const FitMessage& message) {
        if (message.globalMessage() != messageActivity)
            return;
        std::span<uint8_t> copy = copyMessage(out, message);
        if (!message.isDefinition)
            writeTotals(message, copy, totals);
    });
}

// One pass over all sources; fills in the outcome where a walk fails.
StatusCode combineAll(FitOutput& out, const SourceImages& images, std::span<const size_t> order,
                      const ToolInputs& inputs, const OutputChoice& output, ToolOutcome& outcome)
{
    for (size_t i : order) {
        StatusCode code =
            i == order.front() ? combineCopyFirst(out, images[i], output) : combineCopyNext(out, images[i], output);
        if (code != fitOk) {
            outcome = {code, inputs.files[i].path};
            return code;
        }
    }
    StatusCode code = combineCopyActivity(out, images[order.back()], addUp(order, inputs));
    if (code != fitOk)
        outcome = {code, inputs.files[order.back()].path};
    return code;
}

// The check has read the header: a path whose header cannot be had now cannot be opened either.
StatusCode rereadSource(FitImage& image, const std::string& path)
{
    readFitHeader(image, path);
    return readFitFile(image, path);
}

// A pass over an empty block tells the size, the same pass over a block of that size writes it.
bool combineInto(FitImage& destination, const SourceImages& images, std::span<const size_t> order,
                 const ToolInputs& inputs, const OutputChoice& output, ToolOutcome& outcome)
{
    FitOutput plan = {destination.data};
    if (combineAll(plan, images, order, inputs, output, outcome) != fitOk)
        return false;
    bool tooLarge = plan.position > largestDataSize;
    destination.data.resize(tooLarge ? 0 : plan.position);
    FitOutput out = {destination.data};
    if (combineAll(out, images, order, inputs, output, outcome) != fitOk)
        return false;
    if (out.position == destination.data.size())
        return true;
    outcome = {fitSizeMismatch, inputs.files[toolDestination].path};
    return false;
}

} // namespace

Verdict checkCombine(ToolInputs& inputs, ParameterBlock&)
{
    Verdict verdict;
    for (SourceFileInfo& info : inputs.files)
        clearSurvey(info);
    if (takeSources(inputs, verdict) && checkDestination(inputs, verdict) && surveySources(inputs, verdict))
        checkPairs(inputs, verdict);
    return verdict;
}

ToolOutcome runCombine(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress)
{
    const std::string& path = inputs.files[toolDestination].path;
    SourceOrder sorted = orderOfSources(inputs);
    std::span<const size_t> order = std::span(sorted).first(static_cast<size_t>(countInUse(inputs)));
    if (order.empty())
        return {fitCannotOpen, path};
    SourceImages images = {};
    for (size_t i : order)
        if (StatusCode code = rereadSource(images[i], inputs.files[i].path); code != fitOk)
            return {code, path};
    for (FitImage& image : images)
        image.progress = progress;
    FitImage destination = {};
    ToolOutcome outcome;
    if (!combineInto(destination, images, order, inputs, options.combineOutput, outcome))
        return outcome;
    if (!saveDestination(destination, images[order.front()], options.combineOutput, path))
        return {fitCombineFailed, path};
    return {fitCombined, path};
}

} // namespace torvane
