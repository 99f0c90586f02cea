// The track: one row per record message, and what a loaded ride allows to be done with it.
#pragma once

#include "fit/fit_passes.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace torvane {

// As filled from the file, then smoothed, then predicted.
struct GpsRecord {
    uint32_t sector;              // 0 excluded; else number of the sector it belongs to
    uint32_t timestamp;           // s since the FIT epoch
    double latitude;              // deg
    double longitude;             // deg
    double altitude;              // m
    double heading;               // deg, 0 to 360
    double inclination;           // %
    double distance;              // m from the start
    double speed;                 // m/s
    double acceleration;          // m/s2
    double temperature;           // Cel
    double heartRate;             // bpm
    double cadence;               // rpm
    double power;                 // W
    double brakeForce;            // kgf
    double frontBrakeTemperature; // Cel
    double rearBrakeTemperature;  // Cel
    double frontFriction;         // J
    double rearFriction;          // J
    double frontRadiate;          // J
    double rearRadiate;           // J
    double frontStored;           // J
    double rearStored;            // J
};
static_assert(sizeof(GpsRecord) == 22 * 8);

using GpsRecords = std::vector<GpsRecord>;

// FIT's units of position and altitude.
constexpr double degreesOf(int32_t semicircles)
{
    return semicircles * 180.0 / 2147483648.0;
}
constexpr double metresOf(uint16_t altitude)
{
    return altitude / 5.0 - 500.0;
}

// Which fields the record messages define, and which of their summary values are there. A byte stays 0 when the field
// is not defined.
struct FieldPresence {
    uint8_t isActivity;       // 1: file type 4
    uint8_t hasRecords;       // 1: a record definition; without one all that follows is 0
    uint8_t timestampFlags;   // bit 0 defined, bit 4 total elapsed time
    uint8_t positionFlags;    // bits 0 to 2 latitude defined, first, last; bits 4 to 6 longitude alike
    uint8_t altitudeFlags;    // bit 0 defined, 1 average, 2 maximum
    uint8_t motionFlags;      // bits 0, 1 distance defined, total; bits 4 to 6 speed defined, average, maximum
    uint8_t temperatureFlags; // bit 0 defined, 1 average
    uint8_t heartRateFlags;   // bit 0 defined, 1 average, 2 maximum
    uint8_t cadenceFlags;     // bit 0 defined, 1 average, 2 maximum, 4 fractional cadence defined
    uint8_t powerFlags;       // bit 0 defined, 1 average, 2 maximum, 3 normalized
    uint8_t accuracyFlags;    // bit 0 defined, 1 average
};

enum AnalysisReadiness : uint32_t {
    readyForAnalysis = 0,
    analysisImpossible = 1,
    nothingToPredict = 2, // cadence and power are already in the file
};

extern FieldPresence fieldPresence;
extern std::atomic<AnalysisReadiness> analysisReadiness; // the menu reads it while a load may run

// The analysed copies of the blocks: made after a prediction, with the statistics rebuilt from the kept records.
extern FitInventory analysedInventory;
extern FitSummary analysedSummary;

} // namespace torvane
