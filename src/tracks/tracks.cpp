#include "tracks/tracks.h"

#include "core/xml.h"
#include "tracks/track_time.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

namespace torvane {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr const char* blanks = " \t\r\n";
    size_t from = text.find_first_not_of(blanks);
    return from == std::string_view::npos ? std::string_view()
                                          : text.substr(from, text.find_last_not_of(blanks) - from + 1);
}

// A finite number and nothing else, whatever the locale.
double numberOf(std::string_view text)
{
    text = trimmed(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), value);
    bool whole = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return whole && std::isfinite(value) ? value : notThere;
}

bool equalsInAnyCase(std::string_view text, std::string_view small)
{
    return std::ranges::equal(text, small, {}, [](char c) { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; });
}

// What a point may tell, by the local names in common use.
enum class Quantity {
    none,
    time,
    latitude,
    longitude,
    elevation,
    distance,
    speed,
    heartRate,
    cadence,
    power,
    temperature
};

struct Named {
    std::string_view name;
    Quantity quantity;
};

// Elements of the formats themselves. GPX 1.0 has the speed in the point.
constexpr Named nativeNames[] = {
    {"time", Quantity::time},
    {"ele", Quantity::elevation},
    {"speed", Quantity::speed},
    {"Time", Quantity::time},
    {"LatitudeDegrees", Quantity::latitude},
    {"LongitudeDegrees", Quantity::longitude},
    {"AltitudeMeters", Quantity::elevation},
    {"DistanceMeters", Quantity::distance},
    {"Value", Quantity::heartRate},
    {"Cadence", Quantity::cadence},
};

// Elements of extensions, in small letters.
constexpr Named extensionNames[] = {
    {"hr", Quantity::heartRate},      {"heartrate", Quantity::heartRate}, {"heartratebpm", Quantity::heartRate},
    {"cad", Quantity::cadence},       {"cadence", Quantity::cadence},     {"runcadence", Quantity::cadence},
    {"power", Quantity::power},       {"watts", Quantity::power},         {"powerinwatts", Quantity::power},
    {"atemp", Quantity::temperature}, {"temp", Quantity::temperature},    {"speed", Quantity::speed},
    {"distance", Quantity::distance},
};

Quantity nativeQuantity(std::string_view name)
{
    const Named* found = std::ranges::find(nativeNames, name, &Named::name);
    return found == std::end(nativeNames) ? Quantity::none : found->quantity;
}

Quantity extensionQuantity(std::string_view name)
{
    const Named* found =
        std::ranges::find_if(extensionNames, [&](const Named& row) { return equalsInAnyCase(name, row.name); });
    return found == std::end(extensionNames) ? Quantity::none : found->quantity;
}

template <class Number>
void setFirst(Number& field, double value)
{
    if (std::isnan(field))
        field = static_cast<Number>(value);
}

void setQuantity(TrackPoint& point, Quantity quantity, double value)
{
    switch (quantity) {
    case Quantity::latitude:
        return setFirst(point.latitude, value);
    case Quantity::longitude:
        return setFirst(point.longitude, value);
    case Quantity::elevation:
        return setFirst(point.elevation, value);
    case Quantity::distance:
        return setFirst(point.distance, value);
    case Quantity::speed:
        return setFirst(point.speed, value);
    case Quantity::heartRate:
        return setFirst(point.heartRate, value);
    case Quantity::cadence:
        return setFirst(point.cadence, value);
    case Quantity::power:
        return setFirst(point.power, value);
    case Quantity::temperature:
        return setFirst(point.temperature, value);
    case Quantity::time:
    case Quantity::none:
        return;
    }
}

// What an extension tells counts where the format's own element is missing, whichever comes first.
template <class Number>
void fill(Number& field, Number other)
{
    if (std::isnan(field))
        field = other;
}

