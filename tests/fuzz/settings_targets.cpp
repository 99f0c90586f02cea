// Hostile parameter files, profile files and console arguments.
#include "targets.h"

#include "cli/console.h"
#include "command/command_table.h"
#include "command/kept_entries.h"
#include "core/files.h"
#include "core/parameter_file.h"
#include "core/record_check.h"
#include "memory_files.h"

#include <sstream>

namespace torvane {

namespace {

int runCommandLine(const std::vector<std::string>& arguments)
{
    std::ostringstream out, err;
    int code = runConsole(arguments, out, err);
    require(code >= 0 && code <= 2, "the exit code is one of three");
    return code;
}

// Commands that need no ride; which one a file goes through is told by its input's first byte.
std::vector<std::string> settingsCommands()
{
    std::vector<std::string> names;
    for (const Command& command : commandTable())
        if (command.work == Work::report || (command.work == Work::worker && command.id < 901))
            names.push_back(consoleName(command));
    return names;
}

const std::string& chosenCommand(uint8_t choice)
{
    static const std::vector<std::string> names = settingsCommands();
    return names[choice % names.size()];
}

void putFile(const std::string& path, Input bytes)
{
    memoryFiles.clear();
    memoryFiles[path] = Bytes(bytes.begin(), bytes.end());
}

// Whatever the file held: the records in force can be used, and what it held is still somewhere.
void parameters(Input input)
{
    if (input.empty())
        return;
    std::string path = inMemory("Torvane.par");
    Input bytes = input.subspan(1);
    putFile(path, bytes);
    runCommandLine({"--par", path, chosenCommand(input[0])});
    Bytes given(bytes.begin(), bytes.end());
    require(memoryFiles[path] == given, "a parameter file that is only read stays");
    ParameterBlock block;
    ParametersRead read = readParameters(path, block);
    require(isSound(block), "a block out of a file can be used");
    runCommandLine({"--par", path, "--save", "--set", "humanWeight=70", "power-and-velocity", "rideTarget=power"});
    bool there = memoryFiles[path] == given || memoryFiles[path + ".unusable1"] == given;
    require(there || read == ParametersRead::ok, "a parameter file is not lost");
    bool written = readParameters(path, block) == ParametersRead::ok;
    require(written || read == ParametersRead::refused, "what was written can be read");
}

void profile(Input input)
{
    if (input.empty())
        return;
    std::string path = inMemory("rider.pro");
    putFile(path, input.subspan(1));
    ParameterBlock block = {};
    ModelState model = {};
    Calibration calibration = {};
    Screens screens;
    if (loadProfile(screens, model, calibration, block, path) == 0)
        require(isSound(model), "a model out of a file can be used");
    runCommandLine({"--profile", path, chosenCommand(input[0])});
}

// Whatever the lines say, what is kept comes back, and no other line goes.
void settings(Input input)
{
    std::string path = inMemory("Torvane.settings");
    putFile(path, input);
    EntryFile file, again;
    if (!readEntryFile(path, file))
        return;
    size_t lines = file.lines.size();
    skippedEntries(file);
    keepValue(file, "gapLimit", "41");
    require(writeEntryFile(path, file) && readEntryFile(path, again), "the entry file can be written and read");
    require(keptValue(again, "gapLimit") == "41" && again.lines.size() - lines <= 1, "and holds what it held");
}

// A profile file of the defaults.
Bytes savedProfile()
{
    memoryFiles.clear();
    runCommandLine({"save-profile", "p.pro"});
    return memoryFiles[inMemory("p.pro")];
}

// One argument on each line.
std::vector<std::string> linesOf(Input input)
{
    std::vector<std::string> lines(1);
    for (uint8_t byte : input) {
        if (byte == '\n')
            lines.emplace_back();
        else
            lines.back() += static_cast<char>(byte);
    }
    return lines;
}

void console(Input input)
{
    static const std::vector<Bytes> rides = seedRides();
    static const Bytes profileFile = savedProfile();
    memoryFiles.clear();
    memoryFiles[inMemory("a.fit")] = rides[0];
    memoryFiles[inMemory("b.fit")] = rides[1];
    memoryFiles[inMemory("p.pro")] = profileFile;
    runCommandLine(linesOf(input));
}

// A file behind the choice of each command.
std::vector<Bytes> withChoices(const Bytes& file)
{
    std::vector<Bytes> seeds;
    for (size_t choice = 0; choice < settingsCommands().size(); ++choice) {
        seeds.push_back({static_cast<uint8_t>(choice)});
        seeds.back().insert(seeds.back().end(), file.begin(), file.end());
    }
    return seeds;
}

std::vector<Bytes> parameterSeeds()
{
    ParameterBlock block;
    setDefaults(block);
    const auto* bytes = reinterpret_cast<const uint8_t*>(&block);
    return withChoices({bytes, bytes + sizeof block});
}

std::vector<Bytes> profileSeeds()
{
    return withChoices(savedProfile());
}

std::vector<Bytes> settingsSeeds()
{
    constexpr std::string_view text = "# mine\r\n\ngapLimit = 500\njumpSpeed=50\ndropPower=on\nlater=1\nno entry\n";
    return {{text.begin(), text.end()}};
}

std::vector<Bytes> consoleSeeds()
{
    constexpr std::string_view lines[] = {
        "help",
        "--version",
        "help\nacceleration",
        "--json\nload\na.fit",
        "express\na.fit\nexpressSmoothing=2",
        "--json\nstroke\na.fit\nout.fit\npredictPower=1",
        "--into\n/memory\nconvert\nb.fit",
        "--jobs=2\n--into\n/memory\nconvert\na.fit\nb.fit",
        "combine\na.fit\nb.fit\nout.fit",
        "add\na.fit\nout.fit\naddLap=1",
        "divide\nb.fit\nout.fit",
        "exclude\na.fit\nout.fit\nexcludeLap=1",
        "timestamp\na.fit\nout.fit\ntimestampOffset=-1000",
        "dump\na.fit\nout.csv",
        "--profile\np.pro\nall-profile",
        "--par\nnew.par\n--save\n--set\nhumanWeight=72.5\nprofile\nhumanHeight=180",
        "--graph\ng.svg\nacceleration\nrideEndVelocity=30",
        "power-and-velocity\nrideTarget=power\nrideVelocity=40",
        "--json\ncadence-theory\ntheoryTarget=1",
        "gear-combination",
        "--set\nwindSpeed=3\ncritical-cornering",
    };
    std::vector<Bytes> seeds;
    for (std::string_view line : lines)
        seeds.emplace_back(line.begin(), line.end());
    return seeds;
}

} // namespace

std::span<const FuzzTarget> settingsTargets()
{
    static constexpr FuzzTarget targets[] = {
        {"parameters", parameters, parameterSeeds},
        {"profile", profile, profileSeeds},
        {"settings", settings, settingsSeeds},
        {"console", console, consoleSeeds},
    };
    return targets;
}

} // namespace torvane
