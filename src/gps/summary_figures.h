// What sessions and laps of an analysed file say of a prepared ride, by the FIT profile: worked out of the rows alone,
// over what is there, as wide as it comes.
#pragma once

#include "fit/fit_walk.h"
#include "gps/gps_record.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace torvane {

enum SummaryFigure : uint8_t {
    figureEnd,
    figureStart,
    figureStartLatitude,
    figureStartLongitude,
    figureEndLatitude,
    figureEndLongitude,
    figureElapsed, // ms
    figureTimer,   // ms, over steps of a second
    figureDistance,
    figureAvgSpeed,
    figureMaxSpeed,
    figureAvgHeartRate,
    figureMaxHeartRate,
    figureMinHeartRate,
    figureAvgCadence, // while pedalling
    figureMaxCadence,
    figureAvgPower, // with the seconds of coasting
    figureMaxPower,
    figureNormalisedPower, // fourth root of the mean fourth power of means over 30 s
    figureWork,            // J
    figureAvgAltitude,
    figureMaxAltitude,
    figureMinAltitude,
    figureAvgTemperature,
    figureMaxTemperature,
    summaryFigureCount
};

// As a field stores them; none where no row knows.
using SummaryFigures = std::array<std::optional<int64_t>, summaryFigureCount>;

// Of the rows that are kept. `fields`: which of power, cadence, heart rate ... the records have, by RecordFieldNumber.
using RecordFields = std::array<bool, 256>;
SummaryFigures summaryFigures(std::span<const GpsRecord> rows, const RecordFields& fields);

// The figure that a field of a session or lap holds; none for the fields that stay as the device wrote them.
std::optional<SummaryFigure> figureOfField(uint16_t message, uint8_t number);

// Fields of motion, cadence and power that a session's or lap's definition lacks, as far as the records have them.
std::vector<FieldDefinition> lackingSummaryFields(const LocalDefinition& definition, const RecordFields& fields);

// Puts a figure into a field of any size: its "invalid" marker where there is none.
void writeFigure(std::span<uint8_t> field, uint8_t baseType, std::optional<int64_t> figure, bool bigEndian);

} // namespace torvane