void fillFrom(TrackPoint& point, const TrackPoint& extensions)
{
    fill(point.distance, extensions.distance);
    fill(point.speed, extensions.speed);
    fill(point.heartRate, extensions.heartRate);
    fill(point.cadence, extensions.cadence);
    fill(point.power, extensions.power);
    fill(point.temperature, extensions.temperature);
}

void keepPositionWhole(TrackPoint& point)
{
    bool onEarth = std::abs(point.latitude) <= 90 && std::abs(point.longitude) <= 180;
    if (!onEarth)
        point.latitude = point.longitude = notThere;
}

// Where a document stands.
enum class Place { other, root, leg, legSport, lap, segment, point, native, nativeGroup, extensions, route };

struct OpenElement {
    Place place;
    bool hasChildren = false;
};

class Reader final : public XmlEvents {
public:
    TrackReading& reading;
    explicit Reader(TrackReading& into) : reading(into) {}

    void onStart(std::string_view name, std::span<const XmlAttribute> attributes) override
    {
        if (!open.empty())
            open.back().hasChildren = true;
        Place place = open.empty() ? rootPlace(name) : childPlace(open.back().place, name);
        open.push_back({place});
        text.clear();
        enter(place, name, attributes);
    }

    void onText(std::string_view piece) override
    {
        // No number or name is that long.
        constexpr size_t longest = 4096;
        if (!open.empty() && isRead(open.back().place) && text.size() < longest)
            text.append(piece.substr(0, longest));
    }

    void onEnd(std::string_view name) override
    {
        OpenElement ended = open.back();
        open.pop_back();
        leave(ended, name);
        text.clear();
    }

    bool hasRoot = false;

private:
    static bool isRead(Place place)
    {
        return place == Place::native || place == Place::extensions || place == Place::legSport;
    }

    bool isGpx() const
    {
        return reading.tracks.format == TrackFormat::gpx;
    }

    Place rootPlace(std::string_view name)
    {
        hasRoot = name == "gpx" || name == "TrainingCenterDatabase";
        reading.tracks.format = name == "gpx" ? TrackFormat::gpx : TrackFormat::tcx;
        return hasRoot ? Place::root : Place::other;
    }

    Place childPlace(Place parent, std::string_view name) const
    {
        if (parent == Place::extensions)
            return Place::extensions;
        if (parent == Place::point && equalsInAnyCase(name, "extensions"))
            return Place::extensions;
        return isGpx() ? gpxChild(parent, name) : tcxChild(parent, name);
    }

    static Place gpxChild(Place parent, std::string_view name)
    {
        if (parent == Place::root)
            return name == "trk" ? Place::leg : name == "rte" ? Place::route : Place::other;
        if (parent == Place::leg)
            return name == "trkseg" ? Place::segment : name == "type" ? Place::legSport : Place::other;
        if (parent == Place::segment && name == "trkpt")
            return Place::point;
        if (parent == Place::route && name == "rtept")
            return Place::point;
        return parent == Place::point ? Place::native : Place::other;
    }

    static Place tcxChild(Place parent, std::string_view name)
    {
        if (name == "Activity" || name == "Course")
            return Place::leg;
        if (parent == Place::leg && name == "Lap")
            return Place::lap;
        if ((parent == Place::lap || parent == Place::leg) && name == "Track")
            return Place::segment;
        if (parent == Place::segment && name == "Trackpoint")
            return Place::point;
        if (parent == Place::point)
            return name == "Position" || name == "HeartRateBpm" ? Place::nativeGroup : Place::native;
        // Folders, sessions of several sports and the like hold activities as well.
        return parent == Place::nativeGroup ? Place::native : Place::other;
    }

