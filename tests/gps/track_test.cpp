// A track made clean: geometry, sectors, windows, trimmed means, slopes and accelerations. Expected values by hand.
#include "gps/track.h"

#include "figures.h"

#include "gps/analysis.h"
#include "gps/sectors.h"
#include "gps/smoothing.h"
#include "gps/speed_noise.h"
#include "gps/track_geometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace torvane {

namespace {

constexpr double metresOfADegree = 111194.92664455873; // of a great circle of a sphere with 12,742 km diameter
constexpr double unrealInclination = 25, unrealAccele = 1.5;

// Rows of one sector, 10 m and 1 s apart at 10 m/s.
GpsRecords evenRows(size_t count)
{
    GpsRecords records(count);
    for (size_t i = 0; i < count; ++i) {
        records[i].sector = 1;
        records[i].timestamp = static_cast<uint32_t>(i);
        records[i].distance = 10.0 * static_cast<double>(i);
        records[i].speed = 10;
    }
    return records;
}

GpsRecords rowsOf(RecordField field, const std::vector<double>& values, const std::vector<uint32_t>& timestamps = {})
{
    GpsRecords records = evenRows(values.size());
    for (size_t i = 0; i < values.size(); ++i)
        records[i].*field = values[i];
    for (size_t i = 0; i < timestamps.size(); ++i)
        records[i].timestamp = timestamps[i];
    return records;
}

void expectRows(const GpsRecords& records, RecordField field, const std::vector<double>& want, const char* name)
{
    ASSERT_EQ(records.size(), want.size()) << name;
    for (size_t i = 0; i < want.size(); ++i)
        EXPECT_NEAR(records[i].*field, want[i], 1e-9) << name << ", row " << i;
}

} // namespace

TEST(TrackGeometry, distancesAndCourses)
{
    // from, to: deg
    constexpr std::tuple<double, double, double, double, double, double> cases[] = {
        {10, 20, 11, 20, metresOfADegree, 0},   {0, 179.5, 0, -179.5, metresOfADegree, 90}, // across the date line
        {1, 5, 0, 5, metresOfADegree, 180},     {0, 1, 0, 0, metresOfADegree, 270},
        {35, 45, 35, 135, 7871769.10, 60.1624}, // a quarter turn along 35 degrees, by the law of cosines
    };
    for (auto [latitude, longitude, toLatitude, toLongitude, metres, degrees] : cases) {
        SCOPED_TRACE(testing::Message() << latitude << ' ' << longitude << " to " << toLatitude << ' ' << toLongitude);
        EXPECT_NEAR(greatCircleDistance(latitude, longitude, toLatitude, toLongitude), metres, 0.01);
        EXPECT_NEAR(bearing(latitude, longitude, toLatitude, toLongitude), degrees, 1e-4);
    }
}

TEST(Sectors, divideTheRide)
{
    // speeds: threshold 1
    const std::tuple<const char*, std::vector<uint32_t>, std::vector<double>, std::vector<uint32_t>> cases[] = {
        {"all slow", {0, 1, 2}, {0.9, 0, 0.5}, {0, 0, 0}},
        {"at the threshold", {0, 1}, {1, 1}, {1, 1}},
        {"one alone goes, its number serves again", {0, 1, 2, 3, 4, 5}, {5, 5, 0, 5, 0, 5}, {1, 1, 0, 0, 0, 2}},
        {"the first alone", {0, 1, 2, 3}, {5, 0, 5, 5}, {0, 0, 1, 1}},
        {"the last alone stays", {0, 1, 9}, {5, 5, 5}, {1, 1, 2}},
        {"a missing sample", {0, 1, 5, 6}, {5, 5, 5, 5}, {1, 1, 2, 2}},
        {"samples every two seconds", {0, 2, 4, 8, 10}, {5, 5, 5, 5, 5}, {1, 1, 1, 2, 2}},
        {"no timestamps", {0, 0, 0, 0, 0}, {5, 5, 0, 5, 5}, {1, 1, 0, 2, 2}},
        {"time standing still makes each later second a gap", {0, 0, 1, 2}, {5, 5, 5, 5}, {1, 1, 0, 2}},
        {"a clock set back", {9, 10, 2, 3}, {5, 5, 5, 5}, {1, 1, 2, 2}},
        {"one row", {7}, {5}, {1}},
        {"no row", {}, {}, {}},
    };
    for (const auto& [name, timestamps, speeds, sectors] : cases) {
        GpsRecords records = rowsOf(&GpsRecord::speed, speeds, timestamps);
        bool anySector = std::count(sectors.begin(), sectors.end(), 0u) != std::ssize(sectors);
        EXPECT_EQ(formSectors(records, 1.0, 0), anySector) << name;
        for (size_t i = 0; i < records.size(); ++i)
            EXPECT_EQ(records[i].sector, sectors[i]) << name << ", row " << i;
    }
}

