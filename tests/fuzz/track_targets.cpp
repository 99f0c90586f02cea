// Hostile GPX and TCX through the reader, and what it makes of them on to a prepared ride.
#include "targets.h"

#include "fit/fit_types.h"
#include "fit/fit_walk.h"
#include "gps/prepare.h"
#include "gps/track_import.h"
#include "tracks/tracks.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr size_t mostUnpacked = 1 << 20;

void requireWithin(const std::vector<size_t>& places, size_t points, const char* what)
{
    require(std::ranges::is_sorted(places), what);
    require(places.empty() || places.back() <= points, what);
}

void requireWalk(const FitImage& image, const char* what)
{
    require(walksToItsEnd(image.data), what);
}

void readTrackFile(Input input)
{
    TrackReading reading = readTracks(unpacked(piecesOfMemory(input), mostUnpacked));
    const Tracks& tracks = reading.tracks;
    requireWithin(tracks.laps, tracks.points.size(), "laps begin at points, in order");
    requireWithin(tracks.segments, tracks.points.size(), "segments begin at points, in order");
    FitImage image = {};
    SourceFindings source;
    if (reading.result != TrackResult::ok || importTracks(tracks, sportValue(sportCycling), image, source) != fitOk)
        return;
    requireWalk(image, "the messages of an imported ride end with its data block");
    FitImage prepared = {};
    PrepareFindings findings;
    if (prepareActivity(image, {}, prepared, findings) == fitOk)
        requireWalk(prepared, "the messages of a prepared ride end with its data block");
}

std::vector<Bytes> bytesOf(std::initializer_list<std::string_view> texts)
{
    std::vector<Bytes> seeds;
    for (std::string_view text : texts)
        seeds.emplace_back(text.begin(), text.end());
    return seeds;
}

std::vector<Bytes> gpxSeeds()
{
    return bytesOf({
        R"(<?xml version="1.0" encoding="UTF-8"?><gpx version="1.1" xmlns="http://www.topografix.com/GPX/1/1" xmlns:t="urn:t">
<metadata><time>2021-05-02T08:00:00Z</time></metadata><trk><name>Loop &amp; back</name><type>cycling</type><trkseg>
<trkpt lat="47.1" lon="8.2"><ele>420.5</ele><time>2021-05-02T08:00:01Z</time><extensions><power>210</power><t:TrackPointExtension>
<t:hr>120</t:hr><t:cad>85</t:cad><t:atemp>18</t:atemp></t:TrackPointExtension></extensions></trkpt>
<trkpt lat="47.1001" lon="8.2001"><ele>421</ele><time>2021-05-02T08:00:02.5+02:00</time></trkpt></trkseg><trkseg/>
<trkseg><trkpt lat="-47.2" lon="179.9999"><time>2021-05-02T09:00:00Z</time></trkpt></trkseg></trk></gpx>)",
        R"(<gpx version="1.0"><trk><trkseg><trkpt lat="1" lon="2"><speed>7.5</speed><time>2010-01-01T00:00:00Z</time>
</trkpt><trkpt lat="1" lon="2.0001"><speed>8</speed><time>2010-01-01T00:00:09Z</time></trkpt></trkseg></trk></gpx>)",
        R"(<gpx><rte><rtept lat="1" lon="2"><ele>3</ele></rtept><rtept lat="1" lon="3"/></rte></gpx>)",
    });
}

std::vector<Bytes> tcxSeeds()
{
    return bytesOf({
        R"(<?xml version="1.0"?><TrainingCenterDatabase xmlns:x="urn:x"><Activities><Activity Sport="Biking"><Id>2021-05-02T08:00:00Z</Id>
<Lap StartTime="2021-05-02T08:00:00Z"><TotalTimeSeconds>2</TotalTimeSeconds><Track><Trackpoint><Time>2021-05-02T08:00:00Z</Time>
<Position><LatitudeDegrees>47.1</LatitudeDegrees><LongitudeDegrees>8.2</LongitudeDegrees></Position>
<AltitudeMeters>420</AltitudeMeters><DistanceMeters>0</DistanceMeters><HeartRateBpm><Value>120</Value></HeartRateBpm>
<Cadence>80</Cadence><SensorState>Present</SensorState><Extensions><x:TPX><x:Speed>7.1</x:Speed><x:Watts>200</x:Watts></x:TPX></Extensions>
</Trackpoint><Trackpoint><Time>2021-05-02T08:00:05Z</Time><DistanceMeters>35.5</DistanceMeters></Trackpoint></Track></Lap>
<Lap StartTime="2021-05-02T08:00:06Z"><Track/></Lap></Activity><Activity Sport="Running"><Lap><Track><Trackpoint>
<Time>2021-05-02T09:00:00Z</Time></Trackpoint></Track></Lap></Activity></Activities></TrainingCenterDatabase>)",
        R"(<TrainingCenterDatabase><Courses><Course><Name>Pass</Name><Track><Trackpoint><AltitudeMeters>9</AltitudeMeters>
</Trackpoint></Track></Course></Courses></TrainingCenterDatabase>)",
    });
}

} // namespace

std::span<const FuzzTarget> trackTargets()
{
    static constexpr FuzzTarget targets[] = {
        {"gpx", readTrackFile, gpxSeeds},
        {"tcx", readTrackFile, tcxSeeds},
    };
    return targets;
}

} // namespace torvane
