// What a load leaves behind: all that is known of a ride before it is analysed.
#pragma once

#include "fit/fit_image.h"
#include "fit/fit_passes.h"

#include <cstdint>
#include <string>

namespace torvane {

// Which fields the record messages define, and which of their summary values are there. A byte stays 0 when the field
// is not defined.
struct FieldPresence {
    uint8_t isActivity = 0;       // 1: file type 4
    uint8_t hasRecords = 0;       // 1: a record definition; without one all that follows is 0
    uint8_t timestampFlags = 0;   // bit 0 defined, bit 4 total elapsed time
    uint8_t positionFlags = 0;    // bits 0 to 2 latitude defined, first, last; bits 4 to 6 longitude alike
    uint8_t altitudeFlags = 0;    // bit 0 defined, 1 average, 2 maximum
    uint8_t motionFlags = 0;      // bits 0, 1 distance defined, total; bits 4 to 6 speed defined, average, maximum
    uint8_t temperatureFlags = 0; // bit 0 defined, 1 average
    uint8_t heartRateFlags = 0;   // bit 0 defined, 1 average, 2 maximum
    uint8_t cadenceFlags = 0;     // bit 0 defined, 1 average, 2 maximum, 4 fractional cadence defined
    uint8_t powerFlags = 0;       // bit 0 defined, 1 average, 2 maximum, 3 normalized
    uint8_t accuracyFlags = 0;    // bit 0 defined, 1 average
};

enum AnalysisReadiness : uint32_t {
    readyForAnalysis = 0,
    analysisImpossible = 1,
    nothingToPredict = 2, // cadence and power are already in the file
};

struct LoadedRide {
    FitImage image = {};   // without its data where the file is read anew by whoever needs it
    std::string path = {}; // of the file, UTF-8; empty for none
    FitInventory inventory = {};
    FitSummary summary = {};
    FieldPresence presence = {};
    AnalysisReadiness readiness = readyForAnalysis;
};

} // namespace torvane
