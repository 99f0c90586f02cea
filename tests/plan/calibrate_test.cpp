// Calibration against rides whose rider is known. TORVANE_MADE_RIDES is how many of the series there shall be.
#include "fit/fit_builder.h"
#include "plan/calibrate.h"
#include "plan/plan_course.h"
#include "rides/made_ride.h"
#include "rides/made_ride_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

namespace torvane {
namespace {

Model defaultModel()
{
    ParameterBlock block = defaultBlock();
    return modelOf(block);
}

const Model model = defaultModel();

CalibrationAnswer calibrate(const std::vector<MeasuredRide>& rides)
{
    return calibrateRides(model, rides, {});
}

bool holds(const CalibrationAnswer& answer, double truth)
{
    return truth >= answer.lowest && truth <= answer.highest;
}

double middle(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

TEST(MadeRides, AreCalibratedWithinTheirIntervals)
{
    const char* wanted = std::getenv("TORVANE_MADE_RIDES");
    int count = wanted ? std::atoi(wanted) : 12;
    for (auto [wind, mostRms] : {std::pair{3.0, 0.07}, {0.0, 0.05}}) {
        int held = 0;
        double squares = 0;
        std::vector<double> errors, before, after;
        for (int i = 0; i < count; ++i) {
            MadeCase made = madeCase(static_cast<unsigned>(i), wind);
            CalibrationAnswer answer = calibrate({makeMeteredRide(model, made.rider, made.ride)});
            squares += std::pow(answer.factor / made.rider.factor - 1, 2);
            held += holds(answer, made.rider.factor);
            errors.push_back(answer.error / answer.factor);
            before.push_back(answer.heldOut.before.blockError);
            after.push_back(answer.heldOut.after.blockError);
        }
        double rms = std::sqrt(squares / count);
        printf(
            "wind %.0f m/s: %d of %d hold the truth, rms %.1f %%, standard error %.1f %%, held out %.1f to %.1f %%\n",
            wind, held, count, 100 * rms, 100 * middle(errors), 100 * middle(before), 100 * middle(after));
        EXPECT_GE(held, count * 9 / 10);
        EXPECT_LE(held, count >= 100 ? count * 99 / 100 : count);
        EXPECT_LE(rms, mostRms);
        EXPECT_LE(middle(errors), 0.07);
        EXPECT_GE(middle(before), 0.08);
        EXPECT_LE(middle(after), count >= 100 ? 0.04 : 0.05);
    }
}

TEST(Calibrate, FindsNoWindOneWayAndSaysHowLittleItKnows)
{
    for (double direction : {70.0, 250.0, 160.0}) { // ahead, behind, from the side
        SCOPED_TRACE(direction);
        MeteredRide made = {.way = Way::oneWay, .windSpeed = 3, .windDirection = direction};
        CalibrationAnswer answer = calibrate({makeMeteredRide(model, {.factor = 0.9}, made)});
        EXPECT_FALSE(answer.rides[0].foundWind);
        EXPECT_EQ(std::hypot(answer.rides[0].wind.east, answer.rides[0].wind.north), 0);
        EXPECT_TRUE(answer.doubts & doubtOneWay);
        EXPECT_GT(answer.highest - answer.lowest, 0.4);
        bool narrow = isNarrow(answer.factor, std::max(answer.highest - answer.factor, answer.factor - answer.lowest));
        EXPECT_EQ(calibrationOf(answer).dragFactor > 0, narrow) << answer.lowest << " to " << answer.highest;
        EXPECT_TRUE(holds(answer, 0.9)) << answer.factor;
    }
}

double movingTime(const Model& rider, const std::string& path)
{
    PlanOptions options;
    options.effort = effortAsRidden;
    options.asRidden = path;
    Course course;
    PlannedCourse planned;
    EXPECT_EQ(loadCourse(path, options, course), fitOk);
    EXPECT_TRUE(course.findings.hasTimes);
    EXPECT_EQ(planCourse(rider, defaultBlock(), course, options, planned), fitOk);
    return planned.ride.movingSeconds;
}

// What one half of a ride teaches, tells the time of the other by its power.
TEST(Calibrate, MakesPlansTrue)
{
    TestFolder folder;
    for (double factor : {0.8, 1.3}) {
        MeasuredRide first = makeMeteredRide(model, {.factor = factor}, {}), second = first;
        second.seconds.erase(second.seconds.begin(), second.seconds.begin() + 1800);
        first.seconds.resize(1800);
        std::string path = folder.path + "half.fit";
        writeBytes(path, fileOf(second));
        Model taught = model;
        taught.calibration = calibrationOf(calibrate({first}));
        rebuildModel(taught);
        EXPECT_NEAR(movingTime(taught, path) / 1800, 1, 0.03) << factor;
        EXPECT_GT(std::fabs(movingTime(model, path) / 1800 - 1), 0.03) << factor << ", without";
    }
}

void everySecond(MeasuredRide& ride, const std::function<void(MeasuredSecond&, size_t)>& change)
{
    for (size_t i = 0; i < ride.seconds.size(); ++i)
        change(ride.seconds[i], i);
}

struct Spoilt {
    CalibrationFault fault;
    std::function<void(MeasuredSecond&, size_t)> change;
};

TEST(Calibrate, RefusesWhatTellsNothing)
{
    using enum CalibrationFault;
    const Spoilt table[] = {
        {withoutPower, [](MeasuredSecond& s, size_t) { s.power = NAN; }},
        {stillMeter, [](MeasuredSecond& s, size_t) { s.power = 0; }},
        {withoutAltitude, [](MeasuredSecond& s, size_t) { s.altitude = NAN; }},
        {withoutSpeed, [](MeasuredSecond& s, size_t) { s.speed = 0; }},
        {constantSpeed, [](MeasuredSecond& s, size_t) { s.speed = 8; }},
        {tooFewWindows, [](MeasuredSecond& s, size_t i) { s.power = i % 25 == 0 ? 21733 : s.power; }},
        {tooFewWindows, [](MeasuredSecond& s, size_t i) { s.speed = i > 500 ? 2 : s.speed; }},
    };
    MeasuredRide good = makeMeteredRide(model, {}, {.seconds = 1800});
    EXPECT_EQ(calibrate({good}).ridesUsed, 1U);
    std::vector<MeasuredRide> rides;
    for (const Spoilt& spoilt : table)
        everySecond(rides.emplace_back(good), spoilt.change);
    rides.emplace_back(good).seconds.resize(1);
    rides.push_back(makeMeteredRide(model, {}, {.terrain = Terrain::flat, .way = Way::thereAndBack, .legLength = 700}));
    everySecond(rides.back(), [](MeasuredSecond& s, size_t) { s.longitude = -s.longitude; }); // westward
    CalibrationAnswer answer = calibrate(rides);
    EXPECT_EQ(answer.ridesUsed, 0U);
    EXPECT_EQ(calibrationOf(answer).dragFactor, 0);
    for (size_t i = 0; i < std::size(table); ++i)
        EXPECT_EQ(answer.rides[i].fault, table[i].fault) << i;
    EXPECT_EQ(answer.rides[rides.size() - 2].fault, tooFewWindows);
    EXPECT_EQ(answer.rides.back().fault, shortShuttle);
}

TEST(Calibrate, TakesSeveralRidesTogetherAndTellsWhenTheyDiffer)
{
    std::vector<MeasuredRide> rides;
    for (unsigned seed : {1U, 2U, 3U})
        rides.push_back(
            makeMeteredRide(model, {.factor = 0.85}, {.windSpeed = 3, .windDirection = 90.0 * seed, .seed = seed}));
    CalibrationAnswer same = calibrate(rides);
    EXPECT_EQ(same.ridesUsed, 3U);
    EXPECT_TRUE(holds(same, 0.85)) << same.factor;
    EXPECT_LT(same.error, calibrate({rides[0]}).error);
    for (int half : {0, 1})
        EXPECT_NEAR(same.heldOut.factor[half], 0.85, 0.15) << half;
    EXPECT_NEAR(same.rides[0].wind.east, 3, 0.7);
    EXPECT_NEAR(same.rides[1].wind.north, -3, 0.7);
    EXPECT_FALSE(same.doubts & doubtRidesDiffer);
    rides.push_back(rides[0]);
    CalibrationAnswer twice = calibrate(rides);
    EXPECT_EQ(twice.rides[3].fault, CalibrationFault::givenTwice);
    EXPECT_EQ(twice.factor, same.factor);
    rides.push_back(makeMeteredRide(model, {.factor = 1.3}, {.seed = 4}));
    EXPECT_TRUE(calibrate(rides).doubts & doubtRidesDiffer);
    CalibrationAnswer apart = calibrate({rides[0], rides.back()});
    EXPECT_TRUE(holds(apart, 0.85) && holds(apart, 1.3)) << apart.lowest << " to " << apart.highest;
    EXPECT_EQ(calibrationOf(apart).dragFactor, 0) << "too uncertain";
    MeasuredRide right = makeMeteredRide(model, {}, {.seed = 5}),
                 other = makeMeteredRide(model, {.factor = 1.4}, {.seconds = 2400});
    EXPECT_TRUE(calibrate({right, other}).doubts & doubtHeldOut) << "the profile was right for most blocks";
    EXPECT_FALSE(same.doubts & doubtHeldOut);
}

TEST(Calibrate, IsAbsoluteAndKnowsWhereTheMeterSits)
{
    MeasuredRide ride = makeMeteredRide(model, {.factor = 1.2}, {});
    CalibrationAnswer answer = calibrate({ride});
    double factor = answer.factor;
    // Both by the air at 20 Cel and sea level, 1.2041 kg/m3: that of the ride is thinner by half a percent.
    double airPower = thrustOf(model, ride, stagePedaling).seconds[0].airPower;
    EXPECT_NEAR(answer.dragArea / (factor * 2 * airPower / 1.2041), 1, 0.02);
    EXPECT_NEAR(calibrationOf(answer).temperature, ride.temperature, 1e-4);
    Model learned = model;
    learned.calibration.dragFactor = 0.7F;
    rebuildModel(learned);
    CalibrationAnswer again = calibrateRides(learned, std::span(&ride, 1), {});
    EXPECT_EQ(again.factor, factor);
    EXPECT_NEAR(again.factorBefore, 0.7, 1e-6);
    EXPECT_GT(calibrateRides(model, std::span(&ride, 1), {stageHub}).factor, factor)
        << "the same watts behind the losses move more air";
}

TEST(Calibrate, DoubtsAWeightThatTheHillsContradict)
{
    for (double load : {0.0, 40.0}) {
        CalibrationAnswer answer = calibrate({makeMeteredRide(model, {.load = load}, {.terrain = Terrain::hilly})});
        EXPECT_EQ((answer.doubts & doubtWeight) != 0, load > 0) << answer.heightShare;
    }
}

TEST(Calibrate, TurnsAFactorIntoAnAngle)
{
    EXPECT_NEAR(*angleOfFactor(model, 1), model.state.torsoAngle, 0.01);
    for (double factor : {0.7, 1.3, 1.6}) { // a rider who sits so has that factor of the profile
        Model bent = model;
        bent.state.torsoAngle = *angleOfFactor(model, factor);
        rebuildModel(bent);
        CalibratedRide ride = calibrate({makeMeteredRide(bent, {}, {})}).rides[0];
        EXPECT_NEAR(ride.factor, factor, 0.05 * factor);
        EXPECT_GE(ride.error, 0.03 * ride.factor) << factor << ": scales, meters and gusts";
    }
    AngleReach reach = angleReach(model);
    EXPECT_NEAR(angleOfFactor(model, reach.least).value_or(-1), 0, 0.01);
    EXPECT_NEAR(angleOfFactor(model, reach.most).value_or(-1), 90, 0.01);
    EXPECT_FALSE(angleOfFactor(model, 0.5));
    EXPECT_FALSE(angleOfFactor(model, 1.8));
}

} // namespace
} // namespace torvane
