// From a FIT file to the blocks, flags and rows that the analysis works on. Shows nothing.
// The track is not kept between commands: each reads the file again and fills a fresh array.
#pragma once

#include "gps/gps_record.h"

#include <string>

namespace torvane {

// Path of the loaded activity file; UTF-8.
extern std::string fitInputFileName;

// Fills fitInventory and fitSummary from an image by the three passes, with the coherence check behind the first.
// 0, fitInvalid, fitTooLarge or a coherence code.
StatusCode gatherActivity(const FitImage& image);

// Whether a file can be treated as one ride: its sessions (without any, its laps) are of one sport, and its record
// definitions define the same of the fields that matter. 0, or fitSessionSportsDiffer or fitLapSportsDiffer, with
// fitRecordFieldsDiffer. The definitions are compared by the OR of their field numbers below 8, 13 and 253, so
// different sets with the same OR pass.
StatusCode checkCoherence(const RecordDefinitions& recordDefinitions);

// Sets fieldPresence from the blocks and the lowest slot that holds a definition of records after the walks.
void setFieldPresence();

// Sets analysisReadiness from fieldPresence.
void setReadiness();

// Fills the rows from the record messages of an image, raw values as the file has them; zero-filled rows are expected.
// A file that is not the one counted any more: record messages beyond the array are walked over, rows that got none are
// cut off. 0 or fitInvalid.
StatusCode fillRecords(const FitImage& image, GpsRecords& records);

} // namespace torvane
