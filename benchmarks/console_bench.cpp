// The console program from its start to its end, as a process of its own: time by the clock, and peak memory.
#include "made_files.h"

#include "core/large_pages.h"
#include "core/text.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <sstream>

namespace torvane {

namespace {

using Arguments = std::vector<std::string>;

[[noreturn]] void becomeProgram(const std::vector<char*>& values)
{
    int nothing = open("/dev/null", O_WRONLY);
    dup2(nothing, 1);
    dup2(nothing, 2);
    execvp(values[0], values.data());
    _exit(127);
}

// The first word is a program's path. False when it failed. The peak that the system tells of a process counts from its
// fork, not from the start of the program: so this one is made small before, and is copied, since one that shared it
// would start from its peak.
bool runProgram(Arguments arguments, rusage& used)
{
    std::vector<char*> values;
    for (std::string& argument : arguments)
        values.push_back(argument.data());
    values.push_back(nullptr);
    malloc_trim(0);
    const pid_t child = fork();
    if (child == 0)
        becomeProgram(values);
    int status = 0;
    return child > 0 && wait4(child, &status, 0, &used) == child && status == 0;
}

double milliseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
}

Arguments ofConsole(Arguments words)
{
    words.insert(words.begin(), TORVANE_CONSOLE);
    return words;
}

// Lets the system have so much memory at hand. A virtual machine gives back to its host what lies idle for a few
// seconds, and to get it again takes ten times as long as all else that the system does to a new page.
void haveMemory(size_t bytes)
{
    std::vector<char> memory;
    memory.reserve(bytes);
    expectAllTouched(memory.data(), bytes);
    memory.resize(bytes);
    benchmark::DoNotOptimize(memory.data());
}

// The processor's time beside the clock's: other work on the machine moves it less.
void wholeProcess(benchmark::State& state, const Arguments& arguments, size_t memory = 0)
{
    double cpu = 0;
    double peak = 0;
    for (auto _ : state) {
        state.PauseTiming();
        haveMemory(memory);
        state.ResumeTiming();
        rusage used = {};
        if (!runProgram(arguments, used))
            state.SkipWithError("the program failed");
        cpu += milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
        peak = std::max(peak, static_cast<double>(used.ru_maxrss) * 1024e-6);
    }
    state.counters["cpu ms"] = cpu / static_cast<double>(state.iterations());
    state.counters["peak MB"] = peak;
}

void console(benchmark::State& state, const Arguments& words)
{
    wholeProcess(state, ofConsole(words));
}

void start(benchmark::State& state)
{
    console(state, {"power-and-velocity", "rideTarget=power", "rideVelocity=40"});
}
BENCHMARK(start)->Name("console/power-and-velocity")->UseRealTime()->Unit(benchmark::kMillisecond);

// Each command that works on files, at two sizes: hold_limits.py holds what ten times as long costs.
struct FileCommand {
    const char* name;
    Arguments words;
    int sources;
    const char* destination; // empty: writes none
    MadeFile kind = MadeFile::whole;
    bool withPower = false;
};

const FileCommand fileCommands[] = {
    {"load", {}, 1, ""},
    {"express", {}, 1, ""},
    {"analyse", {}, 1, ""},
    {"analyse", {"--rows", "-"}, 1, ""},
    {"create", {}, 1, "out.fit"},
    {"combine", {}, 2, "out.fit"},
    {"convert", {}, 1, "out.fit"},
    {"add", {"addLap=on", "addSession=on", "addActivity=on"}, 1, "out.fit", MadeFile::inTwoParts},
    {"divide", {}, 1, "out.fit", MadeFile::inTwoParts},
    {"exclude", {"excludeLap=on"}, 1, "out.fit"},
    {"stroke", {}, 1, "out.fit"},
    {"timestamp", {"hours=1"}, 1, "out.fit"},
    {"dump", {}, 1, "out.csv"},
    {"prepare", {}, 1, "out.fit"},
    {"compare", {}, 2, "", MadeFile::whole, true},
    {"ride", {}, 1, "out.fit", MadeFile::gpx},
};

void addPower(const std::string& ride, benchmark::State& state)
{
    rusage used = {};
    std::string analysed = ride + ".fit";
    if (!runProgram(ofConsole({"stroke", ride, analysed}), used))
        state.SkipWithError("the ride was not analysed");
    else
        std::filesystem::rename(analysed, ride);
}

double megabytesIn(const std::filesystem::path& folder)
{
    double bytes = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder))
        bytes += static_cast<double>(file.file_size());
    return bytes * 1e-6;
}

// Its sources lie in a folder of their own, where its destinations come to lie beside them, run after run.
void commandOnFile(benchmark::State& state, const FileCommand& command)
{
    std::filesystem::path folder = benchmarkFolder() + "console";
    std::filesystem::create_directory(folder);
    Arguments arguments = command.words;
    arguments.insert(arguments.begin(), {"--force", command.name});
    for (int i = 0; i < command.sources; ++i) {
        std::filesystem::path made = madeRide(static_cast<int>(state.range(0)), command.kind);
        arguments.push_back(folder / (formatText("source-%d", i) + made.extension().string()));
        std::filesystem::copy_file(made, arguments.back());
        if (command.withPower)
            addPower(arguments.back(), state);
    }
    if (*command.destination != '\0')
        arguments.push_back(folder / command.destination);
    console(state, arguments);
    state.counters["files MB"] = megabytesIn(folder);
    std::filesystem::remove_all(folder);
}

