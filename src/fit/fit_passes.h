// What a FIT file says about itself: the three passes that count its messages, decode its sessions and laps, and fold
// these into one summary. The records themselves are decoded by gps/gps_load.h.
// Values are taken as they stand: "invalid" markers count as numbers.
#pragma once

#include "fit/fit_walk.h"

#include <cstdint>
#include <vector>

namespace torvane {

// What the file holds.
struct FitInventory {
    uint8_t fileType; // file_id, see fileTypeName
    uint32_t definitionCount;
    uint32_t normalDataCount; // data messages with a normal header
    uint32_t compressedTimestampCount;
    uint32_t recordDefinitionCount; // definitions of message 20
    uint32_t sessionCount;
    uint32_t lapCount;
    uint32_t recordCount;
    uint32_t activityCount;
    std::vector<uint8_t> sessionSport; // of each session, in file order
    std::vector<uint8_t> lapSport;
    // Field numbers of the record definition that the lowest local type with one has as the file ends.
    std::vector<uint8_t> recordFields;
};

// One decoded session or lap, values as stored in the file.
struct SessionLapEntry {
    int32_t recordCount; // records in front of it, behind the one before
    uint8_t sport;
    uint32_t timestamp;       // FIT seconds
    uint32_t startTime;       // FIT seconds
    uint32_t totalElapsed;    // ms
    uint32_t totalTimer;      // ms
    uint32_t totalMovingTime; // ms
    int32_t startLatitude;    // semicircles
    int32_t startLongitude;
    int32_t endLatitude; // laps only
    int32_t endLongitude;
    uint16_t avgAltitude; // (m + 500) x 5
    uint16_t maxAltitude;
    uint16_t minAltitude;
    uint32_t totalCycles;      // a lap's calories land here as well
    uint16_t totalCalories;    // kcal, sessions only
    uint16_t totalFatCalories; // kcal
    uint32_t totalDistance;    // 1/100 m
    uint16_t avgSpeed;         // mm/s
    uint16_t maxSpeed;
    uint8_t avgHeartRate; // bpm
    uint8_t maxHeartRate;
    uint8_t minHeartRate;
    uint8_t avgCadence; // rpm
    uint8_t maxCadence;
    uint16_t avgPower; // W
    uint16_t maxPower;
    uint16_t normalizedPower;
    int8_t avgTemperature; // Cel
    int8_t maxTemperature;
    uint8_t gpsAccuracy; // m
};

// Takes a value into a maximum.
template <class Value>
void raise(Value& maximum, Value value)
{
    if (value > maximum)
        maximum = value;
}

// The file as a whole.
struct FitSummary {
    // First pass
    uint32_t recordInterval; // s, smallest step between records; 3600 without any
    // Second pass
    uint16_t sessionTotal; // entries decoded
    uint16_t lapTotal;
    // First pass
    int32_t startTimestamp; // FIT seconds of the first record; to be read as unsigned
    int32_t endTimestamp;   // of the last record, 0 with less than two
    // Third pass; totalTimer also from the activity message
    uint32_t totalElapsed; // ms
    uint32_t totalTimer;
    uint32_t totalMovingTime;
    // First pass
    int32_t firstLatitude; // semicircles, of the first record
    int32_t firstLongitude;
    int32_t lastLatitude;
    int32_t lastLongitude;
    // Third pass
    uint16_t avgAltitude; // (m + 500) x 5
    uint16_t maxAltitude;
    uint16_t minAltitude;
    uint32_t totalCycles;
    uint16_t totalCalories; // kcal
    uint16_t totalFatCalories;
    uint32_t totalDistance; // 1/100 m
    uint16_t avgSpeed;      // mm/s
    uint16_t maxSpeed;
    uint8_t avgHeartRate; // bpm
    uint8_t maxHeartRate;
    uint8_t minHeartRate;
    uint8_t avgCadence; // rpm
    uint8_t maxCadence;
    uint16_t avgPower; // W
    uint16_t maxPower;
    uint16_t normalizedPower; // not filled
    int8_t avgTemperature;    // Cel
    int8_t maxTemperature;
    uint8_t gpsAccuracy; // m
    // Zero after a load; of an analysed ride
    double avgBrakeForce; // kgf
    double maxBrakeForce;
    double avgFrontBrake; // Cel
    double avgRearBrake;
    double maxFrontBrake;
    double maxRearBrake;
};

// The fields of each definition of message 20, in file order.
using RecordDefinitions = std::vector<std::vector<FieldDefinition>>;

// What the passes make of a file, in their order; empty before the first.
struct FitContents {
    FitInventory inventory = {};
    FitSummary summary = {};
};

// First pass: counts, sports, record definitions, times and positions of the first and last record. 0 or fitInvalid.
StatusCode scanFitMessages(const FitImage& image, FitContents& contents, RecordDefinitions& recordDefinitions);

// Second pass: file type, activity timer, and the sessions and laps, of which the arrays hold one more than the first
// pass has counted: the records behind the last one count there. 0 or fitInvalid.
StatusCode extractFitMessages(const FitImage& image, FitContents& contents, std::vector<SessionLapEntry>& sessions,
                              std::vector<SessionLapEntry>& laps);

// Third pass: folds the sessions, or without any the laps, into the summary and their sports into the inventory. Means
// are weighted by the records of each entry and stay 0 in a file without records.
void summariseFitMessages(FitContents& contents, const std::vector<SessionLapEntry>& sessions,
                          const std::vector<SessionLapEntry>& laps);

} // namespace torvane
