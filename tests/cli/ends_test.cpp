// How a call of the console ends that does not come to its own end: by a signal, without memory or room. What was
// written stands whole, and nothing half made is left behind.
#include "console_fixture.h"

#include "cli/ending_signals.h"
#include "cli/platform.h"
#include "core/files.h"
#include "in_child.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <streambuf>
#include <sys/resource.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace torvane {
namespace {

// What the console prints and answers in a child goes into a file.
int callInChild(const std::vector<std::string>& arguments, const std::string& printed)
{
    catchEndingSignals();
    Call answer = call(arguments);
    std::string text = answer.out + answer.err;
    writeBytes(printed, {text.begin(), text.end()});
    return answer.code;
}

struct ConsoleEnds : testing::Test {
    ConsoleEnds()
    {
        for (const char* name : {"out", "temporary"})
            std::filesystem::create_directory(in + name);
        writeBytes(a, plainRide());
        writeBytes(c, plainRide());
        ::setenv("TMPDIR", (in + "temporary").c_str(), 1);
    }
    ~ConsoleEnds() override
    {
        ::unsetenv("TMPDIR");
    }
    size_t countIn(const char* name) const
    {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(in + name), {}));
    }

    TestFolder folder;
    const std::string& in = folder.path;
    std::string a = in + "a.fit", b = in + "b.fit", c = in + "c.fit", printed = in + "printed";
};

// The second ride of a batch, and with two threads the third one, waits for the writer of its pipe when the signal
// comes.
TEST_F(ConsoleEnds, aSignalEndsABatchInOrder)
{
    std::string d = in + "d.fit";
    for (const std::string& pipe : {b, d})
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (auto [signal, jobs] : {std::pair{SIGINT, "1"}, {SIGTERM, "2"}, {SIGHUP, "2"}}) {
        SCOPED_TRACE(testing::Message() << "signal " << signal << ", jobs " << jobs);
        pid_t child = startChild([&, jobs = jobs] {
            return callInChild(
                {"--json", "--jobs", jobs, "--into", in + "out", "convert", "fitFormat=legacy", a, b, d, c}, printed);
        });
        int pipe = ::open(b.c_str(), O_WRONLY); // waits for its reader
        int second = *jobs == '2' ? ::open(d.c_str(), O_WRONLY) : ::dup(pipe);
        ::kill(child, signal);
        EXPECT_EQ(endOf(child), 128 + signal);
        ::close(pipe);
        ::close(second);
        EXPECT_EQ(countIn("out"), 2u) << "the first ride, and the list of them";
        EXPECT_EQ(countIn("temporary"), 0u);
        EXPECT_TRUE(contains(textOf(printed), "out/a.fit\"]}\n"));
        EXPECT_TRUE(contains(textOf(printed), "\"source\": \"" + b));
        EXPECT_TRUE(contains(textOf(printed), "\"error\": {\"kind\": \"stopped\", "));
        std::filesystem::remove(in + "out/a.fit");
        std::filesystem::remove(in + "out/torvane-batch.ndjson");
    }
}

