// What the preparing tool found in a file and did about it, as counts. Each step of the tool adds its own; the report
// tells them.
#pragma once

#include "gps/ride_fields.h"

#include <array>
#include <bitset>
#include <cstdint>

namespace torvane {

struct FieldFindings {
    bool defined = false; // by some record definition
    bool written = false; // in the prepared records
    bool derived = false; // no record had it; worked out of other fields
    uint32_t read = 0;    // records that held a value
    uint32_t bridged = 0; // records that held none and got one by its neighbours
    uint32_t settled = 0; // records that held none over more than a few seconds: held, or from the distance
    uint32_t missing = 0; // records that held none and have none in the prepared file either
};

// Of the file, in front of all that is done to its records.
struct SourceFindings {
    uint32_t parts = 1;       // FIT files one behind the other
    bool cut = false;         // it ends in the middle of what its header claims, or of a message
    bool neverClosed = false; // its header claims nothing, or less than is there
    bool crcWrong = false;
    size_t bytesLost = 0; // behind the last message that could be read
    // Of GPX and TCX
    size_t pointsWithoutTime = 0; // or with a time before 1990, where FIT begins to count
    size_t timesUnreadable = 0;
    size_t timesWithoutZone = 0; // taken as UTC
    size_t legsOfOtherSports = 0;
    size_t emptySegments = 0;
};

struct PrepareFindings {
    SourceFindings source;
    // Records
    uint32_t recordsRead = 0;
    uint32_t recordsWritten = 0;
    uint32_t withoutTimestamp = 0;
    uint32_t equalTimestamps = 0;
    uint32_t backwardTimestamps = 0;
    uint32_t leapingTimestamps = 0;    // ahead of what follows, which is more
    uint32_t recordsOfOtherSports = 0; // outside the sessions of the sport asked for
    uint32_t compressedTimestamps = 0; // of all messages
    uint32_t recordsFilled = 0;        // new ones, within steps
    uint32_t stepsFilled = 0;
    uint32_t stepsPaused = 0; // of more than a second, left open: the timer stood
    uint32_t stepsLong = 0;   // left open: longer than the limit
    // Positions
    uint32_t positionsOff = 0;   // dropped: beyond reach of their neighbours
    uint32_t positionShifts = 0; // places where the track goes on elsewhere
    // Motion
    uint32_t distanceFalls = 0;   // places where the distance falls back or starts again
    uint32_t distancesHeld = 0;   // records whose distance stood while the ride went on, given their share of the leap
    bool distanceStill = false;   // never moves, though speed or positions do: worked out of them
    bool distanceBySpeed = false; // where it was worked out
    bool speedStill = false;      // never moves, though distance or positions do
    // Fields
    std::array<FieldFindings, rideFieldCount> fields;
    uint32_t enhancedValues = 0;    // of records
    std::bitset<256> fieldsLeftOut; // of records, by number: none that the analysis knows
    bool developerFieldsLeftOut = false;
    bool powerDropped = false;
    bool cadenceDropped = false;
    // Other messages
    uint32_t recordDefinitions = 0;
    uint32_t definitions = 0;
    uint32_t definitionsWritten = 0;
    uint32_t messagesPassed = 0;
    uint32_t messagesUndefined = 0; // dropped: of a local type without definition
    uint32_t summaryEnhanced = 0;   // values of sessions and laps
    uint32_t summaryEmpty = 0;      // fields of sessions, laps and activities without a value
    uint32_t summaryMeasured = 0;   // values that went with a dropped field
    uint32_t summariesMoved = 0;    // sessions and laps that did not stand behind their records
    uint32_t summariesOfOtherSports = 0;
    bool summariesMade = false; // session, lap and activity of a file that has none
    // The ride as prepared, and as the device summed it up
    uint32_t seconds = 0;     // within steps of one second
    uint64_t centimetres = 0; // over the same steps
    double deviceSpeed = 0;   // mm/s, mean of the sessions by their timers; 0 unknown
};

} // namespace torvane
