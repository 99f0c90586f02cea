// Tracks of other formats as activities.
#include "gps/activity.h"
#include "gps/prepare.h"
#include "gps/track_import.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace torvane {

namespace {

constexpr double start = 1'600'000'000; // s since 1970
constexpr uint32_t fitStart = 968'934'400;
constexpr uint8_t cycling = 2;

TrackPoint at(double second, double distance = notThere)
{
    TrackPoint point;
    point.time = start + second;
    point.latitude = 47 + second * 1e-5;
    point.longitude = 8;
    point.elevation = 400 + second;
    point.distance = distance;
    point.power = 200;
    return point;
}

Activity imported(const Tracks& tracks, FitImage& image, SourceFindings& findings)
{
    EXPECT_EQ(importTracks(tracks, cycling, image, findings), fitOk);
    Activity activity;
    PrepareFindings ignored;
    EXPECT_EQ(readActivity(image, activity, ignored), fitOk);
    return activity;
}

} // namespace

TEST(TrackImport, pointsArePutAtWholeSecondsAndKeepWhatAFieldCanHold)
{
    Tracks tracks;
    tracks.points = {at(0.4), at(0.99), at(2.6), at(5)};
    tracks.points[1].heartRate = 300; // beyond a byte
    tracks.points[1].cadence = 90.4f;
    tracks.points[2].elevation = -501;
    tracks.points[2].time = notThere;
    tracks.points[3].temperature = -4.6f;
    FitImage image;
    SourceFindings findings;
    Activity activity = imported(tracks, image, findings);
    ASSERT_EQ(activity.samples.size(), 3u);
    EXPECT_EQ(findings.pointsWithoutTime, 1u);
    EXPECT_EQ(activity.samples[0].timestamp, fitStart);
    EXPECT_EQ(activity.samples[1].timestamp, fitStart + 1);
    EXPECT_FALSE(activity.samples[1].has(rideHeartRate));
    EXPECT_EQ(activity.samples[1].values[rideCadence], 90);
    EXPECT_EQ(activity.samples[0].values[rideAltitude], (400.4 + 500) * 5);
    EXPECT_EQ(activity.samples[0].values[ridePower], 200);
    EXPECT_FALSE(activity.samples[0].has(rideDistance));
    EXPECT_NEAR(activity.samples[0].values[rideLatitude] * 180.0 / 2147483648.0, 47.000004, 1e-7);
    EXPECT_EQ(activity.samples[2].values[rideTemperature], -5);
}

TEST(TrackImport, pausesLapsAndLegs)
{
    Tracks tracks;
    tracks.format = TrackFormat::tcx;
    // The later one first, two rides: one with a lap, one with a pause; between them a run, left out.
    tracks.points = {at(1000, 900), at(1001, 907), at(1005, 930), at(0, 0),
                     at(100, 0),    at(101, 8),    at(160, 8),    at(161, 16)};
    tracks.legs = {{0, "Biking"}, {3, "Running"}, {4, "cycling"}};
    tracks.segments = {0, 2, 3, 4, 6};
    tracks.laps = {0, 2, 3, 4};
    FitImage image;
    SourceFindings findings;
    Activity activity = imported(tracks, image, findings);
    EXPECT_EQ(findings.legsOfOtherSports, 1u);
    ASSERT_EQ(activity.samples.size(), 7u);
    EXPECT_EQ(activity.samples.front().timestamp, fitStart + 100);
    EXPECT_EQ(activity.samples.back().timestamp, fitStart + 1005);
    EXPECT_EQ(activity.samples.back().values[rideDistance], 93000);
    ASSERT_EQ(activity.pauses.size(), 2u) << "within a ride and between the rides, none at the lap";
    EXPECT_EQ(activity.pauses[0].from, fitStart + 101);
    EXPECT_EQ(activity.pauses[0].to, fitStart + 160);
    EXPECT_EQ(activity.pauses[1].to, fitStart + 1000);
    ASSERT_EQ(activity.summaries.size(), 4u) << "three laps and a session";
    EXPECT_EQ(activity.summaries.back().sport, cycling);
}

TEST(TrackImport, withoutTimesThereIsNoRide)
{
    Tracks tracks;
    tracks.points = {at(0)};
    for (double time : {notThere, -2147483648.0, 1e12}) {
        tracks.points[0].time = time;
        FitImage image;
        SourceFindings findings;
        EXPECT_EQ(importTracks(tracks, cycling, image, findings), fitWithoutTimes) << time;
    }
}

} // namespace torvane