TEST_F(ConsoleEnds, aSignalStopsASweepAndSaysSo)
{
    pid_t child = startChild([&] {
        return callInChild(
            {"--json", "--jobs=1", "--rows", in + "out/rows.csv", "sweep", "801", "rideVelocity=10:60:0.00001"},
            printed);
    });
    for (int i = 0; i < 1000 && countIn("out") == 0; ++i) // it has begun to write
        ::usleep(10'000);
    ::kill(child, SIGINT);
    EXPECT_EQ(endOf(child), 128 + SIGINT);
    EXPECT_TRUE(contains(textOf(printed), "\"kind\": \"stopped\"")) << textOf(printed);
    EXPECT_FALSE(contains(textOf(printed), "failed to write"));
    EXPECT_EQ(countIn("out"), 0u);
}

TEST_F(ConsoleEnds, aSignalThatWasIgnoredStaysIgnored)
{
    EXPECT_EQ(inChild([] {
                  std::signal(SIGHUP, SIG_IGN); // as nohup does
                  catchEndingSignals();
                  return std::raise(SIGHUP);
              }),
              0);
}

TEST_F(ConsoleEnds, aStreamThatWasClosedLendsItsNumberToNoFile)
{
    EXPECT_EQ(inChild([] {
                  ::close(STDERR_FILENO);
                  prepareStreams();
                  return ::open("/dev/null", O_RDONLY) > STDERR_FILENO;
              }),
              1);
    EXPECT_TRUE(commandLine(0, nullptr).empty());
}

TEST_F(ConsoleEnds, aFileBeyondTheLimitOfTheProcessIsAWriteThatFails)
{
    writeBytes(in + "out/a.fit", {});
    int code = inChild([&] {
        catchEndingSignals();
        rlimit limit = {500, 500};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return call({"convert", "fitFormat=legacy", a, in + "out/a.fit"}).code;
    });
    EXPECT_EQ(code, 1);
    EXPECT_EQ(countIn("out"), 1u);
    EXPECT_EQ(bytesOf(in + "out/a.fit"), Bytes());
}

// A ride whose header claims, and whose file has, more than there is memory for.
TEST_F(ConsoleEnds, aRideWithoutMemoryIsOneThatFails)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends a process without memory";
#endif
    writeBytes(b, {14, 0x10, 0, 0, 0, 0, 0, 0x40, '.', 'F', 'I', 'T', 0, 0});
    std::filesystem::resize_file(b, 0x4000'0010);
    int code = inChild([&] {
        rlimit limit = {0x2000'0000, 0x2000'0000};
        ::setrlimit(RLIMIT_AS, &limit);
        return callInChild({"--json", "--into", in + "out", "convert", "fitFormat=legacy", a, b, c}, printed);
    });
    EXPECT_EQ(code, 1);
    EXPECT_EQ(countIn("out"), 3u) << "two rides, and the list of them";
    EXPECT_TRUE(contains(textOf(printed), "\"boxes\": [{\"title\": \"error\", \"text\": \"not enough memory\"}], "
                                          "\"error\": {\"kind\": \"outOfMemory\", "));
    EXPECT_TRUE(contains(textOf(printed), "failed: " + b + "\n"));
}

TEST_F(ConsoleEnds, aLineWithoutMemoryIsAnsweredAndTheNextOneRead)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends a process without memory";
#endif
    constexpr size_t mebibyte = size_t{1} << 20;
    std::string lines = "{\"name\": \"long.fit\", \"bytes\": \"" + std::string(64 * mebibyte, 'A') + "\"}\n\n{}\n";
    writeBytes(b, Bytes(lines.begin(), lines.end()));
    lines = {};
    int code = inChild([&] {
        if (std::freopen(b.c_str(), "r", stdin) == nullptr)
            return 99;
        size_t pages = 0; // of the process, first in its list
        std::ifstream("/proc/self/statm") >> pages;
        size_t room = pages * 4096 + 96 * mebibyte;
        rlimit limit = {room, room};
        ::setrlimit(RLIMIT_AS, &limit);
        return callInChild({"--stdin", "--json", "ride"}, printed);
    });
    EXPECT_EQ(code, 1);
    std::string answers = textOf(printed);
    EXPECT_TRUE(contains(answers, "\"error\": {\"kind\": \"outOfMemory\", "));
    EXPECT_TRUE(contains(answers, "}\n{\"error\": {\"kind\": \"badValue\", \"text\": \"this line has no name"));
}

// Takes all and keeps nothing.
struct Sink : std::streambuf {
    int_type overflow(int_type c) override
    {
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(const char*, std::streamsize count) override
    {
        return count;
    }
};

// Peak of what a call takes beyond what is there already, in whole times of its source.
int timesOfSource(const std::vector<std::string>& arguments, const std::string& source)
{
    return inChild([&] {
        auto peak = [] {
            rusage usage = {};
            ::getrusage(RUSAGE_SELF, &usage);
            return static_cast<uintmax_t>(usage.ru_maxrss) * 1024;
        };
        uintmax_t before = peak();
        Sink sink;
        std::ostream nowhere(&sink);
        int code = runConsole(arguments, nowhere, nowhere);
        return code != 0 ? 99 : static_cast<int>((peak() - before) / std::filesystem::file_size(source));
    });
}

TEST_F(ConsoleEnds, aLongRideTakesAFewTimesItsFile)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizers take memory of their own";
#endif
    writeBytes(a, plainRide(200'000)); // 21 bytes a record; it takes 104 as a row
    const std::tuple<std::vector<std::string>, int> cases[] = {
        {{"stroke", a, b}, 7},
        {{"--rows", in + "rows.csv", "stroke", a, b}, 8},
        {{"ride", a, b}, 9},
        {{"--rows", in + "rows.csv", "ride", a, b}, 9},
        {{"--rows", in + "rows.csv", "analyse", a}, 8},
        {{"--json", "express", a}, 8},
        {{"stroke", a, b, "expressFieldsData=1"}, 8},
        {{"--graph", in + "graph.svg", "stroke", a, b}, 8},
        {{"--json", "--graph", in + "graph.svg", "ride", a}, 9},
    };
    for (const auto& [arguments, most] : cases) {
        EXPECT_LT(timesOfSource(arguments, a), most) << testing::PrintToString(arguments);
        if (!std::filesystem::exists(b))
            continue;
        EXPECT_TRUE(contains(call({"load", b}).out, "record data counted 200000")) << "whole, its CRC right";
        std::filesystem::remove(b);
    }
}

} // namespace
} // namespace torvane