    void enter(Place place, std::string_view name, std::span<const XmlAttribute> attributes)
    {
        Tracks& tracks = reading.tracks;
        switch (place) {
        case Place::leg:
            tracks.legs.push_back({tracks.points.size()});
            tracks.planned = tracks.planned || name == "Course";
            for (const XmlAttribute& attribute : attributes)
                if (attribute.name == "Sport")
                    tracks.legs.back().sport = attribute.value;
            break;
        case Place::lap:
            tracks.laps.push_back(tracks.points.size());
            break;
        case Place::segment:
        case Place::route:
            segmentStart = pointsOf(place).size();
            break;
        case Place::point:
            point = {};
            extensions = {};
            takePosition(attributes);
            break;
        default:
            break;
        }
    }

    std::vector<TrackPoint>& pointsOf(Place place)
    {
        return place == Place::route ? routePoints : reading.tracks.points;
    }

    void takePosition(std::span<const XmlAttribute> attributes)
    {
        for (const XmlAttribute& attribute : attributes) {
            if (attribute.name == "lat")
                point.latitude = numberOf(attribute.value);
            if (attribute.name == "lon")
                point.longitude = numberOf(attribute.value);
        }
    }

    void leave(const OpenElement& ended, std::string_view name)
    {
        switch (ended.place) {
        case Place::native:
            takeNative(nativeQuantity(name));
            break;
        case Place::extensions:
            if (!ended.hasChildren)
                takeExtension(extensionQuantity(name));
            break;
        case Place::legSport:
            reading.tracks.legs.back().sport = trimmed(text);
            break;
        case Place::point:
            fillFrom(point, extensions);
            keepPositionWhole(point);
            pointsOf(open.back().place).push_back(point);
            break;
        case Place::segment:
            endSegment(reading.tracks.segments);
            break;
        default:
            break;
        }
    }

    void takeNative(Quantity quantity)
    {
        if (quantity == Quantity::time)
            takeTime();
        else if (double value = numberOf(text); !std::isnan(value))
            setQuantity(point, quantity, value);
    }

    void takeExtension(Quantity quantity)
    {
        if (double value = numberOf(text); !std::isnan(value))
            setQuantity(extensions, quantity, value);
    }

    void takeTime()
    {
        std::string_view written = trimmed(text);
        if (written.empty())
            return;
        if (std::optional<TrackTime> time = readTrackTime(written)) {
            point.time = time->seconds;
            reading.tracks.timesWithoutZone += !time->hasZone;
        } else {
            ++reading.tracks.timesUnreadable;
        }
    }

    void endSegment(std::vector<size_t>& segments)
    {
        if (reading.tracks.points.size() == segmentStart)
            ++reading.tracks.empty;
        else
            segments.push_back(segmentStart);
    }

    std::vector<OpenElement> open;
    std::string text;
    TrackPoint point, extensions;
    size_t segmentStart = 0;

public:
    std::vector<TrackPoint> routePoints;
};

TrackResult resultOf(XmlResult result)
{
    switch (result) {
    case XmlResult::ok:
        return TrackResult::ok;
    case XmlResult::sourceFault:
        return TrackResult::sourceFault;
    case XmlResult::notWellFormed:
        return TrackResult::notWellFormed;
    case XmlResult::doctype:
        return TrackResult::doctype;
    case XmlResult::tooDeep:
    case XmlResult::tooManyAttributes:
        return TrackResult::tooDeep;
    case XmlResult::noParser:
        return TrackResult::noParser;
    }
    return TrackResult::notWellFormed;
}

} // namespace

TrackReading readTracks(NextPiece pieces)
{
    TrackReading reading;
    Reader reader(reading);
    reading.result = resultOf(readXml(asUtf8(std::move(pieces)), reader, reading.fault));
    if (reading.result != TrackResult::ok)
        return reading;
    if (!reader.hasRoot) {
        reading.result = TrackResult::otherRoot;
    } else if (reading.tracks.points.empty()) {
        reading.tracks.points = std::move(reader.routePoints);
        reading.tracks.planned = true;
        reading.result = reading.tracks.points.empty() ? TrackResult::empty : TrackResult::ok;
    }
    return reading;
}

} // namespace torvane
