// What the kept records of an analysed file add up to, for the session and the lap under way.
// Each operation takes one field of one record into both; those of motion, cadence and power also give the number that
// is written into the record.
#pragma once

#include "fit/running_set.h"
#include "gps/gps_record.h"

namespace torvane {

struct AnalysedSums {
    RunningSet session;
    RunningSet lap;
    bool afterGap;             // the record in front of this one was dropped, or there is none
    uint32_t writtenDistance;  // 1/100 m, of the last kept record
    uint32_t writtenTimestamp; // FIT seconds, of the last kept record
};

uint32_t sumCadence(AnalysedSums& sums, const GpsRecord& record);  // rpm
uint32_t sumSpeed(AnalysedSums& sums, const GpsRecord& record);    // mm/s
uint32_t sumPower(AnalysedSums& sums, const GpsRecord& record);    // W
uint32_t sumDistance(AnalysedSums& sums, const GpsRecord& record); // 1/100 m; the way across a gap does not count

void sumTimestamp(AnalysedSums& sums, uint32_t timestamp); // the time across a gap does not count either
void sumLatitude(AnalysedSums& sums, int32_t latitude);
void sumLongitude(AnalysedSums& sums, int32_t longitude);
void sumAltitude(AnalysedSums& sums, uint16_t altitude);
void sumHeartRate(AnalysedSums& sums, uint8_t heartRate);
void sumTemperature(AnalysedSums& sums, int8_t temperature);
void sumCalories(AnalysedSums& sums, uint16_t calories);
void sumCycles(AnalysedSums& sums, uint8_t cycles);
void sumAccuracy(AnalysedSums& sums, uint8_t metres);

// Behind all fields of a kept record.
void countRecord(AnalysedSums& sums, const GpsRecord& record);

} // namespace torvane
