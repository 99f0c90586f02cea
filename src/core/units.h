// Units that users and files have against those of the computations.
#pragma once

namespace torvane {

constexpr double kphPerMps = 3.6;
constexpr double metresPerDegree = 111194.92664455873; // of latitude, on a sphere of 12,742 km diameter

} // namespace torvane
