// The rows of an analysed ride that were ridden, as the figures of an answer want them: how long and how far each step
// was, at what height, with what power and cadence, predicted and measured.
#pragma once

#include "gps/analysis.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <span>
#include <vector>

namespace torvane {

// Where a power or a cadence comes from.
enum FigureSource : uint8_t { predictedFigure, measuredFigure, figureSourceCount };

constexpr double noFigure = std::numeric_limits<double>::quiet_NaN();

// A record that was kept, with the step that led to it. A step without time begins a new stretch.
struct RiddenRow {
    uint32_t timestamp = 0; // FIT seconds, end of the step
    uint32_t seconds = 0;
    double metres = 0;
    double distance = 0; // m since the start; slow steps count, pauses do not
    double height = 0;   // m above the start; what lies across a stop counts as far as a road could lead there
    double speed = 0;    // m/s
    std::array<double, figureSourceCount> power = {noFigure, noFigure};   // W; no number where there is none
    std::array<double, figureSourceCount> cadence = {noFigure, noFigure}; // rpm
};

// What a meter gave at a second, as FIT stores it: a long ride has one for each record.
struct MeasuredRow {
    static constexpr uint16_t noPower = UINT16_MAX;
    static constexpr uint8_t noCadence = UINT8_MAX;

    uint32_t timestamp; // FIT seconds
    uint16_t watts = noPower;
    uint8_t turns = noCadence; // a minute

    double power() const
    {
        return watts == noPower ? noFigure : watts;
    }
    double cadence() const
    {
        return turns == noCadence ? noFigure : turns;
    }
};
static_assert(sizeof(MeasuredRow) == 8);

// What was measured of a ride: rows beside its records, rising by time, or the records' own figures.
struct Measured {
    std::vector<MeasuredRow> rows = {};
    FigureSource ofPowers = predictedFigure, ofCadences = predictedFigure; // of the records'
};

// What rows are told from; outlives them.
struct RiddenSource {
    std::span<const GpsRecord> records;
    uint32_t interval; // s, of a step that was ridden through
    const Measured& measured;
};

// On the way from row to row.
class RiddenWalk {
public:
    RiddenWalk() = default;
    explicit RiddenWalk(const RiddenSource& from) : source(&from) {}
    bool next(); // false behind the last row
    const RiddenRow& row() const
    {
        return now;
    }

private:
    void takeRow(const GpsRecord& record);
    void takeMeasured();

    const RiddenSource* source = nullptr;
    const GpsRecord* last = nullptr;     // that was kept
    size_t ahead = 0, measuredAhead = 0; // what is looked at next
    double distance = 0, sinceKept = 0;  // m
    RiddenRow now = {};
};

// The rows of an analysis, told anew whenever they are asked for: a table of them would take most of the memory that
// the records take. Any row is found in a few steps.
class RiddenTrack {
public:
    RiddenTrack(const Analysis& analysis, const Measured& measured); // which outlive it
    RiddenTrack(const RiddenTrack&) = delete;                        // its walks look at its source
    RiddenTrack& operator=(const RiddenTrack&) = delete;
    size_t size() const
    {
        return count;
    }
    RiddenWalk at(size_t row) const;

private:
    RiddenSource source;
    std::vector<RiddenWalk> marks = {}; // each so many rows
    size_t count = 0;
};

// Rows of a table, or of a track that tells them; neither is held.
class RiddenRows {
public:
    class Iterator {
    public:
        const RiddenRow& operator*() const
        {
            return table ? *table : walk.row();
        }
        const RiddenRow* operator->() const
        {
            return &**this;
        }
        Iterator& operator++()
        {
            --left;
            if (table)
                ++table;
            else if (left != 0)
                walk.next();
            return *this;
        }
        bool operator==(std::default_sentinel_t) const
        {
            return left == 0;
        }

    private:
        friend class RiddenRows;
        const RiddenRow* table = nullptr;
        RiddenWalk walk = {};
        size_t left = 0;
    };

    RiddenRows() = default;
    RiddenRows(std::span<const RiddenRow> rows) : table(rows.data()), count(rows.size()) {}
    RiddenRows(const std::vector<RiddenRow>& rows) : RiddenRows(std::span(rows)) {}
    RiddenRows(const RiddenTrack& rows) : track(&rows), count(rows.size()) {}
    size_t size() const
    {
        return count;
    }
    bool empty() const
    {
        return count == 0;
    }
    RiddenRow operator[](size_t row) const
    {
        return *subspan(row, 1).begin();
    }
    RiddenRow front() const
    {
        return (*this)[0];
    }
    RiddenRow back() const
    {
        return (*this)[count - 1];
    }
    RiddenRows subspan(size_t row, size_t rows) const;
    Iterator begin() const;
    std::default_sentinel_t end() const
    {
        return {};
    }

private:
    const RiddenRow* table = nullptr;
    const RiddenTrack* track = nullptr;
    size_t first = 0, count = 0;
};

// As a table.
std::vector<RiddenRow> riddenRowsOf(const Analysis& analysis, const Measured& measured);

uint32_t secondsOf(RiddenRows rows);

} // namespace torvane
