// Track files as phones, head units and web pages write them, and as an attacker would.
#include "tracks/track_time.h"
#include "tracks/tracks.h"

#include <gtest/gtest.h>

#include <zlib.h>

#include <cmath>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace torvane {

namespace {

using Bytes = std::vector<uint8_t>;

Bytes bytesOf(std::string_view text)
{
    return {text.begin(), text.end()};
}

Bytes zipped(const Bytes& bytes)
{
    z_stream stream = {};
    constexpr int asGzip = 15 + 16;
    EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, asGzip, 8, Z_DEFAULT_STRATEGY), Z_OK);
    Bytes packed(deflateBound(&stream, static_cast<uLong>(bytes.size())));
    stream.next_in = const_cast<uint8_t*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = packed.data();
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

Bytes utf16(std::string_view text, bool bigEndian, bool marked)
{
    Bytes bytes;
    auto put = [&](uint8_t low, uint8_t high) {
        bytes.push_back(bigEndian ? high : low);
        bytes.push_back(bigEndian ? low : high);
    };
    if (marked)
        put(0xFF, 0xFE);
    for (char c : text)
        put(static_cast<uint8_t>(c == '~' ? 0xAC : c), c == '~' ? 0x20 : 0); // the euro's sign
    return bytes;
}

TrackReading read(const Bytes& bytes, size_t limit = 1 << 20)
{
    return readTracks(unpacked(piecesOfMemory(bytes), limit));
}

TrackReading read(std::string_view text)
{
    return read(bytesOf(text));
}

std::string gpx(const std::string& inside)
{
    return "<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" xmlns:a=\"urn:a\" version=\"1.1\">" + inside + "</gpx>";
}

std::string point(const std::string& inside)
{
    return gpx("<trk><trkseg><trkpt lat=\"47.5\" lon=\"-8.25\">" + inside + "</trkpt><extensions/></trkseg></trk>");
}

