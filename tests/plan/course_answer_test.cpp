// A predicted ride, written and read again: what the files hold, and that the analysis of what was recorded finds the
// power that was asked for.
#include "plan/course_answer.h"

#include "figures.h"
#include "fit/fit_builder.h"
#include "fit/fit_output.h"
#include "gps/activity.h"
#include "gps/ride_answer.h"
#include "plan/course_file.h"
#include "plan/course_gpx.h"
#include "tracks/tracks.h"

#include "fit/fit_types.h"

#include <cmath>

namespace torvane {

namespace {

const std::string passFile = TORVANE_CHECKOUT "/samples/rides/pass.gpx";

struct CoursePlans : testing::Test {
    TestFolder folder;
    ParameterBlock block = defaultBlock();
    Model model = modelOf(block);
    AnsweredCourse answered;

    // Northwards over waves of 3 km, so high to both sides of their middle.
    std::string wavyTrack(double metres)
    {
        std::string text = "<gpx><trk><trkseg>";
        for (int i = 0; i < 600; ++i)
            text += "<trkpt lat=\"" + std::to_string(47 + i * 0.0002) + "\" lon=\"8\"><ele>" +
                    std::to_string(400 + metres * std::sin(i * 0.0466)) + "</ele></trkpt>";
        text += "</trkseg></trk></gpx>";
        writeBytes(folder.path + "wavy.gpx", {text.begin(), text.end()});
        return folder.path + "wavy.gpx";
    }

    PlannedFile plan(const std::string& track, const PlanEntries& entries)
    {
        EXPECT_EQ(answerCourse(model, block, track, entries, answered), fitOk);
        return plannedFile(answered, secondsOf(answered.course, answered.planned.ride), std::string(30, 'p') + "ü");
    }

