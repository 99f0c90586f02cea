// Whole reports of rides in which every field holds a number of its own, and the figures under their names.
#include "captured_screens.h"
#include "report/listed_figures.h"
#include "report/ride_figures.h"
#include "report/ride_report.h"

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

constexpr const char* bodyLines = "\tnormalized power\t\t:  205.000 W\n"
                                  "\tvariability index\t\t:    1.250\n"
                                  "\ttraning stress score\t:   12.000\n"
                                  "\tenergy kilo joule\t\t:  720.000 kJ\n"
                                  "\tenergy kilo calorie\t:  172.000 kcal\n"
                                  "\trequired food calorie\t:  688.000 kcal except daily basal metabolism\n";

const std::string bodyFigures = "ftp 270 W; level 1 ; intensityFactor 0.75 ; normalizedPower 205 W; "
                                "variabilityIndex 1.25 ; trainingStressScore 12 ; kiloJoule 720 kJ; "
                                "kiloCalorie 172 kcal; foodKiloCalorie 688 kcal; ";

TEST_F(RideNumbers, steadyRide)
{
    report(ridePowerAndVelocity, 0);
    EXPECT_EQ(shown.lower, std::string("\n power and velocity which calculation target is 'power'\n"
                                       "\t\t\t\t\t     power    ,   torque    ,    force\n"
                                       "\tpower of pedaling\t\t:  101.000 W  ,  102.000 Nm ,  103.000 kgf\n"
                                       "\t-- crank\t\t\t:  201.000 W  ,  202.000 Nm ,  203.000 kgf\n"
                                       "\t-- hub\t\t\t:  301.000 W  ,  302.000 Nm ,  303.000 kgf\n"
                                       "\t-- thrust(wheel)\t\t:  401.000 W  ,  402.000 Nm ,  403.000 kgf\n"
                                       "\te-Assist\t\t\t:  501.000 W  ,  502.000 Nm ,  503.000 kgf\n"
                                       "\n\tvelocity\t\t\t:   36.000 kph\n"
                                       "\tcadence\t\t\t:   90.500 rpm geared 34/21\n"
                                       "\trequired power\t\t:  830.000 W case of 120.0 rpm cadence\n"
                                       "\n\tdiverse drag as force and power as follows:\n"
                                       "\tshell air drag\t\t:    1.100 kgf,   11.000 W\n"
                                       "\thuman air drag\t\t:    1.200 kgf,   12.000 W\n"
                                       "\twheel air drag\t\t:    1.300 kgf,   13.000 W\n"
                                       "\ttotal air drag\t\t:    3.600 kgf,   36.000 W\n"
                                       "\trolling drag\t\t:    1.400 kgf,   14.000 W\n"
                                       "\tgradient drag\t\t:   -1.500 kgf,  -15.000 W\n"
                                       "\n\tpower traning level\t:  Lv1, recovery for ftp 270.0W\n"
                                       "\tintensity factor\t\t:    0.750\n"
                                       "\n\tphysiological factors in case of 2.345km per 00:01:05h as follows:\n") +
                               bodyLines + "\n");
    EXPECT_EQ(figures,
              "velocity 36 kph; inclination -2.5 %; power 101 W; "
              "pedalingPower 101 W; pedalingTorque 102 Nm; pedalingForce 103 kgf; "
              "crankPower 201 W; crankTorque 202 Nm; crankForce 203 kgf; "
              "hubPower 301 W; hubTorque 302 Nm; hubForce 303 kgf; "
              "thrustPower 401 W; thrustTorque 402 Nm; thrustForce 403 kgf; "
              "assistPower 501 W; assistTorque 502 Nm; assistForce 503 kgf; "
              "cadence 90.5 rpm; currentFrontTooth 34 t; currentRearTooth 21 t; requiredPower 830 W; "
              "cadencePoweredMax 120 rpm; shellDrag 1.1 kgf; shellDragPower 11 W; humanDrag 1.2 kgf; "
              "humanDragPower 12 W; wheelDrag 1.3 kgf; wheelDragPower 13 W; airDrag 3.6 kgf; airDragPower 36 W; "
              "rollingLoad 1.4 kgf; rollingPower 14 W; slopeLoad -1.5 kgf; slopePower -15 W; duration 65 sec; "
              "length 2.345 km; " +
                  bodyFigures);
}

