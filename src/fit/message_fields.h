// Fields of data messages: the numbers that walks look for, and where a field lies in a payload.
// Tables that cover whole messages (sessions and laps, added messages, the field dump) hold their numbers themselves.
#pragma once

#include "fit/fit_walk.h"

#include <optional>

namespace torvane {

constexpr uint8_t timestampField = 253; // of every message that has one

enum FileIdFieldNumber : uint8_t {
    fileIdType = 0,
    fileIdManufacturer = 1,
    fileIdTimeCreated = 4,
};

enum RecordFieldNumber : uint8_t {
    recordLatitude = 0,
    recordLongitude = 1,
    recordAltitude = 2,
    recordHeartRate = 3,
    recordCadence = 4,
    recordDistance = 5,
    recordSpeed = 6,
    recordPower = 7,
    recordTemperature = 13,
    recordCycles = 18,
    recordTotalCycles = 19,
    recordAccuracy = 31,
    recordCalories = 33,
    recordFractionalCadence = 52,
    recordTimestamp = timestampField,
};

// Of sessions and laps alike.
enum SummaryFieldNumber : uint8_t {
    summaryStartTime = 2,
    summaryTotalTimer = 8,
};
constexpr uint8_t sessionSport = 5;
constexpr uint8_t lapSport = 25;

enum ActivityFieldNumber : uint8_t {
    activityTotalTimer = 0,
    activitySessionCount = 1,
    activityLocalTimestamp = 5,
};

// Offset in the payload of the first or the last of the fields with this number; none without one.
std::optional<size_t> firstFieldOffset(const FitMessage& message, uint8_t number);
std::optional<size_t> lastFieldOffset(const FitMessage& message, uint8_t number);

// The last field of this number as a number of this width, whatever size it declares; none without one.
std::optional<uint8_t> lastUint8(const FitMessage& message, uint8_t number);
std::optional<uint32_t> lastUint32(const FitMessage& message, uint8_t number);

// Type of a file_id message: its first field of that number, a repeated one is not looked at. None without one.
std::optional<uint8_t> fileTypeOf(const FitMessage& message);

} // namespace torvane
