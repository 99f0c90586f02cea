#include "gps/smoothing.h"

#include "gps/track_geometry.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr ExtremesStart positionStart = {360.0, -360.0};
constexpr ExtremesStart headingStart = {1000.0, 0.0};
constexpr ExtremesStart stepStart = {1000.0, 0.0};
constexpr ExtremesStart speedStart = {1000.0, 0.0};
constexpr ExtremesStart cadenceStart = {1000.0, 0.0};
constexpr ExtremesStart powerStart = {10000.0, 0.0};

constexpr double realCorner = 90.0; // deg within one window

// What a mean needs to know of the samples of one window.
struct Gathered {
    double sum = 0;
    double smallest;
    double largest;
    int count = 0;

    explicit Gathered(ExtremesStart start) : smallest(start.smallest), largest(start.largest) {}
    void add(double value)
    {
        sum += value;
        if (value < smallest)
            smallest = value;
        if (value > largest)
            largest = value;
        count++;
    }
    bool meanKnown() const
    {
        return count > 2;
    }
    double trimmedMean() const
    {
        return (sum - (smallest + largest)) / (count - 2);
    }
};

// Samples around i that lie inside the array.
struct Reach {
    size_t first;
    size_t end;
};

Reach reachOf(size_t i, int window, size_t total)
{
    size_t half = static_cast<size_t>((window + 2) / 2);
    return {i < half ? 0 : i - half, std::min(i + half + 1, total)};
}

Gathered gather(const std::vector<double>& values, Reach reach, ExtremesStart start)
{
    Gathered gathered(start);
    for (size_t k = reach.first; k < reach.end; ++k)
        gathered.add(values[k]);
    return gathered;
}

std::vector<double> copyOf(std::span<const GpsRecord> records, RecordField field)
{
    std::vector<double> values(records.size());
    std::transform(records.begin(), records.end(), values.begin(), [=](const GpsRecord& r) { return r.*field; });
    return values;
}

void smoothWithinSectors(std::span<GpsRecord> records, RecordField field, int window, ExtremesStart start)
{
    std::vector<double> values = copyOf(records, field);
    for (size_t i = 0; i < records.size(); ++i) {
        Gathered gathered(start);
        Reach reach = reachOf(i, window, records.size());
        for (size_t k = reach.first; k < reach.end; ++k)
            if (records[k].sector == records[i].sector)
                gathered.add(values[k]);
        if (gathered.meanKnown())
            records[i].*field = gathered.trimmedMean();
    }
}

// The headings around row i in its sector, turned by an offset so that north need not lie between them.
Gathered gatherHeadings(std::span<const GpsRecord> records, const std::vector<double>& headings, size_t i, Reach reach,
                        double offset)
{
    Gathered gathered(headingStart);
    for (size_t k = reach.first; k < reach.end; ++k)
        if (records[k].sector == records[i].sector)
            gathered.add(std::fmod(headings[k] + offset, 360.0));
    return gathered;
}

double meanOf(double sum, size_t count)
{
    return sum / static_cast<double>(count);
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
    double sum = 0;
    for (size_t i = 1; i < records.size(); ++i) {
        sum += greatCircleDistance(records[i - 1].latitude, records[i - 1].longitude, records[i].latitude,
                                   records[i].longitude);
    }
    double mean = meanOf(sum, records.size() - 1);
    if (mean < 5.0)
        return 5;
    return mean < 7.0 ? 3 : 0;
}

void smoothInto(std::span<GpsRecord> records, RecordField field, const std::vector<double>& values, int window,
                ExtremesStart start)
{
    for (size_t i = 0; i < records.size(); ++i) {
        Gathered gathered = gather(values, reachOf(i, window, records.size()), start);
        if (gathered.meanKnown())
            records[i].*field = gathered.trimmedMean();
    }
}

void averageInto(std::span<GpsRecord> records, RecordField field, const std::vector<double>& values, int window)
{
    for (size_t i = 0; i < records.size(); ++i) {
        Reach reach = reachOf(i, window, records.size());
        double sum = 0;
        int count = 0;
        for (size_t k = reach.first; k < reach.end; ++k)
            if (!std::isnan(values[k])) {
                sum += values[k];
                ++count;
            }
        records[i].*field = count == 0 ? 0 : sum / count;
    }
}

void smoothField(std::span<GpsRecord> records, RecordField field, int window, ExtremesStart start)
{
    smoothInto(records, field, copyOf(records, field), window, start);
}

void averageField(std::span<GpsRecord> records, RecordField field, int window)
{
    averageInto(records, field, copyOf(records, field), window);
}

void smoothPositions(std::span<GpsRecord> records, int window)
{
    smoothWithinSectors(records, &GpsRecord::latitude, window, positionStart);
    smoothWithinSectors(records, &GpsRecord::longitude, window, positionStart);
}

void smoothHeading(std::span<GpsRecord> records, int window)
{
    std::vector<double> headings = copyOf(records, &GpsRecord::heading);
    for (size_t i = 0; i < records.size(); ++i) {
        Reach reach = reachOf(i, window, records.size());
        double offset = 0.0;
        Gathered gathered = gatherHeadings(records, headings, i, reach, offset);
        if (gathered.largest - gathered.smallest >= realCorner) { // perhaps only across north
            offset = 180.0;
            gathered = gatherHeadings(records, headings, i, reach, offset);
        }
        if (gathered.largest - gathered.smallest <= realCorner && gathered.meanKnown())
            records[i].heading = std::fmod((360.0 - offset) + gathered.trimmedMean(), 360.0);
    }
}

void smoothDistance(std::span<GpsRecord> records, int window)
{
    std::vector<double> steps(records.size());
    for (size_t i = 1; i < records.size(); ++i)
        steps[i] = records[i].distance - records[i - 1].distance;
    for (size_t i = 1; i < records.size(); ++i) {
        Gathered gathered = gather(steps, reachOf(i, window, records.size()), stepStart);
        double step = gathered.meanKnown() ? gathered.trimmedMean() : steps[i];
        records[i].distance = step + records[i - 1].distance;
    }
}

void smoothSpeed(std::span<GpsRecord> records, int window)
{
    smoothField(records, &GpsRecord::speed, window, speedStart);
}

void smoothCadence(std::span<GpsRecord> records, int window)
{
    smoothField(records, &GpsRecord::cadence, window, cadenceStart);
}

void smoothPower(std::span<GpsRecord> records, int window)
{
    smoothField(records, &GpsRecord::power, window, powerStart);
}

} // namespace torvane