TEST_F(RideNumbers, acceleration)
{
    report(rideAcceleration, 0);
    EXPECT_EQ(shown.lower,
              std::string("\n acceleration which calculation referer is 'maxi power' 820.000 W\n"
                          " -- inclination -2.500 per, starting velocity is 18.000 kph, ending velocity is 36.000 kph\n"
                          "\t\t\t\t\t      mean    ,  maximal    ,   torque    ,    force\n"
                          "\tpower of pedaling\t\t:  111.000 W  ,  112.000 W  ,  113.000 Nm ,  114.000 kgf\n"
                          "\t-- crank\t\t\t:  211.000 W  ,  212.000 W  ,  213.000 Nm ,  214.000 kgf\n"
                          "\t-- hub\t\t\t:  311.000 W  ,  312.000 W  ,  313.000 Nm ,  314.000 kgf\n"
                          "\t-- thrust(wheel)\t\t:  411.000 W  ,  412.000 W  ,  413.000 Nm ,  414.000 kgf\n"
                          "\te-Assist\t\t\t:  511.000 W  ,  512.000 W  ,  513.000 Nm ,  514.000 kgf\n"
                          "\trequired power\t\t:  820.000 W case of 120.0 rpm cadence\n"
                          "\tsector time\t\t\t:    7.500 sec\n"
                          "\tmean accele\t\t\t:    0.500mpss,    1.800kphs,    0.051 G\n"
                          "\t-- maximal\t\t\t:    2.000mpss,    7.200kphs,    0.204 G\n"
                          "\tdistance\t\t\t:   77.500 m\n"
                          "\n\tpower traning level\t:  Lv1, recovery for ftp 270.0W\n"
                          "\tintensity factor\t\t:    0.750\n"
                          "\n\tphysiological factors in case of 77.500m per 7.500sec as follows:\n") +
                  bodyLines + "\n");
    std::string wanted = "velocity 36 kph; inclination -2.5 %; power 820 W; startVelocity 18 kph; "
                         "endVelocity 36 kph; gravity 0.0509858106 G; thrustForce 403 kgf; requiredPower 820 W; "
                         "cadencePoweredMax 120 rpm; sectorTime 7.5 sec; accele 0.5 mpss; maxAccele 2 mpss; "
                         "distance 77.5 m; ";
    for (auto [stage, n] : {std::pair("pedaling", 1), {"crank", 2}, {"hub", 3}, {"assist", 5}, {"thrust", 4}})
        wanted += formatText("%sMeanPower %d11 W; %sPeakPower %d12 W; %sMeanTorque %d13 Nm; %sMeanForce %d14 kgf; ",
                             stage, n, stage, n, stage, n, stage, n);
    EXPECT_EQ(figures, wanted + bodyFigures);
    found.velocity = 9.9;
    model.state.motorLocation = 0;
    report(rideAcceleration, 0);
    EXPECT_TRUE(figures.find("; leastAcceleration 0.00025 mpss; ") != std::string::npos);
    EXPECT_EQ(figures.find("assist"), std::string::npos);
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
    EXPECT_EQ(figures,
              "velocity 36 kph; inclination -2.5 %; force -30 kgf; startVelocity 18 kph; endVelocity 36 kph; "
              "thrustMeanPower 411 W; thrustPeakPower 412 W; thrustMeanTorque 413 Nm; thrustMeanForce 414 kgf; "
              "sectorTime 7.5 sec; accele 0.5 mpss; maxAccele 2 mpss; distance 77.5 m; "
              "airDragQuantity 610 J; rollingDragQuantity 620 J; potentialEnergy 630 J; "
              "startKineticEnergy 640 J; endKineticEnergy 650 J; "
              "frontBrakeTemperature 71 Cel; frontBrakeHeat 710 J; frontBrakeRadiated -72 J; "
              "frontBrakeResidual 638 J; rearBrakeTemperature 81 Cel; rearBrakeHeat 810 J; "
              "rearBrakeRadiated -82 J; rearBrakeResidual 728 J; temperature 19 Cel; ");
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
