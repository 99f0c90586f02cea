#include "gps/ride_clock.h"

#include <algorithm>
#include <functional>

namespace torvane {

namespace {

using Samples = std::vector<RideSample>;

bool risesThroughout(const Samples& samples)
{
    auto falls = [](const RideSample& a, const RideSample& b) { return a.timestamp >= b.timestamp; };
    return std::ranges::adjacent_find(samples, falls) == samples.end();
}

// For each sample how many a rising row of timestamps that begins with it can have. Seen from the back, `latest[n]` is
// the latest time that a row of n + 1 samples can begin with.
std::vector<size_t> longestRows(const Samples& samples)
{
    std::vector<size_t> lengths(samples.size());
    std::vector<uint32_t> latest;
    for (size_t i = samples.size(); i-- > 0;) {
        uint32_t time = samples[i].timestamp;
        auto place = std::ranges::lower_bound(latest, time, std::greater{});
        lengths[i] = static_cast<size_t>(place - latest.begin()) + 1;
        if (place == latest.end())
            latest.push_back(time);
        else
            *place = time;
    }
    return lengths;
}

std::vector<bool> longestRow(const Samples& samples)
{
    std::vector<size_t> lengths = longestRows(samples);
    size_t wanted = *std::ranges::max_element(lengths);
    std::vector<bool> keeps(samples.size());
    uint32_t last = 0;
    for (size_t i = 0; i < samples.size(); ++i) {
        keeps[i] = lengths[i] == wanted && samples[i].timestamp > last;
        if (!keeps[i])
            continue;
        last = samples[i].timestamp;
        --wanted;
    }
    return keeps;
}

void countDropped(const Samples& samples, const std::vector<bool>& keeps, PrepareFindings& findings)
{
    uint32_t last = 0;
    for (size_t i = 0; i < samples.size(); ++i) {
        uint32_t time = samples[i].timestamp;
        if (keeps[i])
            last = time;
        else
            ++(time == last  ? findings.equalTimestamps
               : time < last ? findings.backwardTimestamps
                             : findings.leapingTimestamps);
    }
}

// Where each row goes when some stay: how many in front of it do. One more for the end.
std::vector<size_t> placesOf(const std::vector<bool>& keeps)
{
    std::vector<size_t> places(keeps.size() + 1);
    for (size_t i = 0; i < keeps.size(); ++i)
        places[i + 1] = places[i] + keeps[i];
    return places;
}

// Only what stays, each at its place.
template <class Row>
void moveTogether(std::vector<Row>& rows, const std::vector<bool>& keeps, const std::vector<size_t>& places)
{
    for (size_t i = 0; i < keeps.size(); ++i)
        if (keeps[i])
            rows[places[i]] = rows[i];
    rows.resize(places.back());
}

bool isLost(const TimerEvent& event, const std::vector<bool>& keeps)
{
    bool keepsBefore = event.samplesBefore != 0 && keeps[event.samplesBefore - 1];
    bool keepsBehind = event.samplesBefore < keeps.size() && keeps[event.samplesBefore];
    return !keeps.empty() && !keepsBefore && !keepsBehind;
}

} // namespace

void keepRisingTimes(Activity& activity, PrepareFindings& findings)
{
    if (risesThroughout(activity.samples))
        return;
    std::vector<bool> keeps = longestRow(activity.samples);
    countDropped(activity.samples, keeps, findings);
    keepSamples(activity, keeps);
}

void keepSamples(Activity& activity, const std::vector<bool>& keeps)
{
    std::vector<bool> keepsOther(activity.others.size(), true);
    for (const TimerEvent& event : activity.timer)
        keepsOther[event.other] = !isLost(event, keeps);
    keepOthers(activity, keepsOther);
    std::vector<size_t> kept = placesOf(keeps);
    for (OtherMessage& other : activity.others)
        other.samplesBefore = kept[other.samplesBefore];
    for (TimerEvent& event : activity.timer)
        event.samplesBefore = kept[event.samplesBefore];
    moveTogether(activity.samples, keeps, kept);
}

void keepOthers(Activity& activity, const std::vector<bool>& keeps)
{
    auto goes = [&](const auto& row) { return !keeps[row.other]; };
    std::erase_if(activity.summaries, goes);
    std::erase_if(activity.timer, goes);
    std::vector<size_t> kept = placesOf(keeps);
    for (Summary& summary : activity.summaries)
        summary.other = kept[summary.other];
    for (TimerEvent& event : activity.timer)
        event.other = kept[event.other];
    moveTogether(activity.others, keeps, kept);
}

std::vector<Pause> pausesOf(const std::vector<TimerEvent>& timer)
{
    std::vector<Pause> pauses;
    bool stopped = false;
    uint32_t stoppedAt = 0;
    for (const TimerEvent& event : timer) {
        if (event.stops && !stopped)
            stoppedAt = event.time;
        if (!event.stops && stopped && event.time > stoppedAt)
            pauses.push_back({stoppedAt, event.time});
        stopped = event.stops;
    }
    orderPauses(pauses);
    return pauses;
}

void orderPauses(std::vector<Pause>& pauses)
{
    std::ranges::sort(pauses, {}, &Pause::from);
    size_t last = 0;
    for (size_t i = 1; i < pauses.size(); ++i)
        if (pauses[i].from <= pauses[last].to)
            pauses[last].to = std::max(pauses[last].to, pauses[i].to);
        else
            pauses[++last] = pauses[i];
    if (!pauses.empty())
        pauses.resize(last + 1);
}

} // namespace torvane
