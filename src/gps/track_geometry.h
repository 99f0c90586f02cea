// Distance and direction between two places on a round earth. Degrees in, metres or degrees out. Pure arithmetic.
#pragma once

namespace torvane {

constexpr double metresPerDegree = 111194.92664455873; // of latitude, on the sphere of these distances

// Metres along the great circle, by the haversine formula on a sphere of 12,742 km diameter.
double greatCircleDistance(double latitude1, double longitude1, double latitude2, double longitude2);

// Initial course from the first place to the second, 0 (north) to 360 degrees clockwise.
double bearing(double latitude1, double longitude1, double latitude2, double longitude2);

} // namespace torvane
