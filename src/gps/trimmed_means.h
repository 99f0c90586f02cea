// The moving means behind smoothing.h, over values that the caller tells. Internal to the tracks.
#pragma once

#include "gps/smoothing.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>
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

// Calls work with the width of a window as a constant. False where no window of a track has it.
template <class Work>
bool withWidthOf(size_t half, Work work)
{
    switch (half) {
    case 1:
        return work(std::integral_constant<size_t, 3>()), true;
    case 2:
        return work(std::integral_constant<size_t, 5>()), true;
    case 3:
        return work(std::integral_constant<size_t, 7>()), true;
    case 4:
        return work(std::integral_constant<size_t, 9>()), true;
    default:
        return false;
    }
}

// Rows that a pass can be through with when so many are ready in front of it and it looks so many ahead.
inline size_t rowsBehind(size_t ready, size_t ahead, size_t total)
{
    return ready == total ? total : ready - std::min(ahead, ready);
}

// Calls takeBlock(first, end) for the rows from `done` up to the last one; returns how many are done then.
template <class TakeBlock>
size_t takeBlocks(size_t done, size_t last, TakeBlock takeBlock)
{
    while (done < last) {
        size_t end = std::min(done + rowsOfBlock, last);
        takeBlock(done, end);
        done = end;
    }
    return done;
}

// Those rows of a block whose window lies inside the track.
struct WholeRows {
    size_t first, end;

    WholeRows(size_t firstOfBlock, size_t endOfBlock, size_t half, size_t total)
        : first(std::max(firstOfBlock, half)), end(std::max(first, std::min(endOfBlock, total - std::min(half, total))))
    {
    }
    size_t count() const
    {
        return end - first;
    }
    bool has(size_t row) const
    {
        return row >= first && row < end;
    }
};

// A pass that calls take(row, value, known, mean) for every row: its value as read, and the trimmed mean of its window
// where that is known. read(row) is asked once for each row, before take is called for any row that is not half a
// window behind; it may look `ahead` rows further.
template <class Read, class Take>
class TrimmedMeans {
public:
    TrimmedMeans(size_t ofTotal, int window, ExtremesStart fromStart, Read reads, Take takes, size_t looksAhead = 0)
        : total(ofTotal), half(halfOf(window)), ahead(looksAhead), start(fromStart), read(reads), take(takes),
          values(total, half)
    {
    }
    size_t operator()(size_t ready)
    {
        done = takeBlocks(done, rowsBehind(ready, half + ahead, total),
                          [this](size_t first, size_t end) { takeBlock(first, end); });
        return done;
    }

private:
    void takeBlock(size_t first, size_t end)
    {
        double means[rowsOfBlock];
        values.moveTo(first, end, read);
        WholeRows whole(first, end, half, total);
        bool known = whole.count() > 0 && withWidthOf(half, [&](auto width) {
                         meansOfWhole<width>(values.at(whole.first - half), whole.count(), start, means);
                     });
        for (size_t row = first; row < end; ++row) {
            if (known && whole.has(row)) {
                take(row, values[row], true, means[row - whole.first]);
                continue;
            }
            Gathered gathered = values.gather(row, start);
            take(row, values[row], gathered.meanKnown(), gathered.meanKnown() ? gathered.trimmedMean() : 0);
        }
    }

    size_t total, half, ahead;
    ExtremesStart start;
    Read read;
    Take take;
    ValuesAround values;
    size_t done = 0;
};

} // namespace torvane
