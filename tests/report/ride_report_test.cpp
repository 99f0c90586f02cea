// The ride reports line by line where a condition decides what is printed, and the tables under them.
#include "captured_screens.h"
#include "report/ride_lines.h"
#include "report/ride_report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

namespace torvane {

namespace {

struct RideReport : testing::Test {
    RideReport()
    {
        model.state.cadencePoweredMax = 120.0;
        model.state.temperature = 20.0;
    }

    void choose(int mode, int target)
    {
        in.rideMode = mode;
        in.rideTarget = target;
    }

    RideRun ride(ResultStatus status = 0) const
    {
        return {model, in, found, now, heat, body, status};
    }

    std::string report(ResultStatus status = 0)
    {
        shown.lower = "before";
        reportRide(shown.screens, ride(status));
        return shown.lower;
    }

    std::string textOf(void (*append)(std::string&, const RideRun&)) const
    {
        std::string text;
        append(text, ride());
        return text;
    }

    Model model;
    RideInputs in = {};
    RideFigures found = {};
    Evaluation now = {};
    BrakeHeat heat = {};
    PhysiologyFigures body = {};
    CapturedScreens shown;
};

TEST_F(RideReport, referenceByTarget)
{
    std::tie(found.power, found.meanPower, found.sectorTime) = std::tuple(1.5, 2.5, 3.5);
    std::tie(found.distance, found.accele, in.gravity) = std::tuple(4.56, -0.5, -0.05);
    std::string acceleration, deceleration;
    for (int target = 0; target < 9; ++target) {
        choose(rideAcceleration, target);
        acceleration += reportReference(ride()) + ';';
        choose(rideDeceleration, target);
        deceleration += reportReference(ride()) + ';';
    }
    EXPECT_EQ(acceleration, "1.500 W;2.500 W;1.500 W;2.500 W;3.500 sec;  4.6 m;-0.500 mpss;-0.050 G;1.500 W;");
    EXPECT_EQ(deceleration, "1.500 W;2.500 W;1.500 W;3.500 sec;  4.6 m;-0.500 mpss;-0.050 G;1.500 W;;");
}

TEST_F(RideReport, fatalEndsBehindTheAlert)
{
    in.startVelocity = 20.0;
    in.endVelocity = 10.0;
    choose(rideDeceleration, 3);
    EXPECT_EQ(report(0x10200),
              "\n deceleration which calculation referer is 'sector time' 0.000 sec\n"
              " -- inclination 0.000 per, starting velocity is 72.000 kph, ending velocity is 36.000 kph\n"
              "alert :\ntoo long sector time limitted maximum 0.000000 sec\n");
    EXPECT_EQ(shown.status, "status : deceleration which calculation referer is 'sector time' 0.000 sec"
                            ", with fatal error");
}

TEST_F(RideReport, brakedDecelerationQuotesTheForceOnThePaneAlone)
{
    choose(rideDeceleration, 2);
    found.drive.thrustMode = 1;
    now.thrustForce = -2.5;
    found.meanStagePower[stageThrust] = -100.0;
    std::string text = report();
    EXPECT_EQ(text.substr(0, text.find(" -- ")),
              "\n deceleration which calculation referer is 'PEV as maxi' required -2.500 kgf\n"
              "with braking due to constant force\n");
    EXPECT_EQ(shown.status, "status : deceleration which calculation referer is 'PEV as maxi' 0.000 W");
    EXPECT_TRUE(contains(text, "\tair drag quantity\t\t:"));
    EXPECT_FALSE(contains(text, "required power"));

    found.power = -1.5; // pedals beyond their parabola: no road that pushes
    EXPECT_TRUE(contains(report(), "'PEV as maxi' -1.500 W\n"));

    found.drive.thrustMode = 0; // pedaled: the mean alone decides on the second line
    EXPECT_FALSE(contains(report(), "required -2.500"));
    EXPECT_TRUE(contains(report(), "\nwith braking due to constant force\n"));
    choose(rideDeceleration, 7);
    EXPECT_FALSE(contains(report(), "constant force"));
}

TEST_F(RideReport, stoppedShort)
{
    constexpr std::tuple<int, int, double, bool> cases[] = {
        {rideAcceleration, 0, 10.5, true},  {rideAcceleration, 0, 10.0, false},   {rideDeceleration, 0, 9.5, true},
        {ridePatternBraking, 1, 9.5, true}, {ridePatternBraking, 0, 10.0, false}, {ridePatternBraking, 3, 9.5, false}};
    found.velocity = 10.0;
    for (auto [mode, target, endVelocity, told] : cases) {
        choose(mode, target);
        in.endVelocity = endVelocity;
        std::string text = report(0x20000);
        size_t at = text.find("percentage error\nreached to 36.000 kph screened under 0.000250 mpss\n");
        EXPECT_EQ(at != text.npos, told) << mode << ' ' << target << text;
    }
}

TEST_F(RideReport, kiloWattFrom10000AtTheRoad)
{
    constexpr std::pair<double, const char*> cases[] = {
        {-9999.9994, "\tbraking thrust power\t:-5000.000 W  ,-9999.999 W  ,   -1.000 Nm ,   -2.000 kgf\n"},
        {-10000.0, "\tbraking thrust power\t:   -5.000 kW ,  -10.000 kW ,   -1.000 Nm ,   -2.000 kgf\n"},
    };
    std::tie(found.meanStagePower[stageThrust], found.meanStageTorque[stageThrust], found.meanStageForce[stageThrust]) =
        std::tuple(-5000, -1, -2);
    for (auto [peak, row] : cases) {
        found.peakPower[stageThrust] = peak;
        EXPECT_EQ(textOf(appendBrakingRow),
                  std::string("\t\t\t\t\t      mean    ,  maximal    ,   torque    ,    force\n") + row);
    }
    model.state.motorLocation = 1;
    std::tie(found.assistMeanPower, found.assistPeakPower) = std::tuple(150, 250);
    EXPECT_TRUE(
        contains(textOf(appendRunChain), "\te-Assist\t\t\t:    0.150 kW ,    0.250 kW ,    0.000 Nm ,    0.000 kgf\n"));
}

TEST_F(RideReport, unitsOfHeatByTheFrontBrakeAndOfEnergiesByTheLargest)
{
    std::tie(heat.brakeTemperature[0], heat.brakeRadiated[0]) = std::tuple(80, -1000);
    std::tie(heat.brakeTemperature[1], heat.brakeRadiated[1]) = std::tuple(90, -500);
    found.airDragQuantity = 500.0;
    found.potentialEnergy = -20000.0; // an ascent: a negative energy does not change the unit
    constexpr std::tuple<double, double, double, const char*, const char*> cases[] = {
        {9000, 20000, 10000,
         "\tbrake heatfront\t\t:     80.0 C  , 9000.000 J  ,-1000.000 J  , 8000.000 J\n"
         "\tbrake heatrear\t\t:     90.0 C  ,20000.000 J  , -500.000 J  ,19500.000 J\n",
         "\n\tair drag quantity\t\t:    0.500 kJ\n\trolling drag quantity\t:    0.000 kJ\n"
         "\tpotential energy\t\t:  -20.000 kJ\n\tstarting kinetic energy\t:    0.000 kJ\n"
         "\tending kinetic energy\t:   10.000 kJ\n\n"},
        {10000, 500, 9999,
         "\tbrake heatfront\t\t:     80.0 C  ,   10.000 kJ ,   -1.000 kJ ,    9.000 kJ\n"
         "\tbrake heatrear\t\t:     90.0 C  ,    0.500 kJ ,   -0.500 kJ ,    0.000 kJ\n",
         "\tending kinetic energy\t: 9999.000 J\n\n"},
    };
    for (const auto& [front, rear, energy, heats, energies] : cases) {
        std::tie(heat.brakeHeat[0], heat.brakeHeat[1], found.endKineticEnergy) = std::tie(front, rear, energy);
        std::string text = textOf(appendBrakeHeat);
        EXPECT_TRUE(contains(text, std::string("residual\n") + heats +
                                       "\t-- outside air temperature is 20.0 C. "
                                       "radiate means both of convective and radiant\n"));
        EXPECT_TRUE(contains(text, energies));
    }
}

TEST_F(RideReport, brakingPatterns)
{
    std::tie(now.inclination, in.startVelocity, in.endVelocity, found.force) = std::tuple(-7, 20, 10, -12.34);
    std::tie(in.intervalDistance, in.totalDistance, found.sectorTime) = std::tuple(300, 5000, 599.5);
    found.drive.thrustMode = thrustByBraking;
    constexpr std::tuple<int, ResultStatus, const char*> cases[] = {
        {0, 0,
         "'constant force braking'\n -- inclination -7.000 per, constant force -12.3 kgf from 72.0 kph to 36.0 kph\n"},
        {2, 0,
         "'constant velocity braking'\n -- inclination -7.000 per, velocity is constant 36.0 kph due to braking -12.3 "
         "kgf\n"
         "\tin case of distance(moving) is 5000 m, time is 600 sec(00:10:00h) as follows:\n\n\tair drag"},
        {2, 0x80000,
         "'constant velocity braking'\n -- inclination -7.000 per, velocity is constant 36.0 kph\nwarning :\n"},
        {3, 0,
         "'intermittent braking'\n -- inclination -7.000 per, intermittent braking -12.3 kgf to 36.0 kph for every "
         "300.0 m\n"
         "\tin case of"},
    };
    for (auto [pattern, status, head] : cases) {
        choose(ridePatternBraking, pattern);
        EXPECT_EQ(report(status).find(std::string("\n pattern braking ") + head), 0u) << shown.lower;
    }
}

TEST_F(RideReport, corneringBeyondGrip)
{
    choose(rideCriticalCornering, 2);
    std::tie(found.safetyMargin, now.cadence) = std::tuple(-9999.999, 90);
    found.requiredPower = -0.0; // never shown below 0
    std::tie(now.currentFrontTooth, now.currentRearTooth) = std::tuple(51, 9);
    std::string text = report();
    EXPECT_TRUE(contains(text, "\tfriction safty margin\t:-9999.999 (ratio)\n\tminor friction safty margin means over "
                               "velocity and the bike would slip and fall\n\t\t\t\t\t     power    ,"));
    EXPECT_TRUE(contains(text, "kgf\n\tcadence\t\t\t:   90.000 rpm geared 51/ 9\n"
                               "\trequired power\t\t:    0.000 W case of 120.0 rpm cadence\n\n"));
    EXPECT_FALSE(contains(text, "e-Assist"));
}

TEST_F(RideReport, physiologyByLevelAndMode)
{
    constexpr std::tuple<int, int, const char*> cases[] = {
        {1, rideDeceleration, // recovery has no limit
         "\n\tpower traning level\t:  Lv1, recovery for ftp 270.0W\n\tintensity factor\t\t:    0.750\n\n"
         "\tnormalized power\t\t:  200.000 W\n"},
        {5, ridePowerAndVelocity,
         "\n\tupper limit of traning time is 00:08:00h as one interval\n"
         "\tpower traning level\t:  Lv5, vo2max for ftp 270.0W\n\tintensity factor\t\t:    0.750\n\n"
         "\tphysiological factors in case of 500m per 00:01:05h as follows:\n"},
    };
    model.state.ftp = 270.0;
    std::tie(in.physiology.useFtp, body.length.intensionFirst[0]) = std::tuple(1, 1);
    std::tie(body.length.intensionSecond[0], body.length.intensionSecond[1]) = std::tuple(5, 500);
    std::tie(body.normalizedPower, body.intensityFactor) = std::tuple(200, 0.75);
    body.trainingStressScore = 12.0;
    for (const auto& [level, mode, start] : cases) {
        body.level = level;
        choose(mode, 0);
        std::string text = textOf(appendPhysiology);
        EXPECT_EQ(text.substr(0, strlen(start)), start) << level;
        EXPECT_TRUE(contains(text, "\ttraning stress score\t:   12.000\n")) << level;
    }
    in.physiology.useFtp = 0;
    choose(rideDeceleration, 0);
    EXPECT_EQ(textOf(appendPhysiology), "\n\tnormalized power\t\t:  200.000 W\n\tvariability index\t\t:    0.000\n"
                                        "\tenergy kilo joule\t\t:    0.000 kJ\n\tenergy kilo calorie\t:    0.000 kcal\n"
                                        "\trequired food calorie\t:    0.000 kcal except daily basal metabolism\n");
}

// The process and sector tables

SampleLog logOf(int rows)
{
    SampleLog log;
    log.sampleCount = rows;
    allocateSampleLog(log);
    for (int i = 0; i < rows; ++i)
        log.rows[static_cast<size_t>(i)] = {i * 0.5, 10.0, 123.4, 12.5, 7.0, -0.25, 1234.5678, 51, 9, 51.0 / 9.0, 90.0};
    return log;
}

TEST_F(RideReport, headingsOfTables)
{
    constexpr std::tuple<int, int, int, const char*> cases[] = {
        {rideAcceleration, 0, 0, "acceleration powered pedaling based"},
        {rideDeceleration, 1, 1, "braking powered (wheel)thrust based"},
        {ridePatternBraking, 1, 0, "braking powered (wheel)thrust based"},
        {-1, 0, 1, "inclination and velocity powered zero"}, // kW left by a braking run; rolling is always in W
    };
    for (const auto& [mode, thrustMode, kiloWatt, subject] : cases) {
        shown.lower.clear();
        in.rideMode = mode;
        found.drive.thrustMode = thrustMode;
        found.drive.kiloWattLog = kiloWatt;
        mode < 0 ? reportRollingHeading(shown.screens) : reportProcessHeading(shown.screens, ride());
        EXPECT_EQ(shown.lower,
                  std::string("\n\n\tprocess of ") + subject + " as follows\n\n" +
                      "    time,velocity,    power,  torque,   force,  accele,distance,  gear, ratio, cadence\n" +
                      "     sec,     kph,       " + (mode >= 0 && kiloWatt ? "kW" : " W") +
                      ",      Nm,     kgf,    mpss,       m,     t,      ,     rpm\n");
    }
}

TEST_F(RideReport, rowBehindTheLastOnlyWhenWritten)
{
    std::string row = ",  36.000,  123.400,  12.500,   7.000,  -0.250,1234.568, 51/ 9, 5.667,  90.000\n";
    SampleLog log = logOf(1);
    reportProcessRows(shown.screens, log);
    EXPECT_EQ(shown.lower, "   0.000" + row);
    log.rows[1] = log.rows[0];
    log.rows[1].time = 0.5;
    reportProcessRows(shown.screens, log);
    EXPECT_EQ(shown.lower, "   0.000" + row + "   0.000" + row + "   0.500" + row);
}

TEST_F(RideReport, tableOfSectors)
{
    reportSectorHeading(shown.screens);
    SampleLog log;
    log.sectors.push_back({25.06, 20.0, 271.25, {25.5, 22.25}, {3.5, 1.25}, {-0.5, -0.125}, {3.0, 1.125}});
    log.sectors.push_back({27.0, 10.0, 300.0, {40.0, 30.0}, {8.0, 4.0}, {-0.75, -0.25}, {7.25, 3.75}});
    reportSectorRows(shown.screens, log);
    EXPECT_EQ(shown.lower,
              "\n\n\tcumulative data of motion and front brake heat at the end of each sector\n"
              "\t-- odd sector is acceleration powered zero, even sector is spot braking\n\n"
              "   sector,     time, distance, velocity,  f.brake,  r.brake,   f.heat,f.radiate,f.residual\n"
              "                sec,        m,      kph,      Cel,      Cel,       kJ.       kJ,       kJ\n"
              "        1,     25.1,    271.2,   72.000,   25.500,   22.250,    3.500,   -0.500,    3.000\n"
              "        2,     27.0,    300.0,   36.000,   40.000,   30.000,    8.000,   -0.750,    7.250\n");
}

} // namespace

} // namespace torvane
