#include "gps/track_geometry.h"

#include "model/constants.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double earthDiameter = 12742000.0; // m

double radians(double degrees)
{
    return degrees * pi / 180;
}

double square(double value)
{
    return value * value;
}

struct Turn {
    double sine, cosine;
};

// Steps of a track are small angles, for which a few terms of the series are all that a double holds: within this limit
// they round as the library does.
constexpr double smallAngle = 1e-4; // 640 m on the equator

Turn smallTurnOf(double angle)
{
    double squared = angle * angle;
    return {angle - angle * (squared * (1.0 / 6 - squared * (1.0 / 120))),
            1.0 - squared * (0.5 - squared * (1.0 / 24))};
}

Turn turnOf(double angle)
{
    if (!(std::fabs(angle) < smallAngle))
        return {std::sin(angle), std::cos(angle)};
    return smallTurnOf(angle);
}

// In the plane that touches the first place, up to a factor.
struct Way {
    double east, north;
};

Way wayBetween(const EarthPlace& from, const EarthPlace& to, const Turn& east)
{
    return {east.sine * to.cosine, to.sine * from.cosine - from.sine * to.cosine * east.cosine};
}

// Places of one step more than there are ways.
void waysBetween(const EarthPlace* places, Way* ways, size_t count)
{
    bool allSmall = true;
    for (size_t i = 0; i < count; ++i)
        allSmall &= std::fabs(places[i + 1].east - places[i].east) < smallAngle;
    if (allSmall)
        for (size_t i = 0; i < count; ++i)
            ways[i] = wayBetween(places[i], places[i + 1], smallTurnOf(places[i + 1].east - places[i].east));
    else
        for (size_t i = 0; i < count; ++i)
            ways[i] = wayBetween(places[i], places[i + 1], turnOf(places[i + 1].east - places[i].east));
}

// 0 to 360 degrees of an angle of half a turn to either side, as withinTurn tells it; or no number.
double courseOf(double angle)
{
    double degrees = angle * 180 / pi + 360.0;
    return degrees < 360.0 ? degrees : degrees - 360.0;
}

} // namespace

double greatCircleDistance(double latitude1, double longitude1, double latitude2, double longitude2)
{
    double f1 = radians(latitude1), f2 = radians(latitude2);
    double l1 = radians(longitude1), l2 = radians(longitude2);
    double haversine = square(std::sin((f2 - f1) / 2)) + std::cos(f2) * std::cos(f1) * square(std::sin((l2 - l1) / 2));
    return earthDiameter * std::asin(std::sqrt(haversine));
}

EarthPlace earthPlaceOf(double latitude, double longitude)
{
    double north = radians(latitude);
    return {north, radians(longitude), std::sin(north), std::cos(north)};
}

// A loop for each kind of work: so short, the processor has several of their rounds under way, and those without calls
// take two steps at a time.
void bearingsAlong(std::span<const EarthPlace> places, std::span<double> courses)
{
    constexpr size_t room = 256;
    Way ways[room];
    for (size_t first = 0; first < courses.size(); first += room) {
        size_t count = std::min(room, courses.size() - first);
        waysBetween(&places[first], ways, count);
        double* own = &courses[first];
        for (size_t i = 0; i < count; ++i)
            own[i] = std::atan2(ways[i].east, ways[i].north);
        for (size_t i = 0; i < count; ++i)
            own[i] = courseOf(own[i]);
    }
}

double bearing(double latitude1, double longitude1, double latitude2, double longitude2)
{
    const EarthPlace places[] = {earthPlaceOf(latitude1, longitude1), earthPlaceOf(latitude2, longitude2)};
    double course = 0;
    bearingsAlong(places, {&course, 1});
    return course;
}

} // namespace torvane
