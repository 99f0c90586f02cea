#include "gps/smoothing.h"

#include "gps/track_geometry.h"
#include "gps/trimmed_means.h"
#include "model/constants.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>

namespace torvane {

namespace {

constexpr ExtremesStart positionStart = {360.0, -360.0};
constexpr ExtremesStart headingStart = {1000.0, 0.0};
constexpr ExtremesStart stepStart = {1000.0, 0.0};
constexpr ExtremesStart speedStart = {1000.0, 0.0};
constexpr ExtremesStart cadenceStart = {1000.0, 0.0};
constexpr ExtremesStart powerStart = {10000.0, 0.0};

constexpr double realCorner = 90.0; // deg within one window

// How many rows up to one, itself included, are of its sector without a break.
class RunsOfSector {
public:
    explicit RunsOfSector(std::span<const GpsRecord> ofRecords) : records(ofRecords) {}

    // Whether the window around a row lies inside the track and in one sector. Asked row by row.
    bool isWhole(size_t row, size_t half)
    {
        for (; next < records.size() && next <= row + half; ++next)
            length = next > 0 && records[next].sector == records[next - 1].sector ? length + 1 : 1;
        return row + half < records.size() && length > 2 * half;
    }

private:
    std::span<const GpsRecord> records;
    size_t next = 0, length = 0;
};

// What is made of one window.
struct WindowMean {
    double smallest, largest;
    bool known;
    double mean; // trimmed, where known
};

WindowMean meanOfWindow(const Gathered& gathered)
{
    bool known = gathered.meanKnown();
    return {gathered.smallest, gathered.largest, known, known ? gathered.trimmedMean() : 0};
}

// The same of a block of rows whose windows are whole.
struct WholeMeans {
    double smallest[rowsOfBlock], largest[rowsOfBlock], means[rowsOfBlock];

    template <size_t width>
    void take(const double* around, size_t rows, ExtremesStart start)
    {
        gatherWhole<width>(around, rows, start, [this](size_t i, double sum, double least, double most) {
            smallest[i] = least;
            largest[i] = most;
            means[i] = (sum - (least + most)) / static_cast<double>(width - 2);
        });
    }
    WindowMean operator[](size_t i) const
    {
        return {smallest[i], largest[i], true, means[i]};
    }
};

// A pass that calls take(row, mean, values) with what the row's window holds of its own sector.
template <class Take>
class SectorMeans {
public:
    SectorMeans(std::span<const GpsRecord> ofRecords, RecordField ofField, int window, ExtremesStart fromStart,
                Take takes)
        : records(ofRecords), field(ofField), half(halfOf(window)), start(fromStart), take(takes),
          values(records.size(), half), runs(records)
    {
    }
    size_t operator()(size_t ready)
    {
        done = takeBlocks(done, rowsBehind(ready, half, records.size()),
                          [this](size_t first, size_t end) { takeBlock(first, end); });
        return done;
    }

private:
    void takeBlock(size_t first, size_t end)
    {
        WholeMeans means;
        values.moveTo(first, end, [&](size_t row) { return records[row].*field; });
        WholeRows whole(first, end, half, records.size());
        bool known = whole.count() > 0 && withWidthOf(half, [&](auto width) {
                         means.take<width>(values.at(whole.first - half), whole.count(), start);
                     });
        for (size_t row = first; row < end; ++row)
            take(row, known && runs.isWhole(row, half) ? means[row - whole.first] : meanOfWindow(ownOf(row)), values);
    }
    Gathered ownOf(size_t row) const
    {
        Gathered gathered(start);
        Reach reach = reachOf(row, half, records.size());
        for (size_t k = reach.first; k < reach.end; ++k)
            if (records[k].sector == records[row].sector)
                gathered.add(values[k]);
        return gathered;
    }