TEST(Sectors, speedFromDistance)
{
    const std::tuple<const char*, std::vector<uint32_t>, std::vector<double>, std::vector<double>> cases[] = {
        {"the mean of two speeds covers the step", {0, 1, 2, 4}, {0, 10, 30, 90}, {10, 10, 30, 30}},
        {"steps without time", {0, 1, 1, 1, 2}, {0, 10, 10, 15, 30}, {10, 10, 10, 10, 20}},
        {"first step without time", {0, 0, 1}, {0, 0, 20}, {20, 20, 20}},
        {"one row", {5}, {100}, {10}},
    };
    for (const auto& [name, timestamps, distances, speeds] : cases) {
        GpsRecords records = rowsOf(&GpsRecord::distance, distances, timestamps);
        formSectors(records, 1.0, analysisSpeedFromDistance);
        expectRows(records, &GpsRecord::speed, speeds, name);
    }
    GpsRecords places = rowsOf(&GpsRecord::latitude, {0, 20 / metresOfADegree, 60 / metresOfADegree});
    formSectors(places, 1.0, analysisMotionFromPosition);
    EXPECT_NEAR(places[2].distance, 60, 1e-6);
    EXPECT_NEAR(places[2].speed, 60, 1e-5);
}

TEST(Smoothing, windowFollowsTheSteps)
{
    // m of a step, rows of a window, of that for positions
    constexpr std::tuple<double, int, int> cases[] = {{0.9, 1, 5}, {2.9, 7, 5}, {3.0, 5, 5}, {4.9, 5, 5}, {5.0, 3, 3},
                                                      {6.9, 3, 3}, {7.1, 3, 0}, {8.9, 3, 0}, {9.0, 1, 0}};
    for (auto [step, window, positionWindow] : cases) {
        GpsRecords records = rowsOf(&GpsRecord::distance, {0, step, 2 * step});
        double place = step + (step == 5.0 ? 1e-6 : 0); // the haversine rounds
        for (size_t i = 0; i < records.size(); ++i)
            records[i].longitude = static_cast<double>(i) * place / metresOfADegree;
        EXPECT_EQ(chooseWindow(records), window) << step;
        EXPECT_EQ(choosePositionWindow(records), positionWindow) << step;
    }
    EXPECT_EQ(chooseWindow(rowsOf(&GpsRecord::distance, {0, 0.5, 9.5})), 1) << "steps below 1 m do not count";
    expectFigures({chooseWindow(evenRows(1)), choosePositionWindow(evenRows(1))}, {1, 0});
}

TEST(Smoothing, trimmedMeans)
{
    auto smoothHeights = [](std::span<GpsRecord> rows, int window) {
        return smoothField(rows, &GpsRecord::altitude, window, altitudeStart);
    };
    auto smoothRoad = [](std::span<GpsRecord> rows, int window) {
        return smoothField(rows, &GpsRecord::altitude, window, unbiasedStart);
    };
    const std::tuple<const char*, TrackPass (*)(std::span<GpsRecord>, int), RecordField, int, std::vector<double>,
                     std::vector<double>>
        cases[] = {
            {"five", smoothSpeed, &GpsRecord::speed, 3, {1, 2, 9, 4, 5, 6}, {2, 3, 11. / 3, 5, 5.5, 5}},
            {"heights above 1000 m", smoothHeights, &GpsRecord::altitude, 1, {1100, 1100, 1100}, {1100, 1200, 1100}},
            {"the same of the road", smoothRoad, &GpsRecord::altitude, 1, {1100, 1100, 1100}, {1100, 1100, 1100}},
            {"powers", smoothPower, &GpsRecord::power, 1, {1100, 1200, 1300}, {1100, 1200, 1300}},
            {"cadences", smoothCadence, &GpsRecord::cadence, 1, {60, 70, 80}, {60, 70, 80}},
            {"headings across north", smoothHeading, &GpsRecord::heading, 1, {359, 3, 0}, {359, 0, 0}},
        };
    for (const auto& [name, smooth, field, window, values, smoothed] : cases) {
        GpsRecords records = rowsOf(field, values);
        runPasses(records.size(), {smooth(records, window)});
        expectRows(records, field, smoothed, name);
    }
}

