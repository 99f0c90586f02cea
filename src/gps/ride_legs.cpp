#include "gps/ride_legs.h"

#include "gps/activity_messages.h"
#include "gps/ride_clock.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr uint8_t fitCycling = 2, fitElectricCycling = 21;

bool isOfSport(const Summary& summary, uint8_t sport)
{
    return summary.sport == sport || (sport == fitCycling && summary.sport == fitElectricCycling);
}

bool hasTimes(const Summary& summary)
{
    return summary.start != 0 && summary.end > summary.start;
}

// Of the sessions that say when they were and what, in the order of their times.
std::vector<Summary> timedSessions(const Activity& activity)
{
    std::vector<Summary> sessions;
    for (const Summary& summary : activity.summaries)
        if (summary.isSession && hasTimes(summary))
            sessions.push_back(summary);
    std::ranges::stable_sort(sessions, {}, &Summary::start);
    return sessions;
}

bool severalSports(const Activity& activity)
{
    std::optional<uint8_t> first;
    for (const Summary& summary : activity.summaries) {
        if (!summary.isSession || !summary.sport)
            continue;
        if (first && first != summary.sport)
            return true;
        first = summary.sport;
    }
    return false;
}

void addPausesBetween(const std::vector<Summary>& sessions, std::vector<Pause>& pauses)
{
    for (size_t i = 1; i < sessions.size(); ++i)
        if (sessions[i].start > sessions[i - 1].end)
            pauses.push_back({sessions[i - 1].end, sessions[i].start});
    orderPauses(pauses);
}

// The choice of some sessions under way.
struct Choice {
    const std::vector<Summary>& legs;
    uint8_t sport;
    std::vector<bool> keeps = {}; // by sample

    bool covers(uint32_t time) const
    {
        return std::ranges::any_of(legs, [&](const Summary& leg) { return time >= leg.start && time <= leg.end; });
    }
    // Whether a message without a time stands beside a sample that stays, or in front of all.
    bool standsBeside(size_t samplesBefore) const
    {
        bool behind = samplesBefore < keeps.size() && keeps[samplesBefore];
        return samplesBefore == 0 || keeps[samplesBefore - 1] || behind;
    }
};

bool staysSummary(const Choice& choice, const Summary& summary)
{
    if (summary.isSession)
        return isOfSport(summary, choice.sport) && hasTimes(summary);
    return hasTimes(summary) && choice.covers(summary.start + (summary.end - summary.start) / 2);
}

bool staysOther(const Choice& choice, const OtherMessage& message)
{
    constexpr uint16_t deviceInfo = 23, fieldDescription = 206, developerId = 207;
    switch (message.global) {
    case messageFileId:
    case deviceInfo:
    case fieldDescription:
    case developerId:
        return true;
    case messageActivity:
        return false; // one is made
    default:
        return message.timestamp != 0 ? choice.covers(message.timestamp) : choice.standsBeside(message.samplesBefore);
    }
}

std::vector<bool> stayingOthers(const Activity& activity, const Choice& choice)
{
    std::vector<bool> stays;
    for (const OtherMessage& message : activity.others)
        stays.push_back(staysOther(choice, message));
    for (const Summary& summary : activity.summaries)
        stays[summary.other] = staysSummary(choice, summary);
    return stays;
}

void leaveLegs(Activity& activity, const std::vector<Summary>& legs, uint8_t sport, PrepareFindings& findings)
{
    Choice choice = {legs, sport};
    for (const RideSample& sample : activity.samples)
        choice.keeps.push_back(choice.covers(sample.timestamp));
    findings.recordsOfOtherSports += static_cast<uint32_t>(std::ranges::count(choice.keeps, false));
    keepOthers(activity, stayingOthers(activity, choice));
    keepSamples(activity, choice.keeps);
    activity.pauses = pausesOf(activity.timer);
}

size_t samplesUpTo(const Activity& activity, uint32_t time)
{
    auto place = std::ranges::upper_bound(activity.samples, time, {}, &RideSample::timestamp);
    return static_cast<size_t>(place - activity.samples.begin());
}

bool standsWell(const Activity& activity, size_t place, uint32_t end)
{
    constexpr int64_t tolerance = 5; // s: devices write a lap when they come to it
    const std::vector<RideSample>& samples = activity.samples;
    bool behind = place == 0 || samples[place - 1].timestamp <= end + tolerance;
    bool before = place == samples.size() || samples[place].timestamp + tolerance >= end;
    return behind && before;
}

