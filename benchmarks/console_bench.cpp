// The console program from its start to its end, as a process of its own: time by the clock, and peak memory.
#include "made_files.h"

#include "core/text.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

namespace torvane {

namespace {

using Arguments = std::vector<std::string>;

[[noreturn]] void becomeProgram(const std::vector<char*>& values)
{
    int nothing = open("/dev/null", O_WRONLY);
    dup2(nothing, 1);
    dup2(nothing, 2);
    execv(TORVANE_CONSOLE, values.data());
    _exit(127);
}

// False when the program failed. The peak that the system tells of a process counts from its fork, not from the start
// of the program: so this one is made small before, and is copied, since one that shared it would start from its peak.
bool runProgram(Arguments arguments, rusage& used)
{
    arguments.insert(arguments.begin(), TORVANE_CONSOLE);
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

// The processor's time beside the clock's: other work on the machine moves it less.
void console(benchmark::State& state, const Arguments& arguments)
{
    double cpu = 0;
    double peak = 0;
    for (auto _ : state) {
        rusage used = {};
        if (!runProgram(arguments, used))
            state.SkipWithError("the program failed");
        cpu += milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
        peak = std::max(peak, static_cast<double>(used.ru_maxrss) * 1024e-6);
    }
    state.counters["cpu ms"] = cpu / static_cast<double>(state.iterations());
    state.counters["peak MB"] = peak;
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
    {"ride", {"--force"}, 1, "out.fit", MadeFile::gpx},
};

void addPower(const std::string& ride, benchmark::State& state)
{
    rusage used = {};
    std::string analysed = ride + ".fit";
    if (!runProgram({"stroke", ride, analysed}, used))
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

// Its sources lie in a folder of their own, where its destinations come to lie beside them.
void commandOnFile(benchmark::State& state, const FileCommand& command)
{
    std::filesystem::path folder = benchmarkFolder() + "console";
    std::filesystem::create_directory(folder);
    Arguments arguments = command.words;
    arguments.insert(arguments.begin(), command.name);
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
    Arguments arguments = {"--jobs", std::to_string(state.range(0)), "--into", folder / "out", "stroke"};
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

std::string rowName(const FileCommand& command)
{
    bool tellsRows = !command.words.empty() && command.words[0] == "--rows";
    return std::string("console/") + command.name + (command.kind == MadeFile::gpx ? " of gpx" : "") +
           (tellsRows ? " with rows" : "");
}

int registerCommands()
{
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
