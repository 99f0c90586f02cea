// The process and sector tables.
#include "captured_screens.h"
#include "core/parameter_block.h"
#include "model/run_state.h"
#include "report/ride_report.h"
#include "ride/ride_run.h"
#include "ride/sample_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace torvane {

namespace {

SampleLog logOf(int rows)
{
    SampleLog log;
    log.sampleCount = rows;
    allocateSampleLog(log);
    for (int i = 0; i < rows; ++i)
        log.rows[static_cast<size_t>(i)] = {i * 0.5, 10.0, 123.4, 12.5, 7.0, -0.25, 1234.5678, 51, 9, 51.0 / 9.0, 90.0};
    return log;
}

TEST(RideTables, headings)
{
    constexpr std::tuple<int, int, int, const char*> cases[] = {
        {rideAcceleration, 0, 0, "acceleration powered pedaling based"},
        {rideDeceleration, 1, 1, "braking powered (wheel)thrust based"},
        {ridePatternBraking, 1, 0, "braking powered (wheel)thrust based"},
        {-1, 0, 1, "inclination and velocity powered zero"}, // kW left by a braking run; rolling is always in W
    };
    for (const auto& [mode, thrustMode, kiloWatt, subject] : cases) {
        CapturedScreens shown;
        workingBlock.rideMode = mode;
        runState.thrustMode = thrustMode;
        runState.kiloWattLog = kiloWatt;
        mode < 0 ? reportRollingHeading() : reportProcessHeading();
        EXPECT_EQ(shown.lower,
                  std::string("\n\n\tprocess of ") + subject + " as follows\n\n" +
                      "    time,velocity,    power,  torque,   force,  accele,distance,  gear, ratio, cadence\n" +
                      "     sec,     kph,       " + (mode >= 0 && kiloWatt ? "kW" : " W") +
                      ",      Nm,     kgf,    mpss,       m,     t,      ,     rpm\n");
    }
}

TEST(RideTables, rowBehindTheLastOnlyWhenWritten)
{
    const std::string row = ",  36.000,  123.400,  12.500,   7.000,  -0.250,1234.568, 51/ 9, 5.667,  90.000\n";
    SampleLog log = logOf(1);
    CapturedScreens shown;
    reportProcessRows(log);
    EXPECT_EQ(shown.lower, "   0.000" + row);
    log.rows[1] = log.rows[0];
    log.rows[1].time = 0.5;
    reportProcessRows(log);
    EXPECT_EQ(shown.lower, "   0.000" + row + "   0.000" + row + "   0.500" + row);
}

TEST(RideTables, longTableComesInLargePiecesWithProgress)
{
    constexpr int rows = 20000;
    constexpr size_t rowLength = 86;
    SampleLog log = logOf(rows);
    CapturedScreens shown;
    beginProgress();
    reportProcessRows(log);
    EXPECT_EQ(std::count(shown.lower.begin(), shown.lower.end(), '\n'), rows);
    EXPECT_LE(shown.pieces.size(), shown.lower.size() / (64 * 1024) + 1);
    EXPECT_LT(*std::max_element(shown.pieces.begin(), shown.pieces.end()), 64u * 1024 + 2 * rowLength);
    EXPECT_TRUE(std::is_sorted(shown.progress.begin(), shown.progress.end()));
    EXPECT_EQ(shown.progress.back(), 99);
    EXPECT_LE(shown.progress.size(), 101u);
    endProgress();
}

TEST(RideTables, sectors)
{
    CapturedScreens shown;
    reportSectorHeading();
    SampleLog log;
    log.sectors.push_back({25.06, 20.0, 271.25, {25.5, 22.25}, {3.5, 1.25}, {-0.5, -0.125}, {3.0, 1.125}});
    log.sectors.push_back({27.0, 10.0, 300.0, {40.0, 30.0}, {8.0, 4.0}, {-0.75, -0.25}, {7.25, 3.75}});
    reportSectorRows(log);
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
