// Small rides whose figures are worked out by hand.
#include "plan/between_rides.h"
#include "plan/course_answer.h"
#include "plan/made_course.h"
#include "plan/ride_sums.h"
#include "plan/stretches.h"

#include "figures.h"

namespace torvane {

namespace {

struct Leg {
    double seconds, watts; // 0 W: coasting
};

// A step each second at 10 m/s, that ends in the middle of the 10 m that it is of.
CourseRide legsOf(const std::vector<Leg>& legs)
{
    CourseRide ride;
    ride.steps.emplace_back();
    for (const Leg& leg : legs)
        for (int second = 0; second < leg.seconds; ++second) {
            CourseStep step = ride.steps.back();
            step.time += 1;
            step.distance = 10 * step.time - 5;
            step.speed = 10;
            step.power = leg.watts;
            step.going = leg.watts > 0 ? Going::pedalling : Going::coasting;
            ride.steps.push_back(step);
        }
    return ride;
}

} // namespace

TEST(Stretches, AreCutWherePowerChangesMost)
{
    struct Case {
        const char* what;
        std::vector<Leg> legs;
        size_t most;
        double leastPower;
        std::vector<Stretch> wanted;
    };
    const std::vector<Leg> legs = {{200, 300}, {300, 100}, {100, 220}}, alike = {{200, 300}, {200, 294}, {200, 100}};
    const Case cases[] = {
        {"three", legs, 3, 0, {{0, 2000, 200, 300}, {2000, 5000, 300, 100}, {5000, 6000, 100, 220}}},
        {"two: (300 * 100 + 100 * 220) / 400", legs, 2, 0, {{0, 2000, 200, 300}, {2000, 6000, 400, 130}}},
        {"at least 120 W", legs, 3, 120, {{0, 2000, 200, 300}, {2000, 5000, 300, 120}, {5000, 6000, 100, 220}}},
        {"less than half of 210 W", legs, 3, 210, {{0, 2000, 200, 300}, {2000, 5000, 300, 0}, {5000, 6000, 100, 220}}},
        {"2 percent", alike, 3, 0, {{0, 4000, 400, 297}, {4000, 6000, 200, 100}}},
        {"coasting in between", {{200, 300}, {200, 0}, {200, 300}}, 3, 0, {{0, 6000, 400, 300}}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        std::vector<Stretch> found = stretchesOf(legsOf(test.legs), 6000, test.most, test.leastPower);
        ASSERT_EQ(found.size(), test.wanted.size());
        for (size_t i = 0; i < found.size(); ++i) {
            const Stretch &a = found[i], &b = test.wanted[i];
            expectFigures({a.from, a.to, a.seconds, a.power}, {b.from, b.to, b.seconds, b.power}, 1e-9);
        }
    }
    const std::vector<Leg> hardly = {{290, 0}, {10, 300}, {300, 0}};
    EXPECT_GE(stretchesOf(legsOf(hardly), 6000, 3, 0)[0].to, 300) << "nobody looks at a power for less";
}

TEST(RideSums, AddUp)
{
    CourseRide ride;
    RideSums sums(ride, 1);
    for (auto [cadence, steady] : {std::pair{40.0, false}, {90.0, true}, {80.0, true}, {85.0, true}}) // 40: setting off
        sums.add({.power = 200, .cadence = cadence}, 10, 50, steady);
    sums.add({.speed = 12, .going = Going::braking}, 20, 60, true);
    sums.add({.going = Going::walking}, 30, 33, true);
    sums.finish();
    expectFigures({ride.movingSeconds, ride.pedalSeconds, ride.brakeSeconds, ride.coastSeconds, ride.walkSeconds,
                   ride.walkMetres, ride.kiloJoule, ride.meanPower, ride.lowestCadence, ride.topSpeed},
                  {90, 40, 20, 0, 30, 33, 8, 400 / 3.0, 80, 12}, 1e-9);

    // Seconds at 100 W, then at 300 W: their mean while half a minute is not full, then the means over 30 s of 100, and
    // of 100 + 20 / 3 more each second up to 300, each in its fourth power.
    struct Case {
        int first, then;
        double wanted;
    };
    for (auto [first, then, wanted] : {Case{10, 10, 200}, {10, 0, 100}, {30, 30, 223.0694887793096}}) {
        NormalisedSum normalised(1);
        for (int i = 0; i < first + then; ++i)
            normalised.add(i < first ? 100 : 300, 1);
        EXPECT_NEAR(normalised.value(), wanted, 1e-9) << first << " s and " << then;
    }
}

// By the method of moments: of two rides of equal errors 0.05 the variance is ((0.4 / 0.05)2 / 2 - 1) / 400.
TEST(BetweenRides, HaveTheVarianceOfTheMethodOfMoments)
{
    auto ride = [](double factor, double error, bool foundWind = true) {
        CalibratedRide one;
        one.factor = factor;
        one.error = error;
        one.foundWind = foundWind;
        return one;
    };
    std::vector<CalibratedRide> rides = {ride(0.8, 0.05), ride(1.2, 0.05), ride(3, 0.05, false)};
    EXPECT_NEAR(betweenRidesError(rides), std::sqrt(31.0 / 400 * 1.5), 1e-12);
    rides.push_back(ride(1, 0.1));
    EXPECT_NEAR(betweenRidesError(rides), 0.273861278752583, 1e-12);
    EXPECT_EQ(betweenRidesError({rides.data() + 2, 2}), 0) << "one that found its wind";
    rides[1].factor = 0.93; // within 1.96 errors of 0.0707
    EXPECT_EQ(betweenRidesError({rides.data(), 2}), 0);
}

// Steps that end between the seconds, on a slope of 10 percent to the north.
TEST_F(PlanTest, TellsSecondsOfStepsThatEndBetweenThem)
{
    options.courseStep = 15.5;
    Course course = madeCourse(31, slopeOf(10), northward, options, 1);
    CourseRide ridden;
    for (auto [time, watts, cadence] :
         {std::tuple{0.0, 0.0, 0.0}, {0.8, 100.0, 60.0}, {2.4, 200.0, 70.0}, {3.1, 300.0, 0.0}})
        ridden.steps.push_back({.time = time, .distance = 10 * time, .speed = 10, .power = watts, .cadence = cadence});
    std::vector<PlannedSecond> seconds = secondsOf(course, ridden);
    const double wanted[][5] = {{0, 0, 0, 0, 0},
                                {1, 10, 0.8 * 100 + 0.2 * 200, 70, 1},
                                {2, 20, 200, 70, 1},
                                {3, 30, 0.4 * 200 + 0.6 * 300, 0, 1},
                                {4, 31, 300, 0, 0.1}};
    ASSERT_EQ(seconds.size(), std::size(wanted));
    for (size_t i = 0; i < seconds.size(); ++i) {
        const PlannedSecond& s = seconds[i];
        auto [time, distance, power, cadence, lasted] = wanted[i];
        expectFigures(
            {s.time, s.distance, s.power, s.cadence, s.ridden, s.altitude, (s.latitude - 47) * metresPerDegree},
            {time, distance, power, cadence, lasted, distance / 10, distance}, 1e-6);
    }
}

// Round a bend of 6 degrees each second: the way back has the headings of the way there, turned about.
TEST_F(PlanTest, HeadsBackAsItCame)
{
    MeasuredRide there;
    for (uint32_t i = 0; i < 60; ++i)
        there.seconds.push_back({i, 47 + 95 / metresPerDegree * std::sin(i * pi / 30),
                                 8 + 140 / metresPerDegree * std::cos(i * pi / 30), 400, 10, 200, 90});
    MeasuredRide back = there;
    std::ranges::reverse(back.seconds);
    for (uint32_t i = 0; i < 60; ++i)
        back.seconds[i].timestamp = i;
    ThrustRide one = thrustOf(model, there, stagePedaling), other = thrustOf(model, back, stagePedaling);
    for (size_t i = 0; i < 60; ++i)
        expectFigures({one.seconds[i].east, one.seconds[i].north},
                      {-other.seconds[59 - i].east, -other.seconds[59 - i].north}, 1e-4);
}

// Down by 0.5 m each second, 800 N heavy, against 100 W of air: 300 W too much, unless there is pedalling. The mean
// over five seconds of 101 W in the seconds 20 to 39 is more than 20 W from 18 to 41; 5 s around the others are left
// out.
TEST(EnergyWindows, LeaveOutBrakingAndWhatIsAroundIt)
{
    ThrustRide ride = {std::vector<ThrustSecond>(60), {{0, 60}}, {0, 80, 800}, false};
    for (size_t i = 0; i < 60; ++i) {
        ThrustSecond& second = ride.seconds[i];
        second.altitude = -0.5 * static_cast<double>(i);
        second.speed = 10;
        second.airPower = 0.1;
        second.measured = i >= 20 && i < 40 ? 101 : 0;
    }
    ride.seconds[30].measured = 1501; // no rider
    SecondUse use = markSeconds(ride, 1, {});
    for (size_t i = 0; i < 60; ++i)
        EXPECT_EQ(use[i], i == 30 ? leftStrong : i >= 23 && i <= 36 ? used : leftBraking) << i;
}

} // namespace torvane
