// The console program from its start to its end, as a process of its own: time by the clock, and peak memory.
#include "made_files.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>

extern char** environ;

namespace torvane {

namespace {

using Arguments = std::vector<std::string>;

// False when the program failed.
bool runProgram(Arguments arguments, rusage& used)
{
    arguments.insert(arguments.begin(), TORVANE_CONSOLE);
    std::vector<char*> values;
    for (std::string& argument : arguments)
        values.push_back(argument.data());
    values.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int stream : {1, 2})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int failed = posix_spawn(&child, TORVANE_CONSOLE, &actions, nullptr, values.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    return failed == 0 && wait4(child, &status, 0, &used) == child && status == 0;
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

// Each command that works on files, at two sizes: what ten times as long costs.
struct FileCommand {
    const char* name;
    Arguments words;
    bool writes;
    MadeFile source = MadeFile::whole;
};

const FileCommand fileCommands[] = {
    {"load", {"load"}, false},
    {"express", {"express"}, false},
    {"analyse", {"analyse"}, false},
    {"create", {"create"}, true},
    {"stroke", {"stroke"}, true},
    {"convert", {"convert"}, true},
    {"add", {"add", "addLap=on", "addSession=on", "addActivity=on"}, true, MadeFile::inTwoParts},
    {"divide", {"divide"}, true, MadeFile::inTwoParts},
    {"exclude", {"exclude", "excludeLap=on"}, true},
    {"timestamp", {"timestamp", "hours=1"}, true},
    {"dump", {"dump"}, true},
};

void commandOnFile(benchmark::State& state)
{
    const FileCommand& command = fileCommands[state.range(0)];
    Arguments arguments = command.words;
    arguments.push_back(madeRide(static_cast<int>(state.range(1)), command.source));
    if (command.writes)
        arguments.push_back(benchmarkFolder() + "console-out" +
                            (command.name == std::string("dump") ? ".csv" : ".fit"));
    console(state, arguments);
}

int registerCommands()
{
    for (int64_t i = 0; i < std::ssize(fileCommands); ++i)
        for (int64_t records : {10000, seasonRide})
            benchmark::RegisterBenchmark((std::string("console/") + fileCommands[i].name).c_str(), commandOnFile)
                ->Args({i, records})
                ->ArgNames({"", "records"})
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
    return 0;
}
const int registered = registerCommands();

} // namespace

} // namespace torvane
