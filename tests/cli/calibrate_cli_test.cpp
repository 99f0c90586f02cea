// Calibration from the files of a device to the profile that keeps it.
#include "console_fixture.h"

#include "rides/made_ride.h"
#include "rides/made_ride_file.h"

#include <gtest/gtest.h>

namespace torvane {
namespace {

class CalibrateConsole : public ConsoleTest {
protected:
    std::string made(const std::string& name, const MadeRider& rider, const MeteredRide& ride)
    {
        ParameterBlock block = defaultBlock();
        return put(name, fileOf(makeMeteredRide(modelOf(block), rider, ride)));
    }
    // Of the power that ride predicts to the measured one.
    static double ratioOfRide(std::vector<std::string> front, const std::string& ride)
    {
        std::string told = call(front, {"ride", ride}).out;
        size_t at = told.find(" W is ");
        return at == told.npos ? 0 : std::stod(told.substr(at + 6));
    }
    std::string profile = in + "taught.pro";
};

TEST_F(CalibrateConsole, TeachesAProfileThatRideThenTakes)
{
    std::string ride = made("a.fit", {.factor = 0.8}, {.windSpeed = 3}), table = in + "t.csv", graph = in + "g.svg";
    Call told = call({"--rows", table, "--graph", graph, "calibrate", ride, "--save-profile", profile});
    ASSERT_EQ(told.code, 0) << told.err;
    EXPECT_TRUE(contains(told.out, "\teffective wind  : 3."));
    EXPECT_TRUE(contains(told.err, "success to save current profile to 'taught.pro'"));
    EXPECT_GT(bytesOf(table).size(), 1000u);
    EXPECT_GT(bytesOf(graph).size(), 1000u);
    Call page = call({"--profile", profile, "501"});
    EXPECT_TRUE(contains(page.out, "learned on 2021-09-08 at "));
    std::string calm = made("b.fit", {.factor = 0.8}, {.terrain = Terrain::flat, .seed = 9, .altitudeNoise = 0});
    double after = ratioOfRide({"--profile", profile}, calm); // a noisy speed asks for some power of its own
    EXPECT_NEAR(after, 1, 0.07);
    EXPECT_GT(ratioOfRide({}, calm), after + 0.1) << "before";
}

TEST_F(CalibrateConsole, SavesAnAngleWhereAFactorIsNotWanted)
{
    std::string ride = made("a.fit", {.factor = 1.2}, {});
    EXPECT_TRUE(contains(call({"calibrate", "--as-angle", ride}).err, "asAngle has no effect"));
    EXPECT_EQ(call({"calibrate", "--as-angle", ride, "--save-profile", profile}).code, 0);
    Call page = call({"--profile", profile, "501"});
    EXPECT_TRUE(contains(page.out, "torso angle\t\t\t:   3") || contains(page.out, "torso angle\t\t\t:   4"))
        << page.out;
    EXPECT_FALSE(contains(page.out, "factor"));
    Call again = call({"--profile", profile, "calibrate", ride});
    EXPECT_TRUE(contains(again.out, "\tfactor          : 1.0") || contains(again.out, "\tfactor          : 0.99"))
        << again.out;
}

TEST_F(CalibrateConsole, SavesNothingOfWhatTellsNothing)
{
    std::string good = made("good.fit", {}, {.seconds = 1500});
    std::string still = made("still.fit", {}, {.power = 0, .seconds = 600});
    Call none = call({"calibrate", still, "--save-profile", profile});
    EXPECT_EQ(none.code, 1);
    EXPECT_TRUE(contains(none.err, "'still.fit' tells nothing of air drag: all its powers are 0"));
    EXPECT_TRUE(bytesOf(profile).empty());
    Call both = call({"calibrate", still, good});
    EXPECT_EQ(both.code, 0) << both.err;
    EXPECT_TRUE(contains(both.err, "'still.fit' tells nothing")) << "a ride that is left out is told";
    std::string oneWay = made("oneway.fit", {}, {.terrain = Terrain::flat, .way = Way::oneWay, .power = 120});
    Call vague = call({"calibrate", oneWay, "--save-profile", profile});
    EXPECT_EQ(vague.code, 1) << vague.out;
    EXPECT_TRUE(contains(vague.err, "is too uncertain and was not saved"));
    EXPECT_TRUE(bytesOf(profile).empty());
    EXPECT_EQ(call({"ride", good, "--save-profile", profile}).code, 2);
    std::string taken = put("taken.pro", bytesOf(still));
    EXPECT_EQ(call({"calibrate", good, "--save-profile", taken}).code, 2) << "a ride is no profile";
}

} // namespace
} // namespace torvane
