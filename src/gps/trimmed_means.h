// The moving means behind smoothing.h, over values that the caller tells. Internal to the tracks.
#pragma once

#include "gps/smoothing.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace torvane {

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
        smallest = value < smallest ? value : smallest;
        largest = value > largest ? value : largest;
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

inline size_t halfOf(int window)
{
    return static_cast<size_t>((window + 2) / 2);
}

inline Reach reachOf(size_t i, size_t half, size_t total)
{
    return {i < half ? 0 : i - half, std::min(i + half + 1, total)};
}

// Rows that are worked on before any of them is written.
constexpr size_t rowsOfBlock = 256;

// The values of a block of rows and of their neighbours, as they were before the pass. A pass over a long track reads
// and writes each row once, while it is near, and holds no copy of it.
class ValuesAround {
public:
    ValuesAround(size_t ofTotal, size_t ofHalf) : total(ofTotal), half(ofHalf), values(rowsOfBlock + 2 * ofHalf) {}

    // Moves on to the rows [first, end), which follow the last ones.
    template <class Read>
    void moveTo(size_t first, size_t end, Read read)
    {
        size_t start = first < half ? 0 : first - half;
        std::copy(values.begin() + static_cast<std::ptrdiff_t>(start - from),
                  values.begin() + static_cast<std::ptrdiff_t>(to - from), values.begin());
        from = start;
        for (size_t last = std::min(end + half, total); to < last; ++to)
            values[to - from] = read(to);
    }
    double operator[](size_t row) const
    {
        return values[row - from];
    }
    const double* at(size_t row) const
    {
        return &values[row - from];
    }
    Gathered gather(size_t row, ExtremesStart start) const
    {
        Gathered gathered(start);
        Reach reach = reachOf(row, half, total);
        for (size_t k = reach.first; k < reach.end; ++k)
            gathered.add(values[k - from]);
        return gathered;
    }

private:
    size_t total, half;
    std::vector<double> values;
    size_t from = 0, to = 0; // rows that are there
};

// As Gathered, of whole windows one row after the other: `around` begins at the first sample of the first one. Straight
// on, so that compilers work on several rows at a time.
template <size_t width, class Take>
void gatherWhole(const double* around, size_t rows, ExtremesStart start, Take take)
{
    for (size_t i = 0; i < rows; ++i) {
        double sum = 0, smallest = start.smallest, largest = start.largest;
        for (size_t k = 0; k < width; ++k) {
            double value = around[i + k];
            sum += value;
            smallest = value < smallest ? value : smallest;
            largest = value > largest ? value : largest;
        }
        take(i, sum, smallest, largest);
    }
}

template <size_t width>
void meansOfWhole(const double* around, size_t rows, ExtremesStart start, double* means)
{
    gatherWhole<width>(around, rows, start, [=](size_t i, double sum, double smallest, double largest) {
        means[i] = (sum - (smallest + largest)) / static_cast<double>(width - 2);
    });
}

// Calls take(row, value, known, mean) for every row: its value as read, and the trimmed mean of its window where that
// is known. read(row) is asked once for each row, before take is called for any row that is not half a window behind.
template <class Read, class Take>
void overTrimmedMeans(size_t total, int window, ExtremesStart start, Read read, Take take)
{
    size_t half = halfOf(window);
    ValuesAround values(total, half);
    double means[rowsOfBlock];
    for (size_t first = 0; first < total; first += rowsOfBlock) {
        size_t end = std::min(first + rowsOfBlock, total);
        values.moveTo(first, end, read);
        size_t whole = std::max(first, half);
        size_t wholeEnd = std::max(whole, std::min(end, total - std::min(half, total)));
        const double* around = whole < wholeEnd ? values.at(whole - half) : nullptr;
        switch (half) {
        case 1:
            meansOfWhole<3>(around, wholeEnd - whole, start, means);
            break;
        case 2:
            meansOfWhole<5>(around, wholeEnd - whole, start, means);
            break;
        case 3:
            meansOfWhole<7>(around, wholeEnd - whole, start, means);
            break;
        case 4:
            meansOfWhole<9>(around, wholeEnd - whole, start, means);
            break;
        default:
            wholeEnd = whole; // no window of a track
        }
        for (size_t row = first; row < end; ++row) {
            if (row >= whole && row < wholeEnd) {
                take(row, values[row], true, means[row - whole]);
                continue;
            }
            Gathered gathered = values.gather(row, start);
            take(row, values[row], gathered.meanKnown(), gathered.meanKnown() ? gathered.trimmedMean() : 0);
        }
    }
}

} // namespace torvane
