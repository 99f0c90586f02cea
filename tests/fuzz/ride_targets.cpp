// Hostile activity files through the load, the commands of a loaded ride and every FIT tool.
#include "targets.h"

#include "command/gps_command.h"
#include "command/gps_load_command.h"
#include "command/settings_command.h"
#include "core/files.h"
#include "fit/fit_crc.h"
#include "fit/fit_tools.h"
#include "fit/fit_walk.h"
#include "gps/analysis.h"
#include "gps/gps_load.h"
#include "gps/one_stroke_check.h"
#include "gps/prepare.h"
#include "memory_files.h"
#include "report/fit_report.h"

#include <algorithm>

namespace torvane {

namespace {

const std::string destinationFile = inMemory("out.fit");

// An input taken apart from its front; at its end all bytes are 0.
struct Reader {
    Input rest;

    uint8_t byte()
    {
        if (rest.empty())
            return 0;
        uint8_t value = rest[0];
        rest = rest.subspan(1);
        return value;
    }
    Input bytes(size_t count)
    {
        Input taken = rest.first(std::min(count, rest.size()));
        rest = rest.subspan(taken.size());
        return taken;
    }
};

// Wraps a data block, without the program's own code for it.
Bytes fileOf(Input bytes, uint8_t shape)
{
    if ((shape & inputIsWholeFile) != 0)
        return {bytes.begin(), bytes.end()};
    FitBuilder builder;
    builder.data.assign(bytes.begin(), bytes.end());
    return builder.file((shape & inputLegacyHeader) != 0 ? 12 : 14);
}

// The records as at the start of the program, and the options of an input.
struct Start {
    uint8_t shape;
    std::array<uint8_t, rideOptions> options = {};
    size_t sources = 0;

