// The texts of recorded rides and FIT tools: status lines, the summary of a file, the table of its records.
// All built from the blocks and rows; nothing is stored.
#pragma once

#include "core/parameter_block.h"
#include "core/progress.h"
#include "core/screens.h"
#include "gps/gps_record.h"
#include "gps/loaded_ride.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace torvane {

enum FitReportMode : int {
    reportLoaded = 0,
    reportExpressed = 1, // the source's own values, without the records under the threshold speed
    reportAnalysed = 2,
};

// Words of a code into the lower pane and the status line, with the bare name of the path. A code without words
// changes nothing. Returns the code.
StatusCode reportStatus(Screens& screens, std::string_view path, StatusCode statusCode);

// An answer whose file could not be written: it stays in the lower pane, with a sentence about the file below it.
// fitSaveFailed.
StatusCode reportUnsaved(Screens& screens, const std::string& sentence);

// "07:05:09", UTC, of a FIT timestamp.
std::string formatTimeOfDay(uint32_t timestamp);
void appendTimeOfDay(std::string& text, uint32_t timestamp);
// "03,Jan,2015,Sat,07:05:09", UTC.
std::string formatDateTime(uint32_t timestamp);

struct CalendarDate {
    int32_t year;
    int32_t month; // 1 to 12
    int32_t day;
    int32_t weekday; // 0 Sunday
};
CalendarDate julianToCalendar(int32_t julianDay);

// The sport line of the summary, ended by a line feed.
std::string sportsText(const FitInventory& inventory, const FitSummary& summary);
void reportSports(Screens& screens, const FitInventory& inventory, const FitSummary& summary);

// What the reports of a ride tell of.
struct ReportedRide {
    std::string_view path;
    FitReportMode mode;
    const FitInventory& inventory; // of the load, or of the analysis
    const FitSummary& summary;
    const FieldPresence& presence;
    const ParameterBlock& settings;
    uint32_t analysisFlags = 0; // bit 0: outliers were rejected and the track smoothed
    // As the device has summed them up, whatever an analysis makes of the records.
    std::span<const SessionLapEntry> sessions = {}, laps = {};
    std::span<const BrakeRecord> brakes = {}; // of the records, where they are followed

    BrakeRecord brakesOf(size_t record) const
    {
        return record < brakes.size() ? brakes[record] : BrakeRecord{};
    }
};

// Clears the lower pane and writes the summary.
void reportSummary(Screens& screens, const ReportedRide& ride);

// Bits of `predicted` below.
constexpr uint32_t predictedCadence = 0x10;
constexpr uint32_t predictedPower = 0x20;

// The table of all rows in a sector, piece by piece.
void tellFields(const ReportedRide& ride, const GpsRecords& records, uint32_t predicted, const TakeText& take,
                Progress* progress = nullptr);
// Appends it.
void reportFields(Screens& screens, const ReportedRide& ride, const GpsRecords& records, uint32_t predicted,
                  Progress* progress = nullptr);

} // namespace torvane