    std::span<const GpsRecord> records;
    RecordField field;
    size_t half;
    ExtremesStart start;
    Take take;
    ValuesAround values;
    RunsOfSector runs;
    size_t done = 0;
};

// The headings around row i in its sector, turned by an offset so that north need not lie between them.
Gathered gatherHeadings(std::span<const GpsRecord> records, const ValuesAround& headings, size_t i, Reach reach,
                        double offset)
{
    Gathered gathered(headingStart);
    for (size_t k = reach.first; k < reach.end; ++k)
        if (records[k].sector == records[i].sector)
            gathered.add(withinTurn(headings[k] + offset));
    return gathered;
}

// Mean of a window's headings from there; the heading stays at a corner.
void takeHeading(GpsRecord& record, const WindowMean& window, double offset)
{
    if (window.largest - window.smallest <= realCorner && window.known)
        record.heading = withinTurn((360.0 - offset) + window.mean);
}

double meanOf(double sum, size_t count)
{
    return sum / static_cast<double>(count);
}

// Mean steps between positions in m: below the first five samples, below the second three.
constexpr double smallSteps = 5.0, mediumSteps = 7.0;

double meanStep(std::span<const GpsRecord> records)
{
    double sum = 0;
    for (size_t i = 1; i < records.size(); ++i)
        sum += greatCircleDistance(records[i - 1].latitude, records[i - 1].longitude, records[i].latitude,
                                   records[i].longitude);
    return meanOf(sum, records.size() - 1);
}

bool isNear(double mean, double limit)
{
    constexpr double roughness = 1e-3;
    return std::fabs(mean - limit) < roughness * limit;
}

// The same within a thousandth, where it is sure on which side of both limits it lies: on a flat piece of the earth the
// size of a step of up to 600 m, with the parallel's length of a place at most 64 m away. None where steps are longer,
// the pole is near, or it takes a better look.
std::optional<double> roughMeanStep(std::span<const GpsRecord> records)
{
    constexpr double furthestNorth = 80, longestStep = 0.005, oldestPlace = 0.0006; // deg
    double sum = 0, place = 1000, parallel = 1;
    bool fits = std::fabs(records[0].latitude) < furthestNorth;
    for (size_t i = 1; i < records.size() && fits; ++i) {
        double north = records[i].latitude - records[i - 1].latitude;
        double east = records[i].longitude - records[i - 1].longitude;
        fits = std::fabs(north) < longestStep && std::fabs(east) < longestStep &&
               std::fabs(records[i].latitude) < furthestNorth;
        if (!(std::fabs(records[i].latitude - place) < oldestPlace)) {
            place = records[i].latitude;
            parallel = std::cos(place * pi / 180);
        }
        east *= parallel;
        sum += std::sqrt(north * north + east * east);
    }
    double mean = meanOf(sum, records.size() - 1) * metresPerDegree;
    bool sure = fits && !isNear(mean, smallSteps) && !isNear(mean, mediumSteps);
    return sure ? std::optional(mean) : std::nullopt;
}

} // namespace

int chooseWindow(std::span<const GpsRecord> records)
{
    double sum = 0;
    size_t count = 0;
    for (size_t i = 1; i < records.size(); ++i) {
        double step = records[i].distance - records[i - 1].distance;
        if (step >= 1.0) {
            sum += step;
            count++;
        }
    }
    double mean = meanOf(sum, count); // no number without a step
    if (mean < 3.0)
        return 7;
    if (mean < 5.0)
        return 5;
    return mean < 9.0 ? 3 : 1;
}

int choosePositionWindow(std::span<const GpsRecord> records)
{
    if (records.size() < 2)
        return 0;
    std::optional<double> rough = roughMeanStep(records);
    double mean = rough ? *rough : meanStep(records);
    if (mean < smallSteps)
        return 5;
    return mean < mediumSteps ? 3 : 0;
}

void averageInto(std::span<GpsRecord> records, RecordField field, const std::function<double(size_t row)>& valueOf,
                 int window)
{
    size_t half = halfOf(window), asked = 0;
    std::vector<double> around(std::bit_ceil(2 * half + 1)); // values within reach, over and over
    size_t mask = around.size() - 1;
    for (size_t i = 0; i < records.size(); ++i) {
        Reach reach = reachOf(i, half, records.size());
        for (; asked < reach.end; ++asked)
            around[asked & mask] = valueOf(asked);
        double sum = 0;
        int count = 0;
        for (size_t k = reach.first; k < reach.end; ++k) {
            double value = around[k & mask];
            if (!std::isnan(value)) {
                sum += value;
                ++count;
            }
        }
        records[i].*field = count == 0 ? 0 : sum / count;
    }
}

void runPasses(size_t rows, const std::vector<TrackPass>& passes, const Progress* progress)
{
    for (size_t ahead = 0; ahead < rows;) {
        lookForStop(progress);
        ahead = std::min(ahead + rowsOfBlock, rows);
        size_t ready = ahead;
        for (const TrackPass& pass : passes)
            ready = pass(ready);
    }
}

TrackPass smoothField(std::span<GpsRecord> records, RecordField field, int window, ExtremesStart start)
{
    auto read = [=](size_t row) { return records[row].*field; };
    auto take = [=](size_t row, double, bool known, double mean) {
        if (known)
            records[row].*field = mean;
    };
    return TrimmedMeans(records.size(), window, start, read, take);
}

void averageField(std::span<GpsRecord> records, RecordField field, int window)
{
    averageInto(
        records, field, [&](size_t row) { return records[row].*field; }, window);
}

TrackPass smoothPosition(std::span<GpsRecord> records, RecordField field, int window)
{
    auto take = [=](size_t row, const WindowMean& around, const ValuesAround&) {
        if (around.known)
            records[row].*field = around.mean;
    };
    return SectorMeans(records, field, window, positionStart, take);
}

TrackPass smoothHeading(std::span<GpsRecord> records, int window)
{
    size_t half = halfOf(window);
    auto take = [=](size_t row, const WindowMean& all, const ValuesAround& headings) {
        // Headings of one turn are what they are without a look at each.
        bool ofOneTurn = all.largest < 360.0 && all.smallest > -360.0;
        if (ofOneTurn && all.largest - all.smallest < realCorner)
            return takeHeading(records[row], all, 0.0);
        Reach reach = reachOf(row, half, records.size());
        double offset = 0.0;
        Gathered own = gatherHeadings(records, headings, row, reach, offset);
        if (own.largest - own.smallest >= realCorner) { // perhaps only across north
            offset = 180.0;
            own = gatherHeadings(records, headings, row, reach, offset);
        }
        takeHeading(records[row], meanOfWindow(own), offset);
    };
    return SectorMeans(records, &GpsRecord::heading, window, headingStart, take);
}

TrackPass smoothDistance(std::span<GpsRecord> records, int window)
{
    auto stepTo = [=](size_t row) { return row == 0 ? 0 : records[row].distance - records[row - 1].distance; };
    auto take = [=](size_t row, double step, bool known, double mean) {
        if (row > 0)
            records[row].distance = (known ? mean : step) + records[row - 1].distance;
    };
    return TrimmedMeans(records.size(), window, stepStart, stepTo, take);
}

TrackPass smoothSpeed(std::span<GpsRecord> records, int window)
{
    return smoothField(records, &GpsRecord::speed, window, speedStart);
}

TrackPass smoothCadence(std::span<GpsRecord> records, int window)
{
    return smoothField(records, &GpsRecord::cadence, window, cadenceStart);
}

TrackPass smoothPower(std::span<GpsRecord> records, int window)
{
    return smoothField(records, &GpsRecord::power, window, powerStart);
}

} // namespace torvane