    std::vector<RiddenRow> analysed(const PlannedFile& planned)
    {
        FitImage image = {};
        makePlannedActivity(planned, image);
        EXPECT_TRUE(saveFitFile(image, folder.path + "ridden.fit"));
        AnsweredRide ride;
        EXPECT_EQ(answerRide(model, block, folder.path + "ridden.fit", {}, ride), fitOk);
        return riddenRowsOf(ride.analysis, ride.measured);
    }
};

std::span<const RiddenRow> within(const std::vector<RiddenRow>& rows, double from, double to)
{
    auto first = std::ranges::lower_bound(rows, from, {}, &RiddenRow::distance);
    return {first, std::ranges::lower_bound(rows, to, {}, &RiddenRow::distance)};
}

} // namespace

TEST_F(CoursePlans, GiveTheirPowerBackWhenTheyAreRidden)
{
    PlanEntries up;
    up.options.power = 230;
    PlanEntries paced = up;
    paced.options.effort = effortNormalised;
    paced.options.pacing = pacingPlan;
    PlanEntries strong = up; // out of each hairpin of the way down
    strong.options.power = 320;
    const std::tuple<const char*, std::string, PlanEntries> cases[] = {{"waves", wavyTrack(15), up},
                                                                       {"waves, paced", wavyTrack(15), paced},
                                                                       {"pass", passFile, up},
                                                                       {"pass, strong", passFile, strong}};
    for (const auto& [name, track, entries] : cases) {
        SCOPED_TRACE(name);
        std::vector<RiddenRow> rows = analysed(plan(track, entries));
        double asked = answered.planned.ride.meanPower;
        for (FigureSource source : {predictedFigure, measuredFigure})
            EXPECT_NEAR(*meansOf(rows, source).power(), asked, asked * 0.003) << source;
        answered.answer.parts.pop_back(); // no whole kilometre
        for (const CoursePart& part : answered.answer.parts)
            EXPECT_NEAR(*meansOf(within(rows, part.from, part.to), predictedFigure).power(), part.power,
                        std::max(part.power * 0.03, 1.0))
                << part.from;
    }
}

TEST_F(CoursePlans, StandInACourseFileAndInGpxAlike)
{
    PlannedFile planned = plan(passFile, {});
    size_t climbs = answered.answer.climbs.size();
    ASSERT_GE(climbs, 1u);
    uint32_t end = planned.start + planned.seconds.back().time;
    std::string name = std::string(30, 'p') + '\0'; // cut in front of the letter of two bytes that has no room
    for (auto make : {makeCourseFile, makePlannedActivity}) {
        bool isCourse = make == makeCourseFile;
        SCOPED_TRACE(isCourse ? "course file" : "activity");
        FitImage image = {};
        make(planned, image);
        Activity activity;
        PrepareFindings findings;
        ASSERT_EQ(readActivity(image, activity, findings), fitOk);
        ASSERT_EQ(activity.samples.size(), planned.seconds.size());
        for (const PlannedSecond& second : planned.seconds) {
            const RideSample& sample = activity.samples[second.time];
            expectFigures({sample.timestamp, sample.values[rideCadence], sample.values[rideDistance] / 100.0},
                          {planned.start + second.time, second.cadence, second.distance}, 0.5);
        }
        auto count = [&](uint16_t number) {
            return std::ranges::count(activity.others, number, &OtherMessage::global);
        };
        expectFigures({count(messageLap), count(messageCourse), count(messageSession), count(messageCoursePoint)},
                      {1, isCourse, !isCourse, isCourse ? 2 * climbs : 0});
        EXPECT_EQ(activity.timer.at(0).time, planned.start);
        for (const Summary& part : activity.summaries)
            expectFigures({part.start, part.end, part.timer},
                          {planned.start, end, part.isSession ? (end - planned.start) * 1000.0 : 0});
        std::string bytes(image.data.begin(), image.data.end());
        EXPECT_EQ(bytes.find(name) != bytes.npos, isCourse);
        EXPECT_EQ(activity.fileType == fileTypeCourse, isCourse) << int{activity.fileType};
    }

    std::string gpx = courseGpx(planned);
    bool given = false;
    TrackReading read = readTracks([&](std::vector<uint8_t>& piece) {
        piece = given ? std::vector<uint8_t>() : std::vector<uint8_t>(gpx.begin(), gpx.end());
        given = true;
        return SourceFault::none;
    });
    ASSERT_EQ(read.result, TrackResult::ok);
    ASSERT_EQ(read.tracks.points.size(), planned.seconds.size());
    for (const PlannedSecond& second : planned.seconds) {
        const TrackPoint& point = read.tracks.points[second.time];
        EXPECT_EQ(point.time - 631065600, planned.start + second.time);
        EXPECT_NEAR(point.elevation, second.altitude, 0.006) << second.time;
    }
}

// What each part takes adds up to the whole, and nothing of it is told twice.
TEST_F(CoursePlans, TellPartsThatMakeTheWhole)
{
    PlanEntries entries;
    ASSERT_TRUE(takeStops("4:10min", entries.options));
    entries.options.power = 60;
    plan(passFile, entries);
    const CourseRide& ride = answered.planned.ride;
    double seconds = 0, joule = 0, walked = 0;
    for (const CoursePart& part : answered.answer.parts) {
        seconds += part.seconds;
        joule += part.power * part.seconds;
        walked += part.walkSeconds;
    }
    EXPECT_NEAR(seconds, ride.movingSeconds, 0.5);
    EXPECT_NEAR(ride.seconds, ride.movingSeconds + 600, 0.5);
    EXPECT_NEAR(joule / 1000, ride.kiloJoule, ride.kiloJoule * 0.001);
    EXPECT_NEAR(walked, ride.walkSeconds, 0.5);
    EXPECT_GT(walked, 0) << "60 W on a ramp of 11 percent";
    EXPECT_NEAR(answered.answer.parts.back().clock, ride.seconds, 0.5);
    double intensity = answered.answer.intensity;
    EXPECT_NEAR(answered.answer.stress, (ride.movingSeconds - walked) / 36 * intensity * intensity, 0.01);
    double ridden = 0, still = 0, given = 0;
    PowerSplit spent = {};
    for (const PlannedSecond& second : secondsOf(answered.course, ride)) {
        EXPECT_TRUE(second.speed > 0 || second.cadence == 0) << second.time;
        double lasted = 1 - std::max(0.0, second.time - ride.seconds);
        ridden += second.ridden;
        still += second.speed == 0 ? 1 : 0;
        given += second.power * lasted / 1000;
        for (size_t sink = 0; sink < powerSinkCount; ++sink)
            spent[sink] += second.split[sink] * lasted / 1000;
    }
    EXPECT_NEAR(ridden, ride.movingSeconds - walked, 0.5);
    EXPECT_NEAR(still, 600, 3) << "the stop";
    EXPECT_NEAR(given, ride.kiloJoule, 1e-6);
    const EnergyBalance& e = ride.energy;
    const double whole[] = {e.air, e.rolling, e.slope, e.kinetic, ride.kiloJoule * 1000 - e.thrust, e.brakes};
    for (size_t sink = 0; sink < powerSinkCount; ++sink)
        EXPECT_NEAR(spent[sink], whole[sink] / 1000, 0.5) << sink;
}

TEST(CourseStarts, AreTimesOfADay)
{
    constexpr std::pair<const char*, int64_t> starts[] = {
        {"", 0},
        {"8:30", 30600},
        {"08:30:05Z", 30605},
        {"2024-01-02 0:01", 86460},
        {"2024-02-29T12:00", 59 * 86400 + 43200},
        {"24:00", -1},
        {"8", -1},
        {"2023-02-29 8:00", -1},
        {"2024-01-01", -1},
        {"8:30 pm", -1},
        {"-8:30", -1},
        {"99999999999:00", -1},
    };
    for (auto [text, second] : starts)
        EXPECT_EQ(startOf(text).value_or(planDay - 1), planDay + second) << text;
}

} // namespace torvane