    int32_t bit(size_t index) const
    {
        return options[index / 8] >> index % 8 & 1;
    }
    OutputChoice output() const
    {
        return {bit(60), bit(61), bit(62), options[6] % 9};
    }
};

Session session;

// Writes the sources of an input and puts their paths in.
Start open(Input input, bool several)
{
    session.working = session.saved;
    memoryFiles.clear();
    session.inputs = {};
    Reader reader = {input};
    Start start = {reader.byte()};
    for (uint8_t& option : start.options)
        option = reader.byte();
    start.sources = several ? 2 + (start.shape >> inputMoreSourcesShift & 3) : 1;
    for (size_t i = 0; i < start.sources; ++i) {
        size_t length = reader.rest.size();
        if (i + 1 < start.sources) {
            length = reader.byte();
            length |= static_cast<size_t>(reader.byte()) << 8;
        }
        std::string path = inMemory("in" + std::to_string(i) + ".fit");
        memoryFiles[path] = fileOf(reader.bytes(length), start.shape);
        session.inputs.files[i].path = path;
    }
    bool overSource = (start.shape & inputOverSource) != 0;
    session.inputs.files[toolDestination].path = overSource ? session.inputs.files[0].path : destinationFile;
    return start;
}

FitImage loaded(const std::string& path)
{
    FitImage image = {};
    require(loadFitImage(image, path) == fitOk, "a written file can be loaded");
    return image;
}

size_t countRecords(const FitImage& image)
{
    size_t count = 0;
    walkMessages(image, [&](const FitMessage& message) { count += message.isData(messageRecord); });
    return count;
}

enum class Keeps { nothing, records, size }; // what a tool must leave as it was

struct Tool {
    Verdict (*check)(ToolInputs&, ParameterBlock&);
    ToolOutcome (*run)(const ToolInputs&, const ParameterBlock&, Progress*);
    StatusCode success;
    Keeps keeps;
};

void requireKept(const FitImage& source, const FitImage& written, Keeps keeps)
{
    if (keeps == Keeps::size)
        require(written.data.size() == source.data.size(), "the data block keeps its size");
    if (keeps != Keeps::nothing)
        require(countRecords(written) == countRecords(source), "all records are kept");
}

void requireSoundOutput(const FitImage& source, const Tool& tool)
{
    // As many bytes of the header are written as it claims to have: what claims another size than the two of the format
    // cannot be read again.
    if (source.headerBytes[0] != legacyHeaderSize && source.headerBytes[0] != modernHeaderSize)
        return;
    const std::string& path = session.inputs.files[toolDestination].path;
    if (tool.success != fitDivided) {
        requireSoundFile(path);
        requireKept(source, loaded(path), tool.keeps);
        return;
    }
    // Divided by record definitions, a part holds its own definition alone: records of another one behind it cannot be
    // read there, as where several definitions alternate.
    const SourceFileInfo& divided = session.inputs.files[0];
    if (divided.sessionCount < 2 && divided.lapCount < 2)
        return;
    for (int32_t part = 0; part < dividedPartCount(divided); ++part)
        requireSoundFile(dividedFileName(path, part));
}

void runTool(const Tool& tool)
{
    if (!tool.check(session.inputs, session.working).passed)
        return;
    FitImage source = {};
    loadFitImage(source, session.inputs.files[0].path); // which a check need not have read whole
    ToolOutcome outcome = tool.run(session.inputs, session.working, nullptr);
    reportStatus(session.screens, outcome.path, outcome.code);
    if (outcome.code == tool.success)
        requireSoundOutput(source, tool);
    else
        require(!fileExists(destinationFile), "a run that failed leaves no file");
}

void takeChoices(const Start& start, ParameterBlock& block)
{
    block.combineOutput = block.convertOutput = block.addOutput = block.divideOutput = start.output();
    block.excludeOutput = block.timestampOutput = start.output();
    block.addLap = block.excludeLap = block.convertSpeedUnit = block.timestampTruncate = start.bit(0);
    block.addSession = block.excludeSession = start.bit(1);
    block.addActivity = block.excludeActivity = start.bit(2);
    uint32_t offset = start.options[1] | start.options[2] << 8 | static_cast<uint32_t>(start.options[3]) << 24;
    block.timestampOffset = static_cast<int32_t>(offset);
}

template <auto check, auto run, StatusCode success, Keeps keeps>
void use(Input input)
{
    takeChoices(open(input, success == fitCombined), session.working);
    runTool({check, run, success, keeps});
}

void dump(Input input)
{
    open(input, false);
    session.inputs.files[toolDestination].path = inMemory("out.csv");
    if (!checkFieldDump(session.inputs, session.working).passed)
        return;
    ToolOutcome outcome = runFieldDump(session.inputs, session.working);
    bool written = fileExists(inMemory("out.csv"));
    bool answered = outcome.code == fitOk || outcome.code == fitConverted || !outcome.reported;
    require(written == answered, "a dump is written where it succeeded");
}

void prepare(Input input)
{
    Start start = open(input, false);
    PrepareOptions options = {.gapLimit = leastGapLimit + start.options[1],
                              .jumpSpeed = leastJumpSpeed + start.options[2],
                              .dropPower = start.bit(0),
                              .dropCadence = start.bit(1)};
    if (!checkPrepare(session.inputs, options).passed || runPrepare(session.inputs, options).tool.code != fitPrepared)
        return;
    const std::string& path = session.inputs.files[toolDestination].path;
    requireSoundFile(path);
    FitImage once = loaded(path), twice = {};
    PrepareFindings findings = {};
    // Rides of bytes at random may still change where their track leaps about; a device's do not.
    require(prepareActivity(once, options, twice, findings) == fitOk, "a prepared ride can be prepared");
}

// Settings of the analysis, within the limits of their dialog.
void takeAnalysis(const Start& start, ParameterBlock& block)
{
    block.expressSmoothing = block.analyseSmoothing = start.options[0] % 3;
    block.flatCourse = start.bit(8);
    block.predictCadence = start.bit(9);
    block.predictPower = start.bit(10);
    block.analysePowerBase = start.options[1] >> 4 & 3;
    block.detectBraking = start.bit(14);
    block.limitPowerPrediction = start.bit(15);
    block.expressFieldsData = start.bit(11);
    block.analyseWindSpeed = start.options[2] % 16;
    block.analyseWindDirection = start.options[3] % 36 * 10;
    block.averageTemperature = start.options[4] % 60 - 15;
    block.thresholdSpeed = start.options[5] % 11;
    block.createOutput = start.output();
}

void load(Input input)
{
    takeAnalysis(open(input, false), session.working);
    session.chosenRide = session.inputs.files[0].path;
    if (loadGpsFile(session) != fitOk)
        return;
    expressSourceData(session);
    if (session.readiness == readyForAnalysis)
        analyseAndPredict(session);
}

void requireAnalysed(const std::string& path)
{
    requireSoundFile(path);
    LoadedRide ride = {loaded(path)};
    require(gatherActivity(ride) != fitInvalid, "an analysed file can be read as a ride");
    GpsRecords records(ride.inventory.recordCount);
    require(fillRecords(ride.image, records) == fitOk, "the rows of an analysed file can be read");
}

void writer(Input input)
{
    takeAnalysis(open(input, false), session.working);
    LoadedRide scanned;
    if (!checkOneStrokeSource(session.inputs, {}, true, scanned).passed)
        return;
    std::string destination = session.inputs.files[toolDestination].path;
    Bytes source = memoryFiles[session.inputs.files[0].path];
    StatusCode code = atOneStroke(session);
    if (code == fitOk)
        requireAnalysed(destination);
    else
        require(memoryFiles[session.inputs.files[0].path] == source, "a run that failed leaves its source");
}

std::vector<Bytes> seeds(int optionSets)
{
    std::vector<Bytes> inputs;
    for (const Bytes& ride : seedRides()) {
        Bytes whole(1 + rideOptions, 0);
        whole[0] = inputIsWholeFile;
        whole.insert(whole.end(), ride.begin(), ride.end());
        inputs.push_back(whole);
        for (int set = 0; set < optionSets; ++set) {
            Bytes block(1 + rideOptions, static_cast<uint8_t>(set * 0x55));
            block[0] = 0;
            block.insert(block.end(), ride.begin() + ride[0], ride.end() - 2);
            inputs.push_back(block);
        }
    }
    return inputs;
}

std::vector<Bytes> rideSeeds()
{
    return seeds(4);
}

// Each ride with each other: two data blocks, the first led by its length.
std::vector<Bytes> combineSeeds()
{
    std::vector<Bytes> inputs;
    for (const Bytes& first : seedRides())
        for (const Bytes& second : seedRides()) {
            Bytes input(1 + rideOptions, 0);
            size_t length = first.size() - first[0] - 2;
            input.push_back(static_cast<uint8_t>(length));
            input.push_back(static_cast<uint8_t>(length >> 8));
            input.insert(input.end(), first.begin() + first[0], first.end() - 2);
            input.insert(input.end(), second.begin() + second[0], second.end() - 2);
            inputs.push_back(input);
        }
    return inputs;
}

} // namespace

size_t soundFileCount = 0;

void require(bool holds, const char* what)
{
    if (holds)
        return;
    fprintf(stderr, "not so: %s\n", what);
    std::abort();
}

void requireSoundFile(const std::string& path)
{
    FitImage image = loaded(path);
    require(image.data.size() == static_cast<size_t>(image.dataSize), "the header tells the size of the data block");
    require(walkMessages(image, [](const FitMessage&) {}) == fitOk, "the messages end where the data block ends");
    const Bytes& file = memoryFiles[path];
    require(file.size() == file[0] + image.data.size() + 2, "nothing follows the file's CRC");
    require(bitwiseCrc(file) == 0, "the file's CRC is right");
    ++soundFileCount;
}

void runOnFile(const FuzzTarget& target, const Bytes& file, uint8_t options)
{
    Bytes input(1 + rideOptions, options);
    input[0] = inputIsWholeFile;
    input.insert(input.end(), file.begin(), file.end());
    target.run(input);
}

std::span<const FuzzTarget> rideTargets()
{
    static constexpr FuzzTarget targets[] = {
        {"load", load, rideSeeds},
        {"writer", writer, rideSeeds},
        {"combine", use<checkCombine, runCombine, fitCombined, Keeps::nothing>, combineSeeds},
        {"convert", use<checkConvert, runConvert, fitConverted, Keeps::size>, rideSeeds},
        {"add", use<checkAddMessages, runAddMessages, fitAdded, Keeps::records>, rideSeeds},
        {"divide", use<checkDivide, runDivide, fitDivided, Keeps::nothing>, rideSeeds},
        {"exclude", use<checkExclude, runExclude, fitAdded, Keeps::records>, rideSeeds},
        {"timestamp", use<checkTimestamp, runTimestamp, fitConverted, Keeps::size>, rideSeeds},
        {"dump", dump, rideSeeds},
        {"prepare", prepare, rideSeeds},
    };
    return targets;
}

} // namespace torvane
