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

} // namespace

double greatCircleDistance(double latitude1, double longitude1, double latitude2, double longitude2)
{
    double f1 = radians(latitude1), f2 = radians(latitude2);
    double l1 = radians(longitude1), l2 = radians(longitude2);
    double haversine = square(std::sin((f2 - f1) / 2)) + std::cos(f2) * std::cos(f1) * square(std::sin((l2 - l1) / 2));
    return earthDiameter * std::asin(std::sqrt(haversine));
}

double bearing(double latitude1, double longitude1, double latitude2, double longitude2)
{
    double f1 = radians(latitude1), f2 = radians(latitude2);
    double dl = radians(longitude2) - radians(longitude1);
    double y = std::sin(dl) * std::cos(f2);
    double x = std::sin(f2) * std::cos(f1) - std::sin(f1) * std::cos(f2) * std::cos(dl);
    return std::fmod(std::atan2(y, x) * 180 / pi + 360.0, 360.0);
}

} // namespace torvane
