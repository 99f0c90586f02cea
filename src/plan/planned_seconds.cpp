#include "plan/planned_seconds.h"

#include "core/text.h"
#include "plan/course_answer.h"
#include "plan/series.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace torvane {

namespace {

struct Flowed {
    double work = 0;       // J
    PowerSplit split = {}; // J
    double ridden = 0;     // s
};

// What flowed up to a time since the start, while the steps go by.
class Flow {
public:
    explicit Flow(const std::vector<CourseStep>& ridden) : steps(ridden) {}

    // Since the time asked for before; leaves `next` at the step that leads over this time.
    Flowed until(double time)
    {
        Flowed flowed;
        for (; next + 1 < steps.size() && steps[next].time <= time; ++next)
            add(flowed, steps[next].time);
        add(flowed, std::min(time, steps[next].time));
        return flowed;
    }

    // As the ride is at the time that was asked for last.
    PlannedSecond now(const Course& course) const
    {
        const CourseStep &from = steps[next - 1], &to = steps[next];
        double span = to.time - from.time;
        double share = span > 0 ? std::clamp((done - from.time) / span, 0.0, 1.0) : 1;
        PlannedSecond second;
        second.distance = between(from.distance, to.distance, share);
        second.altitude = heightAt(course, second.distance);
        second.speed = to.going == Going::standing && share > 0 ? 0 : between(from.speed, to.speed, share);
        second.cadence = share > 0 ? to.cadence : from.cadence; // none at the start and where a stop ends
        second.frontBrake = between(from.brakeTemperature[0], to.brakeTemperature[0], share);
        second.rearBrake = between(from.brakeTemperature[1], to.brakeTemperature[1], share);
        return second;
    }

private:
    void add(Flowed& flowed, double end)
    {
        double seconds = std::max(0.0, end - done);
        flowed.work += seconds * steps[next].power;
        if (steps[next].going != Going::standing && steps[next].going != Going::walking)
            flowed.ridden += seconds;
        for (size_t sink = 0; sink < powerSinkCount; ++sink)
            flowed.split[sink] += seconds * steps[next].split[sink];
        done = std::max(done, end);
    }

    const std::vector<CourseStep>& steps;
    size_t next = 1; // step that leads on
    double done = 0; // s
};

void place(PlannedSecond& second, const Course& course)
{
    size_t at = pointAt(course, second.distance);
    const CoursePoint& from = course.points[at];
    const CoursePoint& to = course.points[std::min(at + 1, course.points.size() - 1)];
    double metres = to.distance - from.distance;
    double share = metres > 0 ? std::clamp((second.distance - from.distance) / metres, 0.0, 1.0) : 0;
    double east = to.longitude - from.longitude;
    if (std::fabs(east) > 180) // across the date line
        east -= std::copysign(360, east);
    second.latitude = between(from.latitude, to.latitude, share);
    second.longitude = std::remainder(from.longitude + share * east, 360);
}

std::string kilometres(double metres)
{
    return formatText("%.1f km", metres / 1000);
}

} // namespace

const PlannedSecond& secondAt(const PlannedFile& planned, double distance)
{
    auto found = std::ranges::lower_bound(planned.seconds, distance, {}, &PlannedSecond::distance);
    return found == planned.seconds.end() ? planned.seconds.back() : *found;
}

std::vector<PlannedSecond> secondsOf(const Course& course, const CourseRide& ride)
{
    std::vector<PlannedSecond> seconds;
    if (ride.steps.size() < 2)
        return seconds;
    double end = ride.steps.back().time;
    auto last = static_cast<uint32_t>(std::ceil(end));
    seconds.reserve(last + size_t{1});
    Flow flow(ride.steps);
    for (uint32_t time = 0; time <= last; ++time) {
        Flowed flowed = flow.until(time);
        PlannedSecond second = flow.now(course);
        second.time = time;
        double lasted = time == 0 ? 1 : std::min<double>(time, end) - (time - 1);
        second.power = flowed.work / lasted;
        second.ridden = flowed.ridden;
        for (size_t sink = 0; sink < powerSinkCount; ++sink)
            second.split[sink] = flowed.split[sink] / lasted;
        place(second, course);
        seconds.push_back(second);
    }
    return seconds;
}

PlannedFile plannedFile(const AnsweredCourse& answered, std::vector<PlannedSecond> seconds, const std::string& name)
{
    PlannedFile file = {.name = name, .start = answered.answer.start.value_or(planDay), .seconds = std::move(seconds)};
    int number = 0;
    for (const CoursePart& climb : answered.answer.climbs) {
        ++number;
        std::string text = formatText("%d: %s %.1f%%", number, kilometres(climb.metres()).c_str(), climb.slope());
        file.marks.push_back({MarkKind::foot, climb.from, "Climb " + text});
        file.marks.push_back({MarkKind::summit, climb.to, formatText("Top of climb %d", number)});
    }
    for (const CoursePart& stretch : answered.answer.stretches)
        file.marks.push_back({MarkKind::stretch, stretch.from,
                              formatText("%.0f W, %s", stretch.power, kilometres(stretch.metres()).c_str())});
    std::ranges::stable_sort(file.marks, {}, &CourseMark::distance);
    return file;
}

} // namespace torvane