TEST(Track, slopes)
{
    const std::tuple<const char*, uint32_t, double, std::vector<double>, std::vector<double>> cases[] = {
        {"raw, however steep", 0, 10, {0, 1, 5, 5, 4}, {10, 40, 0, -10, -10}},
        {"slower than 2 m/s", 0, 1.9, {0, 1, 2, 3, 4}, {10, 0, 0, 0, 10}},
        {"flat", analysisFlat, 10, {0, 1, 5, 5, 4}, {0, 0, 0, 0, 0}},
    };
    for (const auto& [name, flags, speed, altitudes, inclinations] : cases) {
        GpsRecords records = rowsOf(&GpsRecord::altitude, altitudes);
        for (GpsRecord& record : records)
            record.speed = speed;
        refineTrack(records, unrealInclination, unrealAccele, flags);
        expectRows(records, &GpsRecord::inclination, inclinations, name);
    }
}

TEST(Track, accelerations)
{
    const std::tuple<const char*, uint32_t, std::vector<uint32_t>, std::vector<double>, std::vector<double>> cases[] = {
        {"over time", 0, {0, 1, 3, 4}, {10, 11, 15, 14}, {1, 2, -1, 0}},
        {"over distance", analysisNoTimestamps, {0, 0, 0, 0}, {10, 12, 12, 8}, {2.2, 0, -4, 0}},
        {"steps without time", 0, {0, 0, 0, 1}, {10, 12, 12, 8}, {0, 0, -4, 0}},
        {"too much at a clean speed",
         analysisSmoothing | analysisMeasuredSpeed,
         {0, 1, 2, 3, 4, 5, 6, 7},
         {10, 10.01, 10.02, 10.03, 10.04, 10.05, 10.06, 12},
         {0.01, 0.01, 0.01, 0.01, 0.01, 0.01, 0, 0}},
    };
    for (const auto& [name, flags, timestamps, speeds, accelerations] : cases) {
        GpsRecords records = rowsOf(&GpsRecord::speed, speeds, timestamps);
        refineTrack(records, unrealInclination, unrealAccele, flags | analysisFlat);
        expectRows(records, &GpsRecord::acceleration, accelerations, name);
    }
}

TEST(Track, endsOnTheWayWhereItIsToStop)
{
    StopRequest stop;
    Screens screens;
    screens.stop = &stop;
    Progress progress(screens);
    stop.ask();
    GpsRecords records = evenRows(6);
    EXPECT_THROW(refineTrack(records, 200, unrealAccele, analysisSmoothing, &progress), Stopped);
}

// The median of what is left of four speeds that lie on no parabola, or the step that the device counts by.
TEST(SpeedNoise, isThatOfTheDevice)
{
    const std::pair<std::vector<double>, double> cases[] = {
        {{5, 5, 5, 5, 5, 5, 5, 5, 5.3, 5.3}, 0.3 / 3.464},        // 0 in most of the windows
        {{5, 5, 5, 5, 5.3, 5.3, 5.3, 5.3}, 0.3 / 0.6745 / 4.472}, // 0, 0.3, 0.6, 0.3, 0
        {{5, 5, 5, 5, 5}, 0},
        {{5, 6, 5}, 1}, // too few to tell
    };
    for (const auto& [speeds, noise] : cases)
        EXPECT_NEAR(noiseOfSpeed(rowsOf(&GpsRecord::speed, speeds)), noise, 1e-9) << speeds.size();
}

TEST(Track, limitOfAccelerationFollowsTheSlope)
{
    // Inclination in %; limit in m/s2, 1.5 less gravity's share, -6.934 at 100 %
    constexpr std::pair<double, double> cases[] = {{0, 1.5}, {10, 0.524200}, {-100, 8.434349}};
    for (const auto& [inclination, limit] : cases) {
        for (double beyond : {-1e-4, 1e-4}) {
            GpsRecords records = evenRows(5);
            for (size_t i = 0; i < records.size(); ++i) {
                records[i].altitude = records[i].distance * inclination / 100;
                records[i].speed = 10 + static_cast<double>(i) * (limit + beyond);
            }
            refineTrack(records, 200, unrealAccele, analysisSmoothing);
            EXPECT_NEAR(records[2].acceleration, beyond < 0 ? limit + beyond : 0, 1e-9) << inclination << ' ' << beyond;
        }
    }
}

} // namespace torvane
