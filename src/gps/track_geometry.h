// Distance and direction between two places on a round earth. Degrees in, metres or degrees out. Pure arithmetic.
#pragma once

#include "core/units.h" // metresPerDegree: of the sphere of these distances

#include <cmath>
#include <span>

namespace torvane {

// A place with what the courses take of it, for those who ask for many steps of one track. Radians.
struct EarthPlace {
    double north, east;
    double sine, cosine; // of north
};
EarthPlace earthPlaceOf(double latitude, double longitude);

// Metres along the great circle, by the haversine formula on a sphere of 12,742 km diameter.
double greatCircleDistance(double latitude1, double longitude1, double latitude2, double longitude2);

// Initial course from the first place to the second, 0 (north) to 360 degrees clockwise.
double bearing(double latitude1, double longitude1, double latitude2, double longitude2);

// The courses from each place to the next; there is one place more than courses. Faster than to ask one by one.
void bearingsAlong(std::span<const EarthPlace> places, std::span<double> courses);

// An angle in degrees as fmod(angle, 360) tells it, which is exact: within two turns that is a difference.
inline double withinTurn(double angle)
{
    if (angle >= 0.0 && angle < 720.0)
        return angle < 360.0 ? angle : angle - 360.0;
    return std::fmod(angle, 360.0);
}

} // namespace torvane
