// A course ahead from the console: what its answer tells, what it writes, and what it says of tracks that are none.
#include "console_fixture.h"

#include "core/files.h"

namespace torvane {

namespace {

const std::string samples = TORVANE_CHECKOUT "/samples/rides/";
const std::string pass = samples + "pass.gpx";

Bytes gpx(const std::string& points)
{
    std::string text = "<gpx><trk><trkseg>" + points + "</trkseg></trk></gpx>";
    return {text.begin(), text.end()};
}

std::string point(double latitude, double longitude, const std::string& inside = "<ele>400</ele>")
{
    return "<trkpt lat=\"" + std::to_string(latitude) + "\" lon=\"" + std::to_string(longitude) + "\">" + inside +
           "</trkpt>";
}

std::string points(int count, double degrees, const std::string& inside = "<ele>400</ele>")
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += point(45 + i * degrees, 8, inside);
    return text;
}

} // namespace

TEST_F(ConsoleTest, PlansACourse)
{
    std::string out = in + "out.fit";
    Call told = call({"plan", "effort=normalised", "pacing=plan", "start=8:30", "stops=1x10min", pass, out});
    EXPECT_EQ(told.code, 0) << told.err;
    for (const char* line :
         {"\tmoving          : 00:", "\twith stops      : ", "01,Jan,2024,Mon,08:30:00", " stretches of the plan\n",
          " climbs\n", " descents\n", " every 1 km\n", "\t10 W more       : -", "\t1 kg less       : -"})
        EXPECT_TRUE(contains(told.out, line));
    EXPECT_TRUE(contains(told.err, "saved the planned course as 'out.fit'"));

    Bytes written = bytesOf(out);
    EXPECT_TRUE(contains(call({"plan", pass, out}).err, "out.fit exists; --force writes over it"));
    EXPECT_EQ(bytesOf(out), written);
    EXPECT_EQ(call({"plan", "--force", "fileType=activity", pass, out}).code, 0);
    EXPECT_EQ(call({"ride", out}).code, 0);
    EXPECT_EQ(call({"plan", "--force", out, out}).code, 2) << "nor over its source";
    EXPECT_EQ(call({"plan", "--force", "effort=asRidden", "asRidden=" + out, pass, out}).code, 2);
    for (const char* option : {"--page", "--graph", "--rows"}) {
        Call over = call({"--force", "--page", in + "page.html", option, out, "plan", "--against", "effort=asRidden",
                          "--against", "asRidden=" + out, pass});
        EXPECT_EQ(over.code, 2) << option;
    }
    Call again = call({"plan", "effort=asRidden", "asRidden=" + out, pass, in + "again.gpx"});
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_FALSE(contains(again.out, "another road"));
    Call other = call({"plan", "effort=asRidden", "asRidden=" + samples + "loop.fit", "stops=500:1min", pass});
    EXPECT_TRUE(contains(other.out, "another road"));
    EXPECT_TRUE(contains(other.out, "left out: 1"));
    EXPECT_EQ(call({"plan", in + "again.gpx"}).code, 0);
    EXPECT_EQ(folder.count(), 2u) << "nothing half-written";

    std::string named = put("no\xFFtext\x01.gpx", bytesOf(pass));
    EXPECT_EQ(call({"plan", "--force", named, in + "again.gpx"}).code, 0);
    EXPECT_EQ(call({"plan", in + "again.gpx"}).code, 0) << "XML all the same";
}

TEST_F(ConsoleTest, WritesNoTwoFilesToOne)
{
    std::filesystem::create_symlink("new.csv", in + "link.csv");
    put("a.csv", {});
    std::filesystem::create_hard_link(in + "a.csv", in + "b.csv");
    const std::vector<std::string> all[] = {
        {"--rows", in + "new.csv", "--graph", in + "./new.csv", "plan", pass},
        {"--rows", in + "new.csv", "--graph", in + "link.csv", "plan", pass},
        {"--rows", in + "a.csv", "--graph", in + "b.csv", "plan", pass},
        {"--rows", in + "new.fit", "plan", pass, in + "new"},
        {"--graph", in + "new.gpx", "plan", pass, in + "../" + in.substr(in.rfind('/', in.size() - 2) + 1) + "new.gpx"},
        {"--rows", in + "new.pro", "calibrate", pass, "--save-profile", in + "new.pro"},
    };
    for (const std::vector<std::string>& arguments : all) {
        Call told = call({"--force"}, arguments);
        EXPECT_EQ(told.code, 2) << arguments[1];
        EXPECT_TRUE(contains(told.err, "two files would be written to " + in));
    }
    EXPECT_EQ(folder.count(), 3u);
}

// Its file alone is lost.
TEST_F(ConsoleTest, KeepsTheAnswerWhoseFileCannotBeWritten)
{
    std::filesystem::create_directories(in + "taken.fit");
    std::filesystem::create_directories(in + "taken.gpx");
    const std::vector<std::string> all[] = {{"plan", pass, in + "taken.fit"},
                                            {"plan", pass, in + "taken.gpx"},
                                            {"ride", TORVANE_CHECKOUT "/samples/rides/loop.fit", in + "taken.fit"}};
    for (const std::vector<std::string>& arguments : all) {
        Call told = call({"--force", "--json"}, arguments);
        SCOPED_TRACE(testing::PrintToString(arguments));
        EXPECT_EQ(told.code, 1);
        for (const char* part :
             {"\"lower\": \"\\n ", "\"figures\"", "\"kind\": \"cannotWrite\", \"text\": \"failed to save the "})
            EXPECT_TRUE(contains(told.out, part));
        EXPECT_EQ(told.out.find("fit file 'taken") != told.out.npos, arguments[0] == "ride");
    }
}

TEST_F(ConsoleTest, RefusesWhatIsNoCourse)
{
    struct Bad {
        const char* what;
        Bytes file;
        const char* sentence;
    };
    const Bad all[] = {
        {"no altitude", gpx(points(50, 0.001, "")), "altitude"},
        {"two points", gpx(points(2, 0.01)), "three points"},
        {"zero length", gpx(points(50, 0)), "short"},
        {"100 km jumps", gpx(points(50, 0.9)), "apart"},
        {"10,000 km", gpx(points(60000, 0.0015)), "long"},
        {"no point", gpx(""), "no point"},
        {"cut off", {'<', 'g', 'p', 'x', '>'}, "cut off"},
        {"no track", {'?'}, ""},
    };
    for (const Bad& bad : all) {
        Call told = call({"plan", put("bad.gpx", bad.file), in + "out.fit"});
        EXPECT_EQ(told.code, 1) << bad.what;
        EXPECT_TRUE(contains(told.err, bad.sentence)) << bad.what << told.err;
        EXPECT_FALSE(fileExists(in + "out.fit")) << bad.what;
    }
    for (std::string ridden : {pass, put("rider.pro", {'p'}), in}) { // the course is none the worse
        Call told =
            call({"plan", "effort=asRidden", "asRidden=" + ridden, TORVANE_CHECKOUT "/samples/rides/hills.fit"});
        EXPECT_EQ(told.code, 1) << ridden;
        EXPECT_FALSE(contains(told.out + told.err, "hills.fit")) << ridden;
    }
    for (const char* entry : {"stops=often", "start=25:00", "asRidden=/none.fit", "power=19", "effort=hard"})
        EXPECT_EQ(call({"plan", "effort=asRidden", entry, pass}).code, 2) << entry;
}

} // namespace torvane
