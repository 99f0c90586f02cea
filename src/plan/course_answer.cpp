#include "plan/course_answer.h"

#include "core/text.h"
#include "gps/climbs.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double shortParts = 1000, longParts = 5000; // m
constexpr double mostInShortParts = 100000;           // m

struct Span {
    double from, to; // m
};

// Sums of a part while the steps go by.
struct PartSums {
    double work = 0, turns = 0, pedalSeconds = 0;
    std::vector<double> gearSeconds;
};

// When a place is reached, where the step that ends at `end` leads over it.
double timeWithin(const CourseStep& begin, const CourseStep& end, double distance)
{
    double metres = end.distance - begin.distance;
    double share = metres > 0 ? std::clamp((distance - begin.distance) / metres, 0.0, 1.0) : 1;
    return begin.time + share * (end.time - begin.time);
}

void addStep(CoursePart& part, PartSums& sums, const CourseStep& step, double seconds)
{
    if (step.going == Going::standing || seconds <= 0)
        return;
    part.seconds += seconds;
    part.topSpeed = std::max(part.topSpeed, step.speed);
    sums.work += step.power * seconds;
    part.walkSeconds += step.going == Going::walking ? seconds : 0;
    for (size_t wheel = 0; wheel < 2; ++wheel)
        part.hottest[wheel] = std::max(part.hottest[wheel], step.brakeTemperature[wheel]);
    if (step.going != Going::pedalling || step.cadence <= 0)
        return;
    sums.turns += step.cadence * seconds;
    sums.pedalSeconds += seconds;
    sums.gearSeconds[static_cast<size_t>(step.gear)] += seconds;
}

void finish(CoursePart& part, const PartSums& sums)
{
    if (part.seconds > 0)
        part.power = sums.work / part.seconds;
    if (sums.pedalSeconds <= 0)
        return;
    part.cadence = sums.turns / sums.pedalSeconds;
    part.gear = static_cast<int>(std::ranges::max_element(sums.gearSeconds) - sums.gearSeconds.begin());
}

CoursePart partOf(const AnsweredCourse& answered, const Span& span)
{
    const std::vector<CourseStep>& steps = answered.planned.ride.steps;
    CoursePart part = {.from = span.from, .to = span.to};
    PartSums sums = {.gearSeconds = std::vector<double>(gearTableCapacity)};
    part.height = heightAt(answered.course, span.to) - heightAt(answered.course, span.from);
    auto first = std::ranges::upper_bound(steps, span.from, {}, &CourseStep::distance);
    for (auto step = std::max(first, steps.begin() + 1); step < steps.end(); ++step) {
        const CourseStep& before = *std::prev(step);
        if (before.distance >= span.to)
            break;
        double begin = timeWithin(before, *step, span.from), end = timeWithin(before, *step, span.to);
        addStep(part, sums, *step, end - begin);
        part.clock = end;
    }
    finish(part, sums);
    return part;
}

std::vector<CoursePart> partsOf(const AnsweredCourse& answered, const std::vector<Span>& spans)
{
    std::vector<CoursePart> parts;
    parts.reserve(spans.size());
    for (const Span& span : spans)
        parts.push_back(partOf(answered, span));
    return parts;
}

std::vector<Span> evenSpans(double length, double each)
{
    constexpr double leastRest = 1; // m, goes to the part before
    std::vector<Span> spans;
    for (double from = 0; from + leastRest < length; from += each)
        spans.push_back({from, std::min(from + each, length)});
    if (!spans.empty())
        spans.back().to = length;
    return spans;
}

// Climbs of the road, or those of the road turned upside down: its descents.
std::vector<Span> slopesOf(const Course& course, double sign)
{
    std::vector<RiddenRow> rows(course.points.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        rows[i].distance = course.points[i].distance;
        rows[i].height = sign * course.points[i].height;
    }
    std::vector<Span> spans;
    for (const Climb& climb : findClimbs(rows))
        spans.push_back({rows[climb.foot].distance, rows[climb.top].distance});
    return spans;
}

// With the power to hold, whatever is coasted within; where all is, there is none to hold.
std::vector<CoursePart> stretchesOf(const AnsweredCourse& answered)
{
    std::vector<CoursePart> parts;
    parts.reserve(answered.planned.stretches.size());
    for (const Stretch& stretch : answered.planned.stretches) {
        parts.push_back(partOf(answered, {stretch.from, stretch.to}));
        if (parts.back().gear >= 0)
            parts.back().power = stretch.power;
    }
    return parts;
}

void tellParts(AnsweredCourse& answered)
{
    CourseAnswer& answer = answered.answer;
    const Course& course = answered.course;
    answer.partLength = course.length > mostInShortParts ? longParts : shortParts;
    answer.parts = partsOf(answered, evenSpans(course.length, answer.partLength));
    answer.climbs = partsOf(answered, slopesOf(course, 1));
    answer.descents = partsOf(answered, slopesOf(course, -1));
    answer.stretches = stretchesOf(answered);
}

void tellLoad(const Model& model, AnsweredCourse& answered)
{
    CourseAnswer& answer = answered.answer;
    const CourseRide& ride = answered.planned.ride;
    double ftp = model.state.ftp;
    if (ftp > 0) {
        answer.intensity = ride.normalisedPower / ftp;
        double saddleSeconds = ride.movingSeconds - ride.walkSeconds; // as normalised power counts them
        answer.stress = saddleSeconds / 3600 * answer.intensity * answer.intensity * 100;
    }
    if (answered.planned.even.movingSeconds > 0)
        answer.gain = answered.planned.even.movingSeconds - ride.movingSeconds;
}

} // namespace

StatusCode answerCourse(const Model& model, const ParameterBlock& settings, const std::string& path,
                        const PlanEntries& entries, AnsweredCourse& answered, Progress* progress)
{
    const PlanOptions& options = entries.options;
    if (StatusCode code = loadCourse(path, options, answered.course, progress))
        return code;
    if (StatusCode code = planCourse(model, settings, answered.course, options, answered.planned, progress))
        return code;
    if (!entries.start.empty())
        answered.answer.start = startOf(entries.start);
    tellLoad(model, answered);
    tellParts(answered);
    answered.answer.whatIf = whatIfs(model, settings, answered.course, options, answered.planned);
    return fitOk;
}

} // namespace torvane
