// What the FIT tools ask of a file before they touch it: its type, its span of time, how many summaries it holds and
// which record fields. One walk over the messages; keeps no message.
#pragma once

#include "fit/fit_walk.h"

#include <array>
#include <cstdint>
#include <string>

namespace torvane {

// One path of a FIT tool, and what the survey found behind it.
struct SourceFileInfo {
    std::string path;               // full path, empty when unused; what follows is the survey's
    uint8_t fileType = 0;           // of file_id
    uint32_t startTimestamp = 0;    // FIT seconds, of the first record message
    uint32_t endTimestamp = 0;      // FIT seconds, of the last record message
    uint32_t recordInterval = 3600; // s, smallest step between records
    uint32_t activityTimer = 0;     // ms, total timer of the activity message
    int32_t sessionCount = 0;
    int32_t lapCount = 0;
    int32_t recordDefinitionCount = 0;
    int32_t activityCount = 0;
    uint32_t fieldsPresent = 0; // union of FieldBit over all record definitions
    // As the file ends: the message of each local type, file_id of an undefined one, and a bit for each defined one.
    std::array<uint16_t, localTypeCount> messagesAtEnd = {};
    uint32_t localTypesDefined = 0;
    bool inUse = false; // takes part in a combination
};

// Record fields whose presence two files must share to be combined.
enum FieldBit : uint32_t {
    fieldTimestamp = 0x01,
    fieldLatitude = 0x02,
    fieldLongitude = 0x04,
    fieldAltitude = 0x08,
    fieldDistance = 0x10,
    fieldSpeed = 0x20,
    fieldTemperature = 0x40,
    fieldCadence = 0x80,
    fieldPower = 0x100,
};

// Forgets all but the path.
void clearSurvey(SourceFileInfo& info);

// Fills info from a loaded image; starts from nothing at each call. A file with one record ends when it starts.
// 0, or fitInvalid when the walk does not end on
// the data size.
StatusCode surveyFitMessages(const FitImage& image, SourceFileInfo& info);

// Loads the file of info.path, surveys it and frees the data; the header stays in image.
// 0; 1 when there is no readable FIT header; else the code of the read or of the survey.
StatusCode surveyFitFile(FitImage& image, SourceFileInfo& info);

} // namespace torvane