// A message of its own, laid out under a local type that the writer replaces.
void make(Activity& activity, uint16_t global, std::span<const FieldLayout> layout,
          std::initializer_list<uint64_t> values)
{
    MessageWriter definition, message;
    definition.define(0, global, layout);
    message.message(0, layout, values);
    activity.made.push_back(std::move(definition.block));
    std::span<const uint8_t> definitionBytes = activity.made.back();
    activity.made.push_back(std::move(message.block));
    std::span<const uint8_t> bytes = activity.made.back();
    activity.others.push_back(
        {definitionBytes, bytes.subspan(1), global, false, activity.samples.back().timestamp, activity.samples.size()});
}

struct Totals {
    uint64_t elapsed = 0, timer = 0; // ms
    int64_t centimetres = 0;
};

// Over the samples from `first` on.
Totals totalsFrom(const Activity& activity, size_t first)
{
    constexpr uint64_t milliseconds = 1000;
    Totals totals;
    for (size_t i = first; i + 1 < activity.samples.size(); ++i) {
        const RideSample& from = activity.samples[i];
        const RideSample& to = activity.samples[i + 1];
        uint64_t step = (to.timestamp - from.timestamp) * milliseconds;
        totals.elapsed += step;
        if (from.open)
            continue;
        totals.timer += step;
        totals.centimetres += std::max(0, to.values[rideDistance] - from.values[rideDistance]);
    }
    return totals;
}

void makeSummary(Activity& activity, uint16_t global, std::span<const FieldLayout> layout, size_t first, uint8_t sport)
{
    Totals totals = totalsFrom(activity, first);
    uint64_t way = static_cast<uint64_t>(totals.centimetres);
    make(activity, global, layout,
         {activity.samples.back().timestamp, activity.samples[first].timestamp, totals.elapsed, totals.timer, way,
          sport});
}

void makeSession(Activity& activity, uint8_t sport)
{
    uint32_t lapsEnd = 0;
    for (const Summary& summary : activity.summaries)
        lapsEnd = std::max(lapsEnd, summary.end);
    size_t first = samplesUpTo(activity, lapsEnd);
    if (first < activity.samples.size())
        makeSummary(activity, messageLap, lapLayout, first, sport);
    makeSummary(activity, messageSession, sessionLayout, 0, sport);
}

bool hasSession(const Activity& activity)
{
    return std::ranges::any_of(activity.summaries, &Summary::isSession);
}

bool isBroken(const SourceFindings& source)
{
    return source.cut || source.neverClosed || source.bytesLost != 0;
}

} // namespace

StatusCode takeLegsOf(Activity& activity, uint8_t sport, PrepareFindings& findings)
{
    std::vector<Summary> legs = timedSessions(activity);
    if (severalSports(activity)) {
        std::erase_if(legs, [&](const Summary& leg) { return !isOfSport(leg, sport); });
        if (legs.empty())
            return fitSessionSportsDiffer;
        leaveLegs(activity, legs, sport, findings);
    }
    addPausesBetween(legs, activity.pauses);
    return fitOk;
}

void placeSummaries(Activity& activity, PrepareFindings& findings)
{
    for (const Summary& summary : activity.summaries) {
        OtherMessage& message = activity.others[summary.other];
        size_t place = samplesUpTo(activity, summary.end);
        if (place == 0)
            continue; // its times are none of this ride
        message.timestamp = summary.end;
        if (standsWell(activity, message.samplesBefore, summary.end))
            continue;
        message.samplesBefore = place;
        ++findings.summariesMoved;
    }
    std::ranges::stable_sort(activity.others, {}, &OtherMessage::samplesBefore);
}

void completeSummaries(Activity& activity, uint8_t sport, PrepareFindings& findings)
{
    auto isActivity = [](const OtherMessage& message) { return message.global == messageActivity; };
    bool lacksSession = isBroken(findings.source) && !hasSession(activity);
    bool ownHolds = findings.source.parts < 2 && findings.recordsOfOtherSports == 0 && !lacksSession;
    if (ownHolds)
        return;
    std::erase_if(activity.others, isActivity);
    if (lacksSession)
        makeSession(activity, sport);
    findings.summariesMade = lacksSession;
    size_t sessions = static_cast<size_t>(std::ranges::count(activity.summaries, true, &Summary::isSession));
    make(activity, messageActivity, activityLayout,
         {activity.samples.back().timestamp, totalsFrom(activity, 0).timer, std::max<size_t>(sessions, 1),
          activityManual, activityEvent, activityStop});
}

double deviceSpeedOf(const Activity& activity)
{
    double speedTime = 0, timer = 0;
    for (const Summary& summary : activity.summaries) {
        speedTime += summary.meanSpeed * summary.timer;
        timer += summary.timer;
    }
    return timer > 0 ? speedTime / timer : 0;
}

} // namespace torvane
