#include "ride/sample_log.h"

#include <cstddef>

namespace torvane {

void allocateSampleLog(SampleLog& log)
{
    log.rows.assign(static_cast<size_t>(log.sampleCount) + 1, SampleRow{});
}

void recordSample(SampleLog& log, const SampleRow& sample, int row)
{
    if (row >= 0 && static_cast<size_t>(row) < log.rows.size())
        log.rows[static_cast<size_t>(row)] = sample;
}

int shownRows(const SampleLog& log)
{
    size_t last = static_cast<size_t>(log.sampleCount);
    bool written = last < log.rows.size() && log.rows[last].time != 0.0;
    return written ? log.sampleCount + 1 : log.sampleCount;
}

} // namespace torvane
