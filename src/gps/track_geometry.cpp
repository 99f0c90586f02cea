#include "gps/track_geometry.h"

#include "model/constants.h"

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

double bearing(const EarthPlace& from, const EarthPlace& to)
{
    Turn east = turnOf(to.east - from.east);
    double y = east.sine * to.cosine;
    double x = to.sine * from.cosine - from.sine * to.cosine * east.cosine;
    return withinTurn(std::atan2(y, x) * 180 / pi + 360.0);
}

double bearing(double latitude1, double longitude1, double latitude2, double longitude2)
{
    return bearing(earthPlaceOf(latitude1, longitude1), earthPlaceOf(latitude2, longitude2));
}

} // namespace torvane
