#include "gps/track_import.h"

#include "fit/fit_time.h"
#include "fit/fit_types.h"
#include "gps/activity_messages.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

namespace torvane {

namespace {

// FIT's numbers of the sports that track files name.
constexpr uint8_t fitRunning = 1, fitSwimming = 5, fitWalking = 11, fitHiking = 17;

struct SportWord {
    std::string_view word; // in small letters
    uint8_t sport;
};
constexpr SportWord sportWords[] = {
    {"cycl", fitCycling},  {"bik", fitCycling},  {"ride", fitCycling}, {"run", fitRunning},
    {"swim", fitSwimming}, {"walk", fitWalking}, {"hik", fitHiking},
};

// None where a leg names no sport that is known: it may be a ride.
std::optional<uint8_t> sportOf(const TrackLeg& leg)
{
    std::string name = leg.sport;
    std::ranges::transform(name, name.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; });
    for (const SportWord& row : sportWords)
        if (name.find(row.word) != std::string::npos)
            return row.sport;
    return std::nullopt;
}

// Points from first to the one before last, of one leg.
struct Stretch {
    size_t first, last;
    uint8_t sport;
};

enum : uint8_t { localFileId, localEvent, localRecord, localLap, localSession, localActivity };

constexpr FieldLayout recordLayout[] = {
    {timestampField, 4, unsigned32}, {recordLatitude, 4, signed32},   {recordLongitude, 4, signed32},
    {recordAltitude, 2, unsigned16}, {recordDistance, 4, unsigned32}, {recordSpeed, 2, unsigned16},
    {recordHeartRate, 1, unsigned8}, {recordCadence, 1, unsigned8},   {recordPower, 2, unsigned16},
    {recordTemperature, 1, signed8},
};
std::optional<uint32_t> fitSecond(double time)
{
    double second = std::round(time - fitEpoch);
    if (!(second > 0 && second < 4294967295.0))
        return std::nullopt;
    return static_cast<uint32_t>(second);
}

void writeRecord(MessageWriter& writer, const TrackPoint& point, uint32_t second)
{
    writer.message(localRecord, recordLayout,
                   {second, storedDegrees(point.latitude), storedDegrees(point.longitude),
                    storedAltitude(point.elevation), storedDistance(point.distance), storedSpeed(point.speed),
                    stored(point.heartRate, 1, 0, 254, UINT8_MAX), stored(point.cadence, 1, 0, 254, UINT8_MAX),
                    stored(point.power, 1, 0, 65534, UINT16_MAX), stored(point.temperature, 1, -127, 126, INT8_MAX)});
}

// Time and way of a lap or of the session, while its points go by.
struct Total {
    std::optional<uint32_t> start = {};
    uint32_t end = 0;
    uint32_t paused = 0; // s
    double firstDistance = notThere, lastDistance = notThere;

    void add(uint32_t second, double distance)
    {
        if (!start)
            start = second;
        end = std::max(end, second);
        if (std::isnan(distance))
            return;
        if (std::isnan(firstDistance))
            firstDistance = distance;
        lastDistance = distance;
    }
    uint64_t elapsed() const
    {
        return (end - *start) * uint64_t{1000};
    }
    uint64_t timer() const
    {
        return elapsed() - paused * uint64_t{1000};
    }
    uint64_t centimetres() const
    {
        return storedDistance(lastDistance - firstDistance);
    }
};

class Import {
public:
    Import(const Tracks& from, uint8_t wanted, SourceFindings& found) : tracks(from), findings(found), sport(wanted)
    {
        findings.timesUnreadable = tracks.timesUnreadable;
        findings.timesWithoutZone = tracks.timesWithoutZone;
        findings.emptySegments = tracks.empty;
    }

