// The track: one row per record message.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace torvane {

// As filled from the file, then smoothed, then predicted.
struct GpsRecord {
    uint32_t sector;     // 0 excluded; else number of the sector it belongs to
    uint32_t timestamp;  // s since the FIT epoch
    double latitude;     // deg
    double longitude;    // deg
    double altitude;     // m
    double heading;      // deg, 0 to 360
    double inclination;  // %
    double distance;     // m from the start
    double speed;        // m/s
    double acceleration; // m/s2
    double temperature;  // Cel
    double heartRate;    // bpm
    double cadence;      // rpm
    double power;        // W
};
static_assert(sizeof(GpsRecord) == 13 * 8); // a ride of millions of them is held at once

// What a row tells of the brakes, where they are followed.
struct BrakeRecord {
    double force;            // kgf
    double frontTemperature; // Cel
    double rearTemperature;  // Cel
    double frontFriction;    // J
    double rearFriction;     // J
    double frontRadiate;     // J
    double rearRadiate;      // J
    double frontStored;      // J
    double rearStored;       // J
};

using GpsRecords = std::vector<GpsRecord>;
using BrakeRecords = std::vector<BrakeRecord>; // one for each row, or none

// FIT's units of position and altitude.
constexpr double degreesOf(int32_t semicircles)
{
    return semicircles * 180.0 / 2147483648.0;
}
constexpr double metresOf(uint16_t altitude)
{
    return altitude / 5.0 - 500.0;
}

} // namespace torvane
