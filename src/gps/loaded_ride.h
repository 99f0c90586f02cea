// What a load leaves behind: all that is known of a ride before it is analysed.
#pragma once

#include "fit/fit_image.h"
#include "fit/fit_passes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace torvane {

// What a set of presence flags says of a field, or of the first of two fields.
enum PresenceFlag : uint8_t {
    absentFromRecords = 0,
    presentInRecords = 0x01,
    presentAverage = 0x02,
    presentMaximum = 0x04,
    presentNormalized = 0x08,
    presentTotal = presentAverage,
    presentFirst = presentAverage,
    presentLast = presentMaximum,
};

constexpr uint8_t presentWithBoth = presentInRecords | presentAverage | presentMaximum; // or first and last

// A second field has the high half of the set, and the same flags there.
constexpr int secondField = 4;
constexpr uint8_t presentFirstField = 0x0F;
constexpr uint8_t secondInRecords = presentInRecords << secondField;
constexpr uint8_t eitherInRecords = presentInRecords | secondInRecords;

// Which fields the record messages define, and which of their summary values are there. A byte stays 0 when the field
// is not defined.
struct FieldPresence {
    uint8_t isActivity = 0;       // 1: file type 4
    uint8_t hasRecords = 0;       // 1: a record definition; without one all that follows is 0
    uint8_t timestampFlags = 0;   // and, as a second field, the total elapsed time
    uint8_t positionFlags = 0;    // latitude: first, last; longitude alike
    uint8_t altitudeFlags = 0;    // average, maximum
    uint8_t motionFlags = 0;      // distance: total; speed: average, maximum
    uint8_t temperatureFlags = 0; // average
    uint8_t heartRateFlags = 0;   // average, maximum
    uint8_t cadenceFlags = 0;     // average, maximum; fractional cadence
    uint8_t powerFlags = 0;       // average, maximum, normalized
    uint8_t accuracyFlags = 0;    // average
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
    std::vector<SessionLapEntry> sessions = {}, laps = {}; // in file order, as the device has summed them up
    AnalysisReadiness readiness = readyForAnalysis;
    // Of a ride without a file of its own, whose path is a name alone: what its commands take instead. Shared, since
    // whoever asks about a ride has a copy of it.
    std::shared_ptr<const FitImage> inMemory = {};
    bool prepared = false;      // the image was prepared on the way, and is written by the FIT profile
    bool measuredSpeed = false; // of nearly all records, and none was put between them
    bool marksMissing = false;  // by the preparing tool, perhaps long ago: markers are missing values
};

} // namespace torvane
