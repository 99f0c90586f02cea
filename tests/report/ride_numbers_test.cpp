// Whole reports of rides in which every field holds a number of its own, and the figures under their names.
#include "captured_screens.h"
#include "report/listed_figures.h"
#include "report/ride_figures.h"
#include "report/ride_report.h"
#include "told.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

namespace torvane {

namespace {

// Stage n, the motor as the fifth: n01 W, n02 Nm and n03 kgf at once; of a run n11 W as mean and n12 W as peak, n13 Nm
// and n14 kgf.
struct RideNumbers : testing::Test {
    RideNumbers()
    {
        model.state.motorLocation = 1;
        std::tie(model.state.cadencePoweredMax, model.state.temperature, model.state.ftp) = std::tuple(120, 19, 270);
        std::tie(now.pedalingPower, now.pedalingTorque, now.pedalingForce) = std::tuple(101, 102, 103);
        std::tie(now.crankPower, now.crankTorque, now.crankForce) = std::tuple(201, 202, 203);
        std::tie(now.hubPower, now.hubTorque, now.hubForce) = std::tuple(301, 302, 303);
        std::tie(now.thrustPower, now.thrustTorque, now.thrustForce) = std::tuple(401, 402, 403);
        std::tie(now.assistPower, now.assistTorque, now.assistForce) = std::tuple(501, 502, 503);
        std::tie(now.shellDrag, now.humanDrag, now.wheelDrag, now.airDrag) = std::tuple(1.1, 1.2, 1.3, 3.6);
        std::tie(now.shellDragPower, now.humanDragPower, now.wheelDragPower) = std::tuple(11, 12, 13);
        std::tie(now.airDragPower, now.rollingLoad, now.rollingPower) = std::tuple(36, 1.4, 14);
        std::tie(now.slopeLoad, now.slopePower, now.inclination) = std::tuple(-1.5, -15, -2.5);
        std::tie(now.cadence, now.currentFrontTooth, now.currentRearTooth) = std::tuple(90.5, 34, 21);
        for (int stage = 0; stage < stageCount; ++stage) {
            double first = 100 * (stage + 1);
            std::tie(found.meanStagePower[stage], found.peakPower[stage]) = std::tuple(first + 11, first + 12);
            std::tie(found.meanStageTorque[stage], found.meanStageForce[stage]) = std::tuple(first + 13, first + 14);
        }
        std::tie(found.assistMeanPower, found.assistPeakPower) = std::tuple(511, 512);
        std::tie(found.assistMeanTorque, found.assistMeanForce) = std::tuple(513, 514);
        std::tie(found.power, found.meanPower, found.requiredPower, found.force) = std::tuple(820, 810, 830, -30);
        std::tie(found.velocity, in.startVelocity, in.endVelocity) = std::tuple(10, 5, 10); // m/s
        std::tie(found.sectorTime, found.accele, found.maxAccele, found.distance) = std::tuple(7.5, 0.5, 2, 77.5);
        std::tie(found.corneringRadius, found.safetyMargin) = std::tuple(15, 0.1);
        std::tie(found.airDragQuantity, found.rollingDragQuantity, found.potentialEnergy) = std::tuple(610, 620, 630);
        std::tie(found.startKineticEnergy, found.endKineticEnergy) = std::tuple(640, 650);
        std::tie(heat.brakeTemperature[0], heat.brakeHeat[0], heat.brakeRadiated[0]) = std::tuple(71, 710, -72);
        std::tie(heat.brakeTemperature[1], heat.brakeHeat[1], heat.brakeRadiated[1]) = std::tuple(81, 810, -82);
        in.physiology.useFtp = 1;
        std::tie(body.level, body.intensityFactor, body.trainingStressScore) = std::tuple(1, 0.75, 12);
        std::tie(body.normalizedPower, body.variabilityIndex) = std::tuple(205, 1.25);
        std::tie(body.kiloJoule, body.kiloCalorie, body.foodKiloCalorie) = std::tuple(720, 172, 688);
        body.length = {{1, 2}, {5, 345}}; // 1 min 5 s, 2 km 345 m
    }

    void report(RideMode mode, int target)
    {
        in.rideMode = mode;
        in.rideTarget = target;
        RideRun ride = {model, in, found, now, heat, body};
        reportRide(shown.screens, ride);
        figures = listed(rideFigures(ride).values);
    }