// A folder of rides by one call, on so many threads: hold_limits.py holds what a second one gains.
void batch(benchmark::State& state)
{
    constexpr int rides = 100;
    std::filesystem::path folder = benchmarkFolder() + "batch";
    std::filesystem::create_directories(folder / "out");
    Arguments arguments = {"--force", "--jobs", std::to_string(state.range(0)), "--into", folder / "out", "stroke"};
    for (int i = 0; i < rides; ++i) {
        arguments.push_back(folder / formatText("ride-%d.fit", i));
        std::filesystem::copy_file(madeRide(10000), arguments.back());
    }
    console(state, arguments);
    std::filesystem::remove_all(folder);
}
BENCHMARK(batch)->Name("console/batch")->Arg(1)->Arg(2)->ArgName("jobs")->UseRealTime()->Unit(benchmark::kMillisecond);

// A graph of two million points as text, which goes out point by point.
void graphAsJson(benchmark::State& state)
{
    console(state, {"--json", "--set", "decelerationIntervalMode=input", "pattern-braking",
                    "rideTarget=intermittent braking", "rideForce=-20", "rideEndVelocity=1", "intervalDistance=10",
                    "totalDistance=100000", "brakingInclination=-0.6"});
}
BENCHMARK(graphAsJson)->Name("console/graph as json/points:2110000")->UseRealTime()->Unit(benchmark::kMillisecond);

// A grid of a thousand combinations, on so many threads.
void sweep(benchmark::State& state)
{
    console(state, {"--jobs", std::to_string(state.range(0)), "sweep", "power-and-velocity", "rideVelocity=20:60:0.04",
                    "rideInclination=-10:10:1"});
    state.counters["rows"] = 1001 * 21;
}
BENCHMARK(sweep)->Name("console/sweep")->Arg(1)->Arg(2)->ArgName("jobs")->UseRealTime()->Unit(benchmark::kMillisecond);

// Whole processes of one command over rides of any length: how its cost grows, and its memory.
void growth(benchmark::State& state, const Arguments& words, const char* destination)
{
    std::filesystem::path folder = benchmarkFolder() + "growth";
    std::filesystem::create_directory(folder);
    Arguments arguments = words;
    arguments.push_back(madeRide(static_cast<int>(state.range(0))));
    if (*destination != '\0')
        arguments.push_back(folder / destination);
    size_t bytes = std::filesystem::file_size(arguments[words.size()]);
    constexpr size_t mostTimes = 12; // its file that a command takes of memory
    wholeProcess(state, ofConsole(arguments), mostTimes * bytes);
    state.counters["file MB"] = static_cast<double>(bytes) * 1e-6;
    std::filesystem::remove_all(folder);
}

// What stands beside a figure of ours: the system's own copy of the same bytes, and another program that reads the
// ride, named by TORVANE_ANCHOR as words in front of its path. In the same run, in turns.
void anchorCopy(benchmark::State& state)
{
    std::string copy = benchmarkFolder() + "copy";
    wholeProcess(state, {"cp", madeRide(seasonRide), copy});
}
BENCHMARK(anchorCopy)->Name("anchor/copy of the ride")->UseRealTime()->Unit(benchmark::kMillisecond);

void anchorWrite(benchmark::State& state)
{
    std::string text = benchmarkFolder() + "dumped.csv";
    rusage used = {};
    if (!runProgram(ofConsole({"--force", "dump", madeRide(seasonRide), text}), used))
        state.SkipWithError("no text");
    wholeProcess(state, {"dd", "if=" + text, "of=" + benchmarkFolder() + "copy", "bs=64k", "status=none"});
}
BENCHMARK(anchorWrite)->Name("anchor/write of the dump")->UseRealTime()->Unit(benchmark::kMillisecond);

void anchorProgram(benchmark::State& state, Arguments words)
{
    words.push_back(madeRide(static_cast<int>(state.range(0))));
    wholeProcess(state, words);
}

std::string rowName(const FileCommand& command)
{
    bool tellsRows = !command.words.empty() && command.words[0] == "--rows";
    return std::string("console/") + command.name + (command.kind == MadeFile::gpx ? " of gpx" : "") +
           (tellsRows ? " with rows" : "");
}

Arguments wordsOf(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

void registerGrowth()
{
    const struct {
        const char* name;
        Arguments words;
        const char* destination;
    } commands[] = {
        {"load", {"load"}, ""},
        {"at one stroke", {"--force", "stroke"}, "out.fit"},
        {"ride", {"--force", "ride"}, "out.fit"},
        {"analyse with rows", {"--rows", "-", "analyse"}, ""},
        {"graph of a ride", {"--force", "--graph", "/dev/null", "stroke"}, "out.fit"},
    };
    for (const auto& [name, words, destination] : commands)
        benchmark::RegisterBenchmark(("growth/" + std::string(name)).c_str(), growth, words, destination)
            ->RangeMultiplier(10)
            ->Range(1000, 10'000'000)
            ->ArgName("records")
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    if (const char* anchor = std::getenv("TORVANE_ANCHOR"))
        benchmark::RegisterBenchmark("anchor/program", anchorProgram, wordsOf(anchor))
            ->Arg(seasonRide)
            ->ArgName("records")
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
}

int registerCommands()
{
    registerGrowth();
    for (const FileCommand& command : fileCommands) {
        auto* row = benchmark::RegisterBenchmark(rowName(command).c_str(), commandOnFile, command);
        row->Arg(10000)->Arg(seasonRide)->ArgName("records")->UseRealTime()->Unit(benchmark::kMillisecond);
        if (command.kind == MadeFile::gpx)
            row->Arg(10 * seasonRide);
    }
    return 0;
}
const int registered = registerCommands();

} // namespace

} // namespace torvane
