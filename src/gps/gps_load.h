// From a FIT file to the ride and the rows that the analysis works on. Shows nothing.
#pragma once

#include "gps/gps_record.h"
#include "gps/loaded_ride.h"

namespace torvane {

// Fills in the ride from its image: inventory and summary by the three passes, with the coherence check behind the
// first, then presence and readiness. 0, fitInvalid, fitTooLarge or a coherence code; the ride is not whole then.
StatusCode gatherActivity(LoadedRide& ride);

// Whether a file can be treated as one ride: its sessions (without any, its laps) are of one sport, and its record
// definitions define the same of the fields that matter. 0, or fitSessionSportsDiffer or fitLapSportsDiffer, with
// fitRecordFieldsDiffer. The definitions are compared by the OR of their field numbers below 8, 13 and 253, so
// different sets with the same OR pass.
StatusCode checkCoherence(const FitInventory& inventory, const RecordDefinitions& recordDefinitions);

// Sets the presence from inventory and summary.
void setFieldPresence(LoadedRide& ride);

// Sets the readiness from the presence.
void setReadiness(LoadedRide& ride);

// Fills the rows from the record messages of an image, raw values as the file has them; zero-filled rows are expected.
// A file that is not the one counted any more: record messages beyond the array are walked over, rows that got none are
// cut off. 0 or fitInvalid.
StatusCode fillRecords(const FitImage& image, GpsRecords& records);

// Cadences and powers that a prepared file marks as missing become no number; others take the marker for one.
void forgetMarkers(GpsRecords& records);

} // namespace torvane
