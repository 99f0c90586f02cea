#include "plan/course_shape.h"

#include "gps/track_geometry.h"
#include "model/constants.h"
#include "plan/series.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double noisySmoothing = 200; // m
constexpr double gradeSpan = 60;       // m, over which grades are held against each other
// %, rms between one such span and the next. Roads change by 1 to 2 where they are hilly; what is more is noise.
constexpr double mostGradeChange = 3;
constexpr double bendSmoothing = 30; // m

CoursePoint pointBetween(const TrackPlace& from, const TrackPlace& to, double distance)
{
    double way = to.distance - from.distance;
    double part = way > 0 ? (distance - from.distance) / way : 0;
    CoursePoint point;
    point.distance = distance;
    point.rawHeight = between(from.height, to.height, part);
    double turn = std::remainder(to.longitude - from.longitude, 360);
    point.latitude = between(from.latitude, to.latitude, part);
    point.longitude = from.longitude + turn * part;
    return point;
}

// Value of the straight line that fits the first `count` values best, `before` places in front of them.
double lineInFront(std::span<const double> values, size_t count, size_t before)
{
    double middle = static_cast<double>(count - 1) / 2, sum = 0, moment = 0, inertia = 0;
    for (size_t i = 0; i < count; ++i) {
        double lever = static_cast<double>(i) - middle;
        sum += values[i];
        moment += lever * values[i];
        inertia += lever * lever;
    }
    return sum / static_cast<double>(count) - moment / inertia * (middle + static_cast<double>(before));
}

// With `more` values in front, on the line through those of the road's first part.
std::vector<double> startedEarlier(const std::vector<double>& values, size_t more)
{
    size_t count = std::min(values.size(), 3 * more + 1);
    std::vector<double> longer;
    longer.reserve(values.size() + more);
    for (size_t before = more; before > 0; --before)
        longer.push_back(lineInFront(values, count, before));
    longer.insert(longer.end(), values.begin(), values.end());
    return longer;
}

// Steps on either side of a mean.
size_t halfOf(double length, double step)
{
    return static_cast<size_t>(std::lround(length / step / 4));
}

// Two means in a row, which together reach over the length. Both ends of the road are led on straight, so that the
// first and the last value are smoothed as the others are, and a slope stays one.
std::vector<double> smoothed(const std::vector<double>& values, double length, double step)
{
    size_t half = halfOf(length, step);
    if (half == 0)
        return values;
    size_t more = 2 * half;
    std::vector<double> longer = startedEarlier(values, more);
    std::ranges::reverse(longer);
    longer = startedEarlier(longer, more);
    std::ranges::reverse(longer);
    std::vector<double> means = centredMeans(centredMeans(longer, half), half);
    auto first = means.begin() + static_cast<std::ptrdiff_t>(more);
    return {first, first + static_cast<std::ptrdiff_t>(values.size())};
}

// m, of each rise of it.
double climbedOf(const std::vector<double>& heights)
{
    double climbed = 0;
    for (size_t i = 1; i < heights.size(); ++i)
        climbed += std::max(0.0, heights[i] - heights[i - 1]);
    return climbed;
}

// m, rms of how far heights a span apart lie off the line through their neighbours.
double bentOver(const std::vector<double>& heights, double metres, double step)
{
    size_t span = std::max<size_t>(1, static_cast<size_t>(std::lround(metres / step)));
    double squares = 0;
    size_t count = 0;
    for (size_t i = 2 * span; i < heights.size(); ++i, ++count) {
        double bent = heights[i] - 2 * heights[i - span] + heights[i - 2 * span];
        squares += bent * bent;
    }
    return count == 0 ? 0 : std::sqrt(squares / static_cast<double>(count));
}

bool isRough(const std::vector<double>& heights, double step)
{
    return bentOver(heights, gradeSpan, step) > mostGradeChange / 100 * gradeSpan;
}

// m, of fourth differences of heights a span apart, which leave a few metres of hills of 2 km and more, and of noise 4
// to 8 times as much as it has: rms, or a deviation by their median where that is less, as on a road of few sharp
// bends.
double unevenOver(const std::vector<double>& heights, double metres, double step)
{
    size_t span = std::max<size_t>(1, static_cast<size_t>(std::lround(metres / step)));
    std::vector<double> uneven;
    double squares = 0;
    for (size_t i = 4 * span; i < heights.size(); ++i) {
        double middle = heights[i - 2 * span], near = heights[i - span] + heights[i - 3 * span];
        uneven.push_back(std::fabs(heights[i] + heights[i - 4 * span] - 4 * near + 6 * middle));
        squares += uneven.back() * uneven.back();
    }
    if (uneven.empty())
        return 0;
    constexpr double normalMedian = 0.6745;
    auto median = uneven.begin() + static_cast<std::ptrdiff_t>(uneven.size() / 2);
    std::ranges::nth_element(uneven, median);
    return std::min(std::sqrt(squares / static_cast<double>(uneven.size())), *median / normalMedian);
}