    StatusCode write(FitImage& image)
    {
        std::vector<Stretch> stretches = chosenStretches();
        defineAll();
        for (const Stretch& stretch : stretches)
            writeStretch(stretch);
        if (!session.start)
            return fitWithoutTimes;
        endLap();
        endFile();
        constexpr size_t largestBlock = 0x7FFFFFFF;
        if (writer.block.size() > largestBlock)
            return fitTooLarge;
        wrapMessages(std::move(writer.block), image);
        return fitOk;
    }

private:
    // Those of the sport alone where there are any, in the order of their times.
    std::vector<Stretch> chosenStretches()
    {
        std::vector<TrackLeg> legs = tracks.legs;
        if (legs.empty())
            legs.push_back({});
        bool hasSport = std::ranges::any_of(legs, [&](const TrackLeg& leg) { return sportOf(leg) == sport; });
        std::vector<Stretch> stretches;
        for (size_t i = 0; i < legs.size(); ++i) {
            std::optional<uint8_t> own = sportOf(legs[i]);
            if (hasSport && own && *own != sport) {
                ++findings.legsOfOtherSports;
                continue;
            }
            size_t last = i + 1 < legs.size() ? legs[i + 1].first : tracks.points.size();
            stretches.push_back({legs[i].first, last, hasSport ? sport : own.value_or(fitCycling)});
        }
        std::ranges::stable_sort(stretches, {}, [&](const Stretch& stretch) { return firstTime(stretch); });
        sport = stretches[0].sport;
        return stretches;
    }

    double firstTime(const Stretch& stretch) const
    {
        for (size_t i = stretch.first; i < stretch.last; ++i)
            if (!std::isnan(tracks.points[i].time))
                return tracks.points[i].time;
        return std::numeric_limits<double>::infinity();
    }

    void defineAll()
    {
        writer.define(localFileId, messageFileId, fileIdLayout);
        writer.define(localEvent, messageEvent, eventLayout);
        writer.define(localRecord, messageRecord, recordLayout);
        writer.define(localLap, messageLap, lapLayout);
        writer.define(localSession, messageSession, sessionLayout);
        writer.define(localActivity, messageActivity, activityLayout);
    }

    void writeStretch(const Stretch& stretch)
    {
        for (size_t i = stretch.first; i < stretch.last; ++i) {
            bool newLap = std::ranges::binary_search(tracks.laps, i);
            bool goesOn = i == stretch.first || (std::ranges::binary_search(tracks.segments, i) && !newLap);
            if (newLap)
                endLap();
            afterPause = afterPause || goesOn;
            writePoint(tracks.points[i]);
        }
    }

    void writePoint(const TrackPoint& point)
    {
        std::optional<uint32_t> second = fitSecond(point.time);
        if (!second) {
            ++findings.pointsWithoutTime;
            return;
        }
        if (!session.start)
            startFile(*second);
        else if (afterPause && *second > session.end + 1)
            writePause(session.end, *second);
        afterPause = false;
        writeRecord(writer, point, *second);
        lap.add(*second, point.distance);
        session.add(*second, point.distance);
    }

    void startFile(uint32_t second)
    {
        writer.message(localFileId, fileIdLayout, {fileTypeActivity, fitDevelopment, second});
        writer.message(localEvent, eventLayout, {second, timerEvent, timerStarts});
    }

    void writePause(uint32_t from, uint32_t to)
    {
        writer.message(localEvent, eventLayout, {from, timerEvent, timerStops});
        writer.message(localEvent, eventLayout, {to, timerEvent, timerStarts});
        session.paused += to - from;
        if (lap.start)
            lap.paused += to - from;
    }

    void endLap()
    {
        if (lap.start)
            writer.message(localLap, lapLayout,
                           {lap.end, *lap.start, lap.elapsed(), lap.timer(), lap.centimetres(), sport});
        lap = {};
    }

    void endFile()
    {
        constexpr uint64_t oneSession = 1;
        writer.message(localEvent, eventLayout, {session.end, timerEvent, timerStops});
        writer.message(localSession, sessionLayout,
                       {session.end, *session.start, session.elapsed(), session.timer(), session.centimetres(), sport});
        writer.message(localActivity, activityLayout,
                       {session.end, session.timer(), oneSession, activityManual, activityEvent, activityStop});
    }

    const Tracks& tracks;
    SourceFindings& findings;
    MessageWriter writer = {};
    Total lap = {}, session = {};
    uint8_t sport; // asked for, then found
    bool afterPause = false;
};

} // namespace

StatusCode importTracks(const Tracks& tracks, uint8_t sport, FitImage& image, SourceFindings& findings)
{
    return Import(tracks, sport, findings).write(image);
}

} // namespace torvane
