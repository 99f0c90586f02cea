// The fields of a record that a ride is made of: where a device writes each, how it is stored, and what becomes of a
// value that is missing. The one table of the preparing tool.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace torvane {

// In the order in which they stand in a prepared record, behind its timestamp.
enum RideField : uint8_t {
    rideLatitude,
    rideLongitude,
    rideDistance,
    rideAltitude,
    rideSpeed,
    rideHeartRate,
    rideCadence,
    ridePower,
    rideTemperature,
    rideAccuracy,
    rideCalories,
    rideFieldCount
};

// A value that records lack between two that have it.
enum class Bridge : uint8_t {
    linear, // changes evenly with time, however long it takes
    motion, // evenly over a few seconds, else from the distance
    hold,   // evenly over a few seconds, else the last one stands
    none,   // evenly over a few seconds, else it stays missing: nobody knows what was done
};
constexpr uint32_t shortBridge = 10; // s, the few seconds

constexpr uint8_t noEnhanced = 255;

struct RideFieldRow {
    const char* name;
    uint8_t number;   // of the record message
    uint8_t enhanced; // the wider field that current devices write instead, in the same unit
    uint8_t width;    // bytes, as written
    uint8_t baseType; // as written
    int32_t least;    // as stored; what is beyond is no value
    int32_t most;
    Bridge bridge;

    constexpr bool isSigned() const
    {
        return least < 0;
    }
    // Stored where a value is missing.
    constexpr int32_t marker() const
    {
        return most + 1;
    }
};

constexpr int32_t quarterTurn = 0x4000'0000; // 90 degrees in semicircles

constexpr std::array<RideFieldRow, rideFieldCount> rideFields = {{
    {"latitude", 0, noEnhanced, 4, 0x85, -quarterTurn, quarterTurn, Bridge::linear},
    {"longitude", 1, noEnhanced, 4, 0x85, INT32_MIN, INT32_MAX - 1, Bridge::linear},
    {"distance", 5, noEnhanced, 4, 0x86, 0, INT32_MAX - 1, Bridge::linear}, // 1/100 m
    {"altitude", 2, 78, 2, 0x84, 0, 65534, Bridge::linear},                 // (m + 500) x 5
    {"speed", 6, 73, 2, 0x84, 0, 65534, Bridge::motion},                    // mm/s
    {"heart rate", 3, noEnhanced, 1, 0x02, 0, 254, Bridge::hold},
    {"cadence", 4, noEnhanced, 1, 0x02, 0, 254, Bridge::none},
    {"power", 7, noEnhanced, 2, 0x84, 0, 65534, Bridge::none},
    {"temperature", 13, noEnhanced, 1, 0x01, -128, 126, Bridge::hold},
    {"GPS accuracy", 31, noEnhanced, 1, 0x02, 0, 254, Bridge::hold},
    {"calories", 33, noEnhanced, 2, 0x84, 0, 65534, Bridge::linear},
}};

} // namespace torvane