// Hills bend twice as much over twice the way, or nearly; what the weather or a map does to the heights does not. Among
// hills of a few km that only shows where these are taken off.
bool wavers(const std::vector<double>& heights, double step)
{
    constexpr double span = 300, much = 5, hills = 1.85, mostUneven = 19, leastLength = 2000; // m, m, ratio, m, m
    if (static_cast<double>(heights.size()) * step <= leastLength)
        return false;
    double bent = bentOver(heights, span, step);
    bool isNoHill = bent > much && bentOver(heights, 2 * span, step) < hills * bent;
    return isNoHill || unevenOver(heights, span, step) > mostUneven;
}

void setSlopes(Course& course)
{
    std::vector<CoursePoint>& points = course.points;
    for (size_t i = 0; i + 1 < points.size(); ++i)
        points[i].slope =
            100 * (points[i + 1].height - points[i].height) / (points[i + 1].distance - points[i].distance);
    points.back().slope = points[points.size() - 2].slope;
}

std::vector<double> column(const Course& course, double CoursePoint::*member)
{
    std::vector<double> values;
    values.reserve(course.points.size());
    for (const CoursePoint& point : course.points)
        values.push_back(point.*member);
    return values;
}

// deg, from one place a few points before to one a few behind.
double headingAt(const std::vector<double>& latitudes, const std::vector<double>& longitudes, size_t from, size_t to)
{
    return bearing(latitudes[from], longitudes[from], latitudes[to], longitudes[to]);
}

// Longitudes that do not jump where the earth's date does.
void unwrap(std::vector<double>& longitudes)
{
    for (size_t i = 1; i < longitudes.size(); ++i)
        longitudes[i] = longitudes[i - 1] + std::remainder(longitudes[i] - longitudes[i - 1], 360);
}

// Where the road goes on elsewhere is no bend.
void straightenGaps(Course& course)
{
    for (const CourseGap& gap : course.findings.gaps)
        for (CoursePoint& point : course.points)
            if (std::fabs(point.distance - gap.distance) <= bendSmoothing + course.step)
                point.bend = 0;
}

// The last step is shorter than the others: it is led on to a whole one as the road has climbed over the last such way,
// and cut again, or its slope would be that of a step.
std::vector<double> smoothedAlong(const Course& course, std::vector<double> heights, double length)
{
    size_t last = heights.size() - 1;
    double share = (course.points[last].distance - course.points[last - 1].distance) / course.step;
    if (last < 2 || share >= 1 || halfOf(length, course.step) == 0)
        return smoothed(heights, length, course.step);
    double before = between(heights[last - 2], heights[last - 1], share);
    heights[last] += (heights[last] - before) * (1 - share);
    heights = smoothed(heights, length, course.step);
    heights[last] = between(heights[last - 1], heights[last], share);
    return heights;
}

} // namespace

void stepAlong(std::span<const TrackPlace> places, Course& course)
{
    course.length = places.back().distance;
    course.points.clear();
    size_t next = 1;
    auto add = [&](double distance) {
        while (next + 1 < places.size() && places[next].distance < distance)
            ++next;
        course.points.push_back(pointBetween(places[next - 1], places[next], distance));
    };
    constexpr double leastStep = 0.5; // m, of the last
    for (size_t i = 0; static_cast<double>(i) * course.step < course.length - leastStep; ++i)
        add(static_cast<double>(i) * course.step);
    add(course.length);
}

void shapeHeights(Course& course, double smoothing)
{
    std::vector<double> raw = column(course, &CoursePoint::rawHeight);
    std::vector<double> heights = smoothedAlong(course, raw, smoothing);
    CourseFindings& findings = course.findings;
    findings.smoothing = smoothing;
    findings.smoothedMore = smoothing < noisySmoothing && isRough(heights, course.step);
    if (findings.smoothedMore) {
        findings.smoothing = noisySmoothing;
        heights = smoothedAlong(course, raw, noisySmoothing);
    }
    findings.noisy = isRough(heights, course.step) || wavers(heights, course.step);
    findings.climbedRaw = climbedOf(raw);
    findings.climbed = climbedOf(heights);
    for (size_t i = 0; i < heights.size(); ++i)
        course.points[i].height = heights[i];
    setSlopes(course);
}

void shapeBends(Course& course)
{
    if (!course.findings.hasPlaces)
        return;
    std::vector<CoursePoint>& points = course.points;
    size_t half = std::max<size_t>(1, static_cast<size_t>(std::lround(bendSmoothing / course.step / 2)));
    std::vector<double> longitudes = column(course, &CoursePoint::longitude);
    unwrap(longitudes);
    longitudes = centredMeans(longitudes, half);
    std::vector<double> latitudes = centredMeans(column(course, &CoursePoint::latitude), half);
    size_t last = points.size() - 1;
    for (size_t i = 0; i <= last; ++i) {
        size_t from = i < half ? 0 : i - half, to = std::min(last, i + half);
        points[i].heading = headingAt(latitudes, longitudes, from, to);
        double turn =
            std::remainder(headingAt(latitudes, longitudes, i, to) - headingAt(latitudes, longitudes, from, i), 360);
        bool within = from < i && i < to;
        points[i].bend = within ? std::fabs(turn) * pi / 180 / ((points[to].distance - points[from].distance) / 2) : 0;
    }
    straightenGaps(course);
}

} // namespace torvane