std::string repeated(std::string_view piece, size_t count)
{
    std::string text;
    for (size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

} // namespace

TEST(TrackTime, isIso8601)
{
    const struct {
        const char* text;
        double seconds; // no number: refused
    } rows[] = {
        {"1970-01-01T00:00:00Z", 0},
        {"2019-06-02T11:20:13Z", 1559474413},
        {"2019-06-02T11:20:13.25z", 1559474413.25},
        {"2019-06-02T11:20:13", 1559474413}, // without a zone: UTC
        {"2019-06-02T13:20:13+02:00", 1559474413},
        {"2019-06-02T05:50:13,5-0530", 1559474413.5},
        {"1901-12-13T20:45:52Z", -2147483648.0},
        {"2020-02-29T00:00:00Z", 1582934400},
        {"2019-02-29T00:00:00Z", notThere}, // no such day
        {"2019-06-02T11:59:60Z", 1559476800},
        {"2019-06-02T24:00:00Z", notThere},
        {"2019-06-02T11:60:00Z", notThere},
        {"2019-06-02T11:20:61Z", notThere},
        {"2019-06-02T1/:20:13Z", notThere}, // the signs beside the digits
        {"2019-06-02T1::20:13Z", notThere},
        {"2019-06-02T11:20:1", notThere},
        {"2019-06-02 11:20:13Z", notThere},
        {"2019-06-02T11:20:13Zulu", notThere},
        {"2019-6-2T11:20:13Z", notThere},
        {"", notThere},
    };
    for (const auto& row : rows) {
        std::optional<TrackTime> time = readTrackTime(row.text);
        ASSERT_EQ(time.has_value(), !std::isnan(row.seconds)) << row.text;
        if (time) {
            EXPECT_NEAR(time->seconds, row.seconds, 1e-6) << row.text;
        }
    }
    EXPECT_FALSE(readTrackTime("2019-06-02T11:20:13")->hasZone);
}

TEST(Tracks, figuresOfAPoint)
{
    const struct {
        std::string inside;
        double elevation, speed, heartRate, cadence, power, temperature, distance = notThere;
    } rows[] = {
        {"", notThere, notThere, notThere, notThere, notThere, notThere},
        {"<ele> 12.5\n</ele><speed>+7</speed>", 12.5, 7, notThere, notThere, notThere, notThere},
        {"<extensions><a:TrackPointExtension>told by <a:hr>150</a:hr><a:cad>90</a:cad><a:atemp>-3</a:atemp>"
         "</a:TrackPointExtension><power>250</power><distance>12</distance></extensions>",
         notThere, notThere, 150, 90, 250, -3, 12},
        {"<extensions><a:power><a:unit/>9</a:power></extensions><ele>" + repeated("\n", 5000) + "9</ele><time/>",
         notThere, notThere, notThere, notThere, notThere, notThere},
        {"<extensions><PowerInWatts>0</PowerInWatts><a:Power>9</a:Power></extensions>", notThere, notThere, notThere,
         notThere, 0, notThere}, // the first counts, and nothing is a figure too
        {"<extensions><a:speed>3</a:speed></extensions><speed>4</speed>", notThere, 4, notThere, notThere, notThere,
         notThere}, // the format's own counts
        {"<ele>1e2</ele><speed>nan</speed><extensions><a:hr>12x</a:hr><a:cad>inf</a:cad><power/></extensions>", 100,
         notThere, notThere, notThere, notThere, notThere},
        {"<ele><![CDATA[7]]></ele><!-- a remark -->", 7, notThere, notThere, notThere, notThere, notThere},
    };
    auto same = [](double a, double b) { return std::isnan(a) ? std::isnan(b) : a == b; };
    for (const auto& row : rows) {
        TrackReading reading = read(point(row.inside));
        ASSERT_EQ(reading.tracks.points.size(), 1u) << row.inside;
        const TrackPoint& p = reading.tracks.points[0];
        const std::tuple<const char*, double, double> figures[] = {{"elevation", p.elevation, row.elevation},
                                                                   {"speed", p.speed, row.speed},
                                                                   {"heart rate", p.heartRate, row.heartRate},
                                                                   {"cadence", p.cadence, row.cadence},
                                                                   {"power", p.power, row.power},
                                                                   {"temperature", p.temperature, row.temperature},
                                                                   {"distance", p.distance, row.distance}};
        for (const auto& [name, found, wanted] : figures)
            EXPECT_TRUE(same(found, wanted)) << name << " is " << found << " instead of " << wanted << row.inside;
        EXPECT_EQ(p.latitude, 47.5) << row.inside;
        EXPECT_EQ(reading.tracks.timesUnreadable, 0u) << row.inside;
    }
    for (auto [place, onEarth] : {std::pair("lat='90' lon='-180'", true), std::pair("lat='-90' lon='180'", true),
                                  std::pair("lat='91' lon='8'", false), std::pair("lat='8' lon='180.5'", false)}) {
        Tracks tracks = read(gpx("<trk><trkseg><trkpt " + std::string(place) + "/></trkseg></trk>")).tracks;
        EXPECT_EQ(std::isnan(tracks.points[0].longitude), !onEarth) << place;
    }
}

TEST(Tracks, partsOfATrainingCentreFile)
{
    std::string point = "<Trackpoint><Time>2020-01-01T10:00:00Z</Time><Position><LatitudeDegrees>1</LatitudeDegrees>"
                        "<LongitudeDegrees>2</LongitudeDegrees></Position><DistanceMeters>5</DistanceMeters>"
                        "<HeartRateBpm><Value>140</Value></HeartRateBpm><Cadence>80</Cadence><Extensions><TPX>"
                        "<Watts>200</Watts></TPX></Extensions></Trackpoint>";
    std::string track = "<Track>" + point + point + "</Track>";
    TrackReading reading =
        read("<TrainingCenterDatabase><Folders/><Activities><MultiSportSession><FirstSport><Activity Sport=\"Running\">"
             "<Lap><Cadence>70</Cadence>" +
             track + track +
             "</Lap><Lap/></Activity></FirstSport><Activity "
             "Sport='Biking'><Lap>" +
             track +
             "<Track/></Lap></Activity></MultiSportSession></Activities>"
             "</TrainingCenterDatabase>");
    const Tracks& tracks = reading.tracks;
    ASSERT_EQ(tracks.points.size(), 6u);
    EXPECT_EQ(tracks.points[5].power, 200);
    EXPECT_EQ(tracks.points[5].heartRate, 140);
    EXPECT_EQ(tracks.points[5].cadence, 80);
    EXPECT_EQ(tracks.points[5].distance, 5);
    ASSERT_EQ(tracks.legs.size(), 2u);
    EXPECT_EQ(tracks.legs[1].first, 4u);
    EXPECT_EQ(tracks.legs[1].sport, "Biking");
    EXPECT_EQ(tracks.laps, (std::vector<size_t>{0, 4, 4}));
    EXPECT_EQ(tracks.segments, (std::vector<size_t>{0, 2, 4}));
    EXPECT_EQ(tracks.empty, 1u);
    EXPECT_FALSE(tracks.planned);
}

TEST(Tracks, whatIsNoTrackIsRefused)
{
    std::string good = point("");
    const struct {
        std::string text;
        TrackResult result;
    } rows[] = {
        {good, TrackResult::ok},
        {gpx("<rte><name/><rtept lat='1' lon='2'/></rte>"), TrackResult::ok},
        {"<TrainingCenterDatabase><Courses><Course><Track><Trackpoint/></Track></Course></Courses></"
         "TrainingCenterDatabase>",
         TrackResult::ok},
        {gpx("<wpt lat='1' lon='2'/>"), TrackResult::empty},
        {"<kml/>", TrackResult::otherRoot},
        {"", TrackResult::notWellFormed},
        {good.substr(0, good.size() - 3), TrackResult::notWellFormed},
        {good + "<more/>", TrackResult::notWellFormed},
        {"<gpx><b:trk/></gpx>", TrackResult::notWellFormed},
        {"<!DOCTYPE gpx [<!ENTITY a 'aaaa'>]>" + good, TrackResult::doctype},
        {gpx(repeated("<a>", 99) + repeated("</a>", 99)), TrackResult::empty},
        {gpx(repeated("<a>", 100) + repeated("</a>", 100)), TrackResult::tooDeep},
    };
    for (const auto& row : rows)
        EXPECT_EQ(read(row.text).result, row.result) << row.text.substr(0, 60);
    for (int planned : {1, 2}) {
        Tracks tracks = read(rows[planned].text).tracks;
        EXPECT_TRUE(tracks.planned) << planned;
        EXPECT_EQ(tracks.points.size(), 1u) << planned;
    }
}

TEST(Tracks, everyEncodingAndPacking)
{
    std::string named = gpx("<trk><type>\xC3\xA4\xE2\x82\xAC</type><trkseg><trkpt lat='1' lon='2'/></trkseg></trk>");
    std::string ascii = gpx("<trk><type>ride~</type><trkseg><trkpt lat='1' lon='2'/></trkseg></trk>");
    auto declared = [](const char* encoding, const char* sport) {
        return bytesOf("<?xml version='1.0' encoding='" + std::string(encoding) + "'?>" +
                       gpx("<trk><type>" + std::string(sport) + "</type><trkseg><trkpt/></trkseg></trk>"));
    };
    std::string marks; // of Windows, where ISO 8859-1 has none
    for (int c = 0x80; c < 0xA0; ++c)
        marks += static_cast<char>(c);
    Bytes two = zipped(bytesOf(named.substr(0, 50)));
    Bytes rest = zipped(bytesOf(named.substr(50)));
    two.insert(two.end(), rest.begin(), rest.end());
    Bytes trailed = two;
    trailed.insert(trailed.end(), 20, 'x');
    const struct {
        const char* name;
        Bytes bytes;
        const char* sport;
    } rows[] = {
        {"plain", bytesOf(named), "\xC3\xA4\xE2\x82\xAC"},
        {"marked", bytesOf("\xEF\xBB\xBF" + named), "\xC3\xA4\xE2\x82\xAC"},
        {"latin", declared("ISO-8859-1", "\xE4\x80"), "\xC3\xA4\xC2\x80"},
        {"windows", declared("Windows-1252", ("\xE4" + marks).c_str()), "ä€�‚ƒ„…†‡ˆ‰Š‹Œ�Ž��‘’“”•–—˜™š›œ�žŸ"},
        {"utf-16", utf16(ascii, false, true), "ride\xE2\x82\xAC"},
        {"utf-16, other end", utf16(ascii, true, true), "ride\xE2\x82\xAC"},
        {"utf-16, unmarked", utf16("<?xml version='1.0'?>" + ascii, false, false), "ride\xE2\x82\xAC"},
        {"packed", zipped(bytesOf(named)), "\xC3\xA4\xE2\x82\xAC"},
        {"packed in two", two, "\xC3\xA4\xE2\x82\xAC"},
        {"packed, with something behind", trailed, "\xC3\xA4\xE2\x82\xAC"},
    };
    for (const auto& row : rows) {
        TrackReading reading = read(row.bytes);
        ASSERT_EQ(reading.result, TrackResult::ok) << row.name;
        EXPECT_EQ(reading.tracks.legs[0].sport, row.sport) << row.name;
    }
}

TEST(Tracks, brokenAndHugePackings)
{
    Bytes packed = zipped(bytesOf(point(repeated("<a:b/>", 20000))));
    EXPECT_EQ(read(packed).result, TrackResult::ok);
    TrackReading bomb = read(packed, 1000);
    EXPECT_EQ(bomb.fault, SourceFault::tooLarge);
    for (size_t cut : {size_t{2}, size_t{11}, packed.size() / 2, packed.size() - 1}) {
        TrackReading reading = read(Bytes(packed.begin(), packed.begin() + static_cast<std::ptrdiff_t>(cut)));
        EXPECT_EQ(reading.fault, SourceFault::damaged) << cut;
    }
    packed[packed.size() / 2] ^= 0x55;
    EXPECT_NE(read(packed).result, TrackResult::ok);
}

} // namespace torvane