    Model model;
    RideInputs in = {};
    RideFigures found = {};
    Evaluation now = {};
    BrakeHeat heat = {};
    PhysiologyFigures body = {};
    CapturedScreens shown;
    std::string figures;
};

TEST_F(RideNumbers, steadyRide)
{
    report(ridePowerAndVelocity, 0);
    expectTold(shown.lower + figures + "\n", "tests/report/told/steady-ride.txt");
}

TEST_F(RideNumbers, acceleration)
{
    report(rideAcceleration, 0);
    expectTold(shown.lower + figures + "\n", "tests/report/told/acceleration.txt");
    found.velocity = 9.9;
    model.state.motorLocation = 0;
    report(rideAcceleration, 0);
    EXPECT_NE(figures.find("; leastAcceleration 0.00025 mpss; "), std::string::npos) << figures;
    EXPECT_EQ(figures.find("assist"), std::string::npos) << figures;
}

TEST_F(RideNumbers, rolling)
{
    constexpr std::pair<int, const char*> cases[] = {
        {limitNone, "\tinclination\t\t\t:   -2.500 per\n\tfinal poised velocity\t:   36.000 kph\n\n\tdiverse drag"},
        {limitDistance, "-- starting velocity is 18.000 kph, limitted 77.500 m\n\tinclination\t\t\t:   -2.500 per\n"
                        "\tending velocity\t\t:   36.000 kph\n\n\tsector time\t\t\t:    7.500 sec\n"
                        "\tdistance\t\t\t:   77.500 m\n\n"},
        {limitTime, "-- starting velocity is 18.000 kph, limitted  7.500 sec\n\tinclination"},
    };
    for (auto [limit, lines] : cases) {
        in.inclinationLimit = limit;
        report(rideInclinationAndVelocity, 0);
        EXPECT_EQ(shown.lower.find(lines), shown.lower.find('\n', 2) + 1) << shown.lower;
    }
}

TEST_F(RideNumbers, brakes)
{
    report(ridePatternBraking, 0);
    expectTold(figures + "\n", "tests/report/told/braking.txt");
}

// What nobody has looked for is no figure, and no 0.
TEST_F(RideNumbers, figuresThatDoNotApplyAreLeftOut)
{
    constexpr const char* all[] = {"power", "meanPower", "requiredPower", "cadencePoweredMax", "inclination"};
    struct Case {
        RideMode mode;
        int target;
        ThrustMode thrust;
        double power, peak;
        const char* there; // of these
    };
    constexpr Case cases[] = {
        {rideAcceleration, accelerationSectorTime, thrustByPedaling, 8, 8,
         "power requiredPower cadencePoweredMax inclination "},
        {rideAcceleration, accelerationEndingVelocityMean, thrustByPedaling, 8, 8,
         "power meanPower requiredPower cadencePoweredMax inclination "},
        {rideAcceleration, accelerationConstantPower, thrustByPedaling, 8, 8, "power inclination "},
        {rideDeceleration, decelerationMeanPower, thrustByPedaling, 8, 8,
         "power meanPower requiredPower cadencePoweredMax inclination "},
        {rideDeceleration, decelerationSectorTime, thrustByPedaling, 0, 0, "power inclination "},
        {rideDeceleration, decelerationAccele, thrustByBraking, 8, 0, "inclination "},
        {rideDeceleration, decelerationConstantPower, thrustByBraking, -8, 0, "power inclination "},
        {rideCriticalCornering, 0, thrustByPedaling, 8, 8, "requiredPower cadencePoweredMax "},
    };
    for (const Case& c : cases) {
        std::tie(found.drive.thrustMode, found.power, found.peakPower[stageThrust]) =
            std::tie(c.thrust, c.power, c.peak);
        report(c.mode, c.target);
        std::string there;
        for (const char* name : all)
            there +=
                ("; " + figures).find(std::string("; ") + name + " ") != figures.npos ? name + std::string(" ") : "";
        EXPECT_EQ(there, c.there) << c.mode << " " << c.target;
    }
    found.potentialEnergy = -0.0;
    report(ridePatternBraking, 0);
    EXPECT_NE(figures.find("potentialEnergy 0 J; "), figures.npos);
}

} // namespace

} // namespace torvane
