// Many rides by one call: what a later call leaves out, what it finds in folders and lists, and what stands in its way.
#include "console_fixture.h"

#include "cli/ending_signals.h"
#include "cli/in_order.h"
#include "core/held_file.h"
#include "core/json_reader.h"
#include "in_child.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace torvane {
namespace {

struct BatchTest : ConsoleTest {
    BatchTest()
    {
        for (const char* name : {"a.fit", "b.fit", "c.fit"})
            put(name, plainRide());
        std::filesystem::create_directory(out);
    }
    // With --json: an answer for each ride.
    Call batch(const std::vector<std::string>& options, const std::vector<std::string>& files = {"a", "b", "c"}) const
    {
        std::vector<std::string> arguments = {"--json", "--into", out};
        arguments.insert(arguments.end(), options.begin(), options.end());
        for (const std::string& name : files)
            arguments.push_back(in + name + ".fit");
        return call(arguments);
    }
    static size_t count(const std::string& text, const std::string& part)
    {
        size_t found = 0;
        for (size_t at = 0; (at = text.find(part, at)) != text.npos; ++at)
            ++found;
        return found;
    }

    std::string out = in + "out", manifest = out + "/torvane-batch.ndjson";
};

// Each change lets the rides be done again that it concerns, and no other.
TEST_F(BatchTest, aLaterCallDoesWhatHasChanged)
{
    put("own.pro", {});
    ASSERT_EQ(call({"--force", "save-profile", in + "own.pro"}).code, 0);
    struct Change {
        const char* name;
        size_t again;
        std::function<void()> make;
        std::vector<std::string> options = {};
    };
    const Change changes[] = {
        {"nothing", 0, [] {}},
        {"a ride", 1, [&] { put("b.fit", plainRide(401)); }},
        {"the time of a ride", 1,
         [&] { std::filesystem::last_write_time(in + "a.fit", std::filesystem::file_time_type::clock::now()); }},
        {"an output is gone", 1, [&] { std::filesystem::remove(out + "/c.fit"); }},
        {"an output is cut", 1, [&] { std::filesystem::resize_file(out + "/c.fit", 40); }},
        {"a half line", 1, [&] { std::filesystem::resize_file(manifest, std::filesystem::file_size(manifest) - 9); }},
        {"an entry", 3, [] {}, {"dropPower=on"}},
        {"a setting", 3, [] {}, {"--set", "humanWeight=71"}},
        {"a profile", 3, [] {}, {"--profile", in + "own.pro"}},
    };
    for (const Change& change : changes) {
        for (const char* name : {"a.fit", "b.fit", "c.fit"})
            put(name, plainRide(400));
        std::filesystem::remove(manifest);
        Call first = batch({"--force", "ride"});
        ASSERT_EQ(first.code, 0) << first.err;
        EXPECT_EQ(count(textOf(manifest), "\"outcome\": \"done\", \"output\": "), 3u);
        change.make();
        std::vector<std::string> options = {"--resume", "ride"};
        options.insert(options.end(), change.options.begin(), change.options.end());
        Call again = batch(options);
        EXPECT_EQ(again.code, 0) << change.name << again.err;
        EXPECT_EQ(count(again.out, "done before"), 3 - change.again) << change.name;
        EXPECT_EQ(count(again.out, "\"outputs\": [\"" + out), 3u) << change.name;
        EXPECT_EQ(count(batch(options).out, "done before"), 3u) << change.name << ", the third time";
        EXPECT_LT(again.out.find("/a.fit"), again.out.find("/b.fit")) << change.name;
    }
}

TEST_F(BatchTest, oneFolderIsOfOneBatch)
{
    {
        HeldFile other;
        ASSERT_EQ(other.open(manifest), HeldFile::State::open);
        Call refused = batch({"convert", "fitFormat=legacy"});
        EXPECT_EQ(refused.code, 2);
        EXPECT_TRUE(contains(refused.err, "another batch is writing into " + out));
    }
    put("out/torvane-batch.ndjson", {'m', 'y', ' ', 'n', 'o', 't', 'e', 's', '\n'});
    EXPECT_TRUE(contains(batch({"convert", "fitFormat=legacy"}).err, "is no list of rides"));
    EXPECT_EQ(textOf(manifest), "my notes\n");
    EXPECT_FALSE(std::filesystem::exists(out + "/a.fit"));
}

TEST_F(BatchTest, takesFoldersAndLists)
{
    std::filesystem::create_directories(in + "rides/2026/out");
    std::filesystem::create_directories(in + "rides/2025");
    for (const char* name :
         {"rides/z.fit", "rides/2026/a.fit", "rides/2025/a.FIT", "rides/2026/out/old.fit", "rides/x.txt"})
        put(name, plainRide());
    std::filesystem::create_directory_symlink(in + "rides", in + "rides/2025/circle");
    ASSERT_EQ(::mkfifo((in + "rides/pipe.fit").c_str(), 0600), 0);
    out = in + "rides/2026/out";
    EXPECT_TRUE(contains(batch({"convert", "fitFormat=legacy", in + "rides"}, {}).err, "--recursive takes the rides"));
    Call found = batch({"--recursive", "prepare", in + "rides"}, {});
    EXPECT_EQ(found.code, 0) << found.err;
    EXPECT_EQ(count(found.out, "\n"), 3u) << found.out;
    for (const char* told :
         {"circle is a link to a folder", "is the folder of --into", "pipe.fit is no file, and is left out"})
        EXPECT_TRUE(contains(found.err, told));
    for (const char* name : {"/z.fit", "/2026/a.fit", "/2025/a.FIT"})
        EXPECT_TRUE(std::filesystem::exists(out + name)) << name;

    EXPECT_TRUE(contains(batch({"--resume", "divide"}, {"a"}).err, "--resume does not know what"));
    for (const std::string& end : {std::string("\n"), std::string("\r\n"), std::string(1, '\0')}) {
        std::string names = in + "c.fit" + end + in + "a.fit" + end;
        put("list", {names.begin(), names.end()});
        Call listed = batch({"--force", "--files-from", in + "list", "convert", "fitFormat=legacy"}, {"b"});
        EXPECT_EQ(count(listed.out, "\"outputs\""), 3u) << listed.err;
        EXPECT_LT(listed.out.find("/c.fit"), listed.out.find("/a.fit")) << listed.out;
    }
    Call same = batch({"convert", "fitFormat=legacy"}, {"a", "rides/2026/a"});
    EXPECT_EQ(same.code, 2);
    EXPECT_TRUE(contains(same.err, "/a.fit: of " + in + "a.fit and of " + in + "rides/2026/a.fit"));
}

// A pipe that nobody writes into takes for ever.
TEST_F(BatchTest, aRideThatTakesTooLongIsNamed)
{
    std::filesystem::remove(in + "b.fit");
    ASSERT_EQ(::mkfifo((in + "b.fit").c_str(), 0600), 0);
    Call late = batch({"--timeout", "1", "convert", "fitFormat=legacy"});
    EXPECT_EQ(late.code, 1);
    EXPECT_TRUE(contains(late.out, "{\"kind\": \"stopped\", \"text\": \"stopped: it took more than the 1 s"));
    EXPECT_TRUE(contains(late.err, "failed: " + in + "b.fit"));
    EXPECT_TRUE(std::filesystem::exists(out + "/c.fit"));
    EXPECT_EQ(count(textOf(manifest), "\"outcome\": \"stopped\"}"), 1u);
}

TEST_F(BatchTest, aManifestThatCannotGrowIsTold)
{
    int code = inChild([&] {
        catchEndingSignals();
        rlimit limit = {600, 600}; // the manifest of three rides is longer, and no ride
        ::setrlimit(RLIMIT_FSIZE, &limit);
        for (const char* name : {"a.fit", "b.fit", "c.fit"})
            put(name, plainRide(1));
        Call full = batch({"prepare"});
        return full.code * 10 + (contains(full.err, manifest + " cannot be written") ? 1 : 0);
    });
    EXPECT_EQ(code, 11);
}

// Neither can be written: a folder has its name.
TEST_F(BatchTest, reportsBeginOnLinesOfTheirOwn)
{
    for (const char* name : {"a.fit", "b.fit"})
        std::filesystem::create_directory(out + "/" + name);
    EXPECT_EQ(call({"--into", out, "convert", "fitFormat=legacy", in + "a.fit", in + "b.fit"}).out,
              "\n\tfailed to convert a fit file 'a.fit'\n\n\tfailed to convert a fit file 'b.fit'\n");
}

// What has to wait for a slow piece is bounded.
TEST(InOrder, aSlowPieceLetsFewWait)
{
    std::atomic<int> held = 0, most = 0;
    std::vector<size_t> taken;
    runInOrder(100, 4,
               {.run =
                    [&](size_t piece) {
                        if (piece == 0)
                            ::usleep(50'000);
                        most = std::max(most.load(), ++held);
                    },
                .take = [&](size_t piece) { taken.push_back(piece), --held; },
                .ended = [](size_t) {},
                .isGivenUp = [] { return false; },
                .isFull = [&] { return held > 10; }});
    EXPECT_LE(most, 10 + 4);
    EXPECT_EQ(taken.size(), 100u);
    EXPECT_TRUE(std::ranges::is_sorted(taken));
}

TEST_F(BatchTest, ridesFromStandardInputAreAnsweredByLines)
{
    Bytes ride = plainRide(400);
    constexpr const char* alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string coded, longName(300, 'b'); // longer than a file's name may be
    uint32_t bits = 0;
    int waiting = 0;
    for (uint8_t byte : ride)
        for (bits = bits << 8 | byte, waiting += 8; waiting >= 6; waiting -= 6)
            coded += alphabet[bits >> (waiting - 6) & 63];
    if (waiting != 0)
        coded += alphabet[bits << (6 - waiting) & 63];
    std::string lines = "{\"name\": \"x/\\u00e4.fit\", \"bytes\": \"" + coded + "\"}\nno object\n\n" + "{\"bytes\":\"" +
                        coded + "==\", \"more\": [{}], \"name\":\"" + longName + "\"}\n{\"name\": \"c\"}";
    writeBytes(in + "lines", Bytes(lines.begin(), lines.end()));
    int kept = ::dup(STDIN_FILENO);
    ASSERT_NE(std::freopen((in + "lines").c_str(), "r", stdin), nullptr);
    ::setenv("TMPDIR", out.c_str(), 1);
    Call answers = call({"--stdin", "--json", "ride"});
    ::unsetenv("TMPDIR");
    EXPECT_TRUE(std::filesystem::is_empty(out));
    ::dup2(kept, STDIN_FILENO);
    ::close(kept);
    std::clearerr(stdin);
    EXPECT_EQ(answers.code, 1);
    EXPECT_EQ(count(answers.out, "\n"), 4u);
    EXPECT_EQ(count(answers.out, "\"recordsUsed\": 400"), 2u) << answers.out;
    for (const std::string& told : {std::string("\"source\": \"x/\u00e4.fit\""), "\"source\": \"" + longName,
                                    std::string("this line is no JSON object"), std::string("no bytes in base64")})
        EXPECT_TRUE(contains(answers.out, told));
}

TEST(JsonReader, readsWholeObjectsAlone)
{
    for (const char* text : {"{}", " {\"a\": 1 , \"b\":[{\"c\":\"}\\\"\"}]}\r"})
        EXPECT_TRUE(readJsonObject(text)) << text;
    for (const char* text :
         {"", "{", "{\"a\"}", "{\"a\":}", "{\"a\":1", "{\"a\":1}}", "{\"a\":\"b}", "{a:1}", "[1]", "{\"a\":[}"})
        EXPECT_FALSE(readJsonObject(text)) << text;
    EXPECT_EQ(jsonText("\"a\\n\\\\\\ud83d\\udeb4\\u00fc\""), "a\n\\\U0001F6B4\u00fc");
    for (const char* text : {"\"\\ud83d\"", "\"\\x\"", "\"a", "1", "\"\\\""})
        EXPECT_FALSE(jsonText(text)) << text;
}

} // namespace
} // namespace torvane
