// Tracks as courses: what is read of them, what is told, what is refused with a sentence.
#include "plan/made_course.h"

#include "core/text.h"
#include "figures.h"
#include "fit/fit_builder.h"

namespace torvane {

namespace {

using Segments = std::vector<std::vector<TrackPlace>>;

std::string gpxOf(const Segments& segments)
{
    std::string text = "<gpx version='1.1'><trk>";
    for (const std::vector<TrackPlace>& places : segments) {
        text += "<trkseg>";
        for (const TrackPlace& place : places) {
            appendFormat(text, "<trkpt lat='%.9f' lon='%.9f'>", place.latitude, place.longitude);
            if (!std::isnan(place.height))
                appendFormat(text, "<ele>%.2f</ele>", place.height);
            text += "</trkpt>";
        }
        text += "</trkseg>";
    }
    return text + "</trk></gpx>";
}

std::vector<TrackPlace> road(double length, double step = 25)
{
    return madePlaces(length, hills(20, 2000), northward, step);
}

std::vector<TrackPlace> movedNorth(std::vector<TrackPlace> places, double degrees)
{
    for (TrackPlace& place : places)
        place.latitude += degrees;
    return places;
}

StatusCode load(const Segments& segments, Course& course)
{
    TestFolder folder;
    std::string text = gpxOf(segments);
    writeBytes(folder.path + "track.gpx", {text.begin(), text.end()});
    return loadCourse(folder.path + "track.gpx", {}, course);
}

} // namespace

TEST(Course, HasASentenceForWhatNobodyCanRide)
{
    struct Case {
        const char* what;
        Segments segments;
        StatusCode wanted;
    };
    std::vector<TrackPlace> withoutHeights = road(5000);
    for (TrackPlace& place : withoutHeights)
        place.height = noPlace;
    std::vector<TrackPlace> leap = road(5000), far = movedNorth(road(5000), 1);
    leap.insert(leap.end(), far.begin(), far.end());
    const Case cases[] = {
        {"no altitude", {withoutHeights}, planWithoutAltitude},
        {"two points", {road(1000, 1000)}, planTooFewPoints},
        {"zero length", {{road(100)[0], road(100)[0], road(100)[0], road(100)[0]}}, planTooShort},
        {"a leap of 100 km", {leap}, planLeaps},
        {"2,100 km", {madePlaces(2.1e6, slopeOf(0), northward, 10000)}, planTooLong},
        {"a wall", {madePlaces(5000, slopeOf(60), northward, 20)}, planTooSteep},
        {"nothing", {}, fitWithoutPoints},
    };
    for (const Case& test : cases) {
        Course course;
        EXPECT_EQ(load(test.segments, course), test.wanted) << test.what;
        EXPECT_NE(planFault(test.wanted), nullptr) << test.what;
    }
    Course course;
    EXPECT_EQ(loadCourse("nowhere.gpx", {}, course), fitCannotOpen);
}

TEST(Course, TellsGapsAndStraights)
{
    // Two segments that touch, a third one 1.1 km away, and a long straight step.
    Segments segments = {road(2000), movedNorth(road(2000), 2010 / 111194.9), movedNorth(road(2000), 0.047)};
    for (TrackPlace& place : segments[2])
        place.height += 800; // a cable car
    for (TrackPlace& place : segments[1])
        place.height += 1; // which is ridden
    segments[0].erase(segments[0].begin() + 20, segments[0].begin() + 40);
    Course course;
    ASSERT_EQ(load(segments, course), fitOk);
    EXPECT_EQ(course.findings.segments, 3u);
    ASSERT_EQ(course.findings.gaps.size(), 1u);
    EXPECT_NEAR(course.findings.gaps[0].distance, 4010, 5);
    EXPECT_EQ(course.findings.straights.size(), 1u);
    EXPECT_NEAR(course.length, 6010, 5);
    EXPECT_NEAR(course.points.back().height, 301, 0.1);
    EXPECT_FALSE(course.findings.hasTimes);
    for (const CoursePoint& point : course.points) {
        EXPECT_LT(std::fabs(point.slope), 5) << point.distance;
        EXPECT_LT(point.bend, 1e-3) << point.distance;
    }
}

// Two activities of 1.3 km by the positions, 1.35 km by the device, which has counted 500 m before; one position of the
// first is 5 km off, and 1.1 km lie between them.
TEST(Course, TakesTheWayAndThePausesOfADevice)
{
    std::string text = "<TrainingCenterDatabase><Activities>";
    int second = 0;
    for (double north : {0.0, 2400.0}) {
        text += "<Activity Sport='Biking'><Lap StartTime='2024-05-01T08:00:00Z'><Track>";
        for (int i = 0; i <= 50; ++i, ++second) {
            double off = second == 30 ? 5000 : 0;
            appendFormat(text,
                         "<Trackpoint><Time>2024-05-01T08:%02d:%02dZ</Time><Position><LatitudeDegrees>%.9f"
                         "</LatitudeDegrees><LongitudeDegrees>8</LongitudeDegrees></Position><AltitudeMeters>400"
                         "</AltitudeMeters><DistanceMeters>%d</DistanceMeters></Trackpoint>",
                         second / 60, second % 60, 47 + (north + 26 * i + off) / metresPerDegree, 500 + 27 * second);
        }
        text += "</Track></Lap></Activity>";
    }
    text += "</Activities></TrainingCenterDatabase>";
    TestFolder folder;
    writeBytes(folder.path + "ride.tcx", {text.begin(), text.end()});
    Course course;
    ASSERT_EQ(loadCourse(folder.path + "ride.tcx", {}, course), fitOk);
    const CourseFindings& f = course.findings;
    expectFigures({f.hasPlaces, f.hasTimes, f.ownDistance}, {true, true, true});
    EXPECT_EQ(f.pointsWithoutPlace, 1u);
    EXPECT_EQ(course.length, 2 * 1350);
    ASSERT_EQ(f.gaps.size(), 1u);
    EXPECT_NEAR(f.gaps[0].metres, 1100, 1);
}

// A device that is switched on has no height yet.
TEST_F(PlanTest, RidesOverABadHeightAtEitherEnd)
{
    for (double place : {0.0, 10000.0}) {
        auto height = [place](double way) { return std::fabs(way - place) < 1 ? -6.0 : 0; };
        Course course = madeCourse(10000, height, northward);
        EXPECT_EQ(ride(course, 150).walkMetres, 0) << place;
        for (const CoursePoint& point : course.points)
            EXPECT_LT(std::fabs(point.slope), 7) << point.distance << " m, bad at " << place;
    }
    for (double length : {10000.0, 10001.0, 10004.0}) { // whole steps, and a short one at the end
        Course slope = madeCourse(length, slopeOf(6), northward, {}, 1);
        for (const CoursePoint& point : slope.points)
            EXPECT_NEAR(point.slope, 6, 1e-9) << point.distance << " of " << length;
        EXPECT_NEAR(slope.findings.climbed, length * 0.06, 1e-6) << length;
    }
    options.altitudeSmoothing = 0; // the road ends where the track has it, up a last metre of 20 percent
    auto kerb = [](double way) { return std::max(0.0, way - 10000) / 5; };
    EXPECT_NEAR(madeCourse(10005, kerb, northward, options).points.back().height, 1, 1e-9);
}

// Heights as devices and maps give them.
TEST_F(PlanTest, TakesItsTimeFromNoisyHeights)
{
    struct Case {
        const char* what;
        double noise, over; // m, and m of road over which it changes
        double grain;       // m, to which the height is rounded
        OverWay clean;
    };
    const Case cases[] = {{"radio", 3, 30, 0.1, hills(80, 6000)},
                          {"rounded", 0, 30, 1, hills(80, 6000)},
                          {"weather", 5, 300, 0.1, hills(80, 6000)},
                          {"weather among hills", 5, 300, 0.1, hills(50, 4000)}};
    for (const Case& test : cases) {
        Course clear = madeCourse(30000, test.clean, northward);
        EXPECT_FALSE(clear.findings.noisy) << test.what;
        double truth = ride(clear, 200).seconds;
        for (unsigned seed = 1; seed <= 3; ++seed) {
            std::mt19937 random(seed);
            auto uniform = [&] { return random() / 2147483648.0 - 1; }; // alike everywhere
            std::vector<double> bumps;
            for (double way = 0; way < 31000; way += test.over)
                bumps.push_back(test.noise * (uniform() + uniform() + uniform()));
            auto height = [&](double way) {
                size_t i = static_cast<size_t>(way / test.over);
                double part = way / test.over - static_cast<double>(i);
                double bump = bumps[i] * (1 - part) + bumps[i + 1] * part;
                return std::round((test.clean(way) + bump) / test.grain) * test.grain;
            };
            Course course = madeCourse(30000, height, northward);
            double seconds = ride(course, 200).seconds;
            EXPECT_EQ(course.findings.noisy, test.noise == 5) << test.what << ", seed " << seed;
            EXPECT_TRUE(std::fabs(seconds / truth - 1) < 0.03 || course.findings.noisy)
                << test.what << ", seed " << seed << ": " << seconds << " for " << truth;
            EXPECT_EQ(course.findings.smoothedMore, test.noise == 3) << test.what << ", seed " << seed;
        }
    }
}

} // namespace torvane
