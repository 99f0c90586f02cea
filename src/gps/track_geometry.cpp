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
Turn turnOf(double angle)
{
    constexpr double smallAngle = 1e-4; // 640 m on the equator
    if (!(std::fabs(angle) < smallAngle))
        return {std::sin(angle), std::cos(angle)};
    double squared = angle * angle;
    return {angle - angle * (squared * (1.0 / 6 - squared * (1.0 / 120))),
            1.0 - squared * (0.5 - squared * (1.0 / 24))};
}

// In the plane that touches the first place, up to a factor.
struct Way {
    double east, north;
};

Way wayBetween(const EarthPlace& from, const EarthPlace& to)
{
    Turn east = turnOf(to.east - from.east);
    return {east.sine * to.cosine, to.sine * from.cosine - from.sine * to.cosine * east.cosine};
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

// A loop for each kind of work: so short, the processor has several of their rounds under way.
void bearingsAlong(std::span<const EarthPlace> places, std::span<double> courses)
{
    constexpr size_t room = 256;
    Way ways[room];
    for (size_t first = 0; first < courses.size(); first += room) {
        size_t count = std::min(room, courses.size() - first);
        for (size_t i = 0; i < count; ++i)
            ways[i] = wayBetween(places[first + i], places[first + i + 1]);
        for (size_t i = 0; i < count; ++i)
            courses[first + i] = withinTurn(std::atan2(ways[i].east, ways[i].north) * 180 / pi + 360.0);
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
