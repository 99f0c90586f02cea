#include "plan/track_places.h"

#include "gps/activity.h"
#include "gps/gps_record.h"
#include "gps/prepare.h"
#include "gps/ride_source.h"
#include "gps/track_geometry.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace torvane {

namespace {

constexpr double touching = 100;       // m between two segments that belong together
constexpr double longestStep = 20'000; // m

bool hasPosition(const TrackPlace& place)
{
    return !std::isnan(place.latitude);
}

double metresBetween(const TrackPlace& from, const TrackPlace& to)
{
    return greatCircleDistance(from.latitude, from.longitude, to.latitude, to.longitude);
}

// What is no height of a road is missing.
double heightOf(double elevation)
{
    constexpr double most = 9000; // m
    return std::fabs(elevation) < most ? elevation : noPlace;
}

TrackPlace placeOf(const TrackPoint& point)
{
    return {point.latitude, point.longitude, heightOf(point.elevation), point.distance,
            static_cast<double>(point.power)};
}

TrackPlace placeOf(const RideSample& sample)
{
    TrackPlace place;
    if (sample.has(rideLatitude) && sample.has(rideLongitude)) {
        place.latitude = degreesOf(sample.values[rideLatitude]);
        place.longitude = degreesOf(sample.values[rideLongitude]);
    }
    if (sample.has(rideAltitude))
        place.height = metresOf(static_cast<uint16_t>(sample.values[rideAltitude]));
    if (sample.has(rideDistance))
        place.distance = sample.values[rideDistance] / 100.0;
    if (sample.has(ridePower))
        place.power = sample.values[ridePower];
    place.begins = sample.shifted;
    return place;
}

std::vector<TrackPlace> placesOf(const Tracks& tracks, CourseFindings& findings)
{
    std::vector<TrackPlace> places;
    places.reserve(tracks.points.size());
    for (const TrackPoint& point : tracks.points) {
        places.push_back(placeOf(point));
        findings.hasTimes = findings.hasTimes || !std::isnan(point.time);
    }
    for (size_t first : tracks.segments) // the first of each leg among them
        if (first < places.size())
            places[first].begins = true;
    return places;
}

// A recording is put in order first: held distances, strays, what a device loses.
StatusCode placesOf(const FitImage& image, std::vector<TrackPlace>& places, CourseFindings& findings)
{
    FitImage prepared = {};
    PrepareFindings found;
    if (StatusCode code = prepareActivity(image, {}, prepared, found))
        return code;
    Activity activity;
    if (StatusCode code = readActivity(prepared, activity, found))
        return code;
    findings.hasTimes = true;
    for (const RideSample& sample : activity.samples)
        places.push_back(placeOf(sample));
    return fitOk;
}

void dropPlaceless(std::vector<TrackPlace>& places, CourseFindings& findings)
{
    findings.pointsRead = places.size();
    findings.hasPlaces = std::ranges::any_of(places, hasPosition);
    auto placeless = [&](const TrackPlace& place) {
        return findings.hasPlaces ? !hasPosition(place) : std::isnan(place.distance);
    };
    bool begins = false; // what a dropped place began, the next one begins
    for (TrackPlace& place : places) {
        begins = begins || place.begins;
        if (!placeless(place))
            place.begins = std::exchange(begins, false);
    }
    findings.pointsWithoutPlace = std::erase_if(places, placeless);
}

// A position far off where the counted distance hardly moves is a stray one.
void dropStrays(std::vector<TrackPlace>& places, CourseFindings& findings)
{
    const TrackPlace* last = nullptr;
    auto strays = [&](const TrackPlace& place) {
        bool known = last && !place.begins && place.distance >= last->distance;
        bool off = known && metresBetween(*last, place) > 3 * (place.distance - last->distance) + touching;
        if (!off)
            last = &place;
        return off;
    };
    std::vector<TrackPlace> kept;
    for (const TrackPlace& place : places)
        if (!strays(place))
            kept.push_back(place);
    constexpr size_t most = 3; // who strays at every third place does not stray: the distance is wrong
    if (most * (places.size() - kept.size()) > places.size())
        return;
    findings.pointsWithoutPlace += places.size() - kept.size();
    places = std::move(kept);
}

// m along the positions, without what lies between segments.
double wayByPositions(const std::vector<TrackPlace>& places)
{
    double way = 0;
    for (size_t i = 1; i < places.size(); ++i)
        if (!places[i].begins)
            way += metresBetween(places[i - 1], places[i]);
    return way;
}

bool distancesRise(const std::vector<TrackPlace>& places)
{
    for (size_t i = 0; i < places.size(); ++i)
        if (std::isnan(places[i].distance) || (i > 0 && places[i].distance < places[i - 1].distance))
            return false;
    return true;
}

bool ownDistanceHolds(const std::vector<TrackPlace>& places, const CourseFindings& findings)
{
    if (!distancesRise(places))
        return false;
    double own = places.back().distance - places.front().distance;
    double way = findings.hasPlaces ? wayByPositions(places) : own;
    return own > 0 && own > 0.8 * way && own < 1.25 * way;
}

// Way of the course from one place to the next.
double stepBetween(const TrackPlace& from, TrackPlace& to, double own, CourseFindings& findings)
{
    double here = from.distance;
    double byPosition = findings.hasPlaces ? metresBetween(from, to) : own;
    double step = findings.ownDistance ? own : byPosition;
    if (to.begins) {
        ++findings.segments;
        if (byPosition > touching) {
            findings.gaps.push_back({here, byPosition});
            return 0;
        }
        to.begins = false;
    }
    if (step > longStep)
        findings.straights.push_back({here, step});
    return step;
}

StatusCode setDistances(std::vector<TrackPlace>& places, CourseFindings& findings)
{
    findings.ownDistance = ownDistanceHolds(places, findings);
    if (!findings.ownDistance && !findings.hasPlaces)
        return planWithoutPlaces;
    double own = places[0].distance;
    places[0].distance = 0;
    for (size_t i = 1; i < places.size(); ++i) {
        const TrackPlace& last = places[i - 1];
        double step = stepBetween(last, places[i], places[i].distance - own, findings);
        if (!(step <= longestStep))
            return planLeaps;
        own = places[i].distance;
        places[i].distance = last.distance + step;
    }
    return fitOk;
}

// Those that stand, or nearly. What power they had belongs to no way.
void thinOut(std::vector<TrackPlace>& places)
{
    std::vector<TrackPlace> kept = {places[0]};
    kept[0].begins = false;
    for (const TrackPlace& place : std::span(places).subspan(1))
        if (place.begins || place.distance >= kept.back().distance + leastWay)
            kept.push_back(place);
    if (places.back().distance > kept.back().distance)
        kept.push_back(places.back());
    places = std::move(kept);
}

} // namespace

StatusCode readPlaces(const std::string& path, std::vector<TrackPlace>& places, CourseFindings& findings,
                      Progress* progress)
{
    RideSource source;
    if (StatusCode code = openRideSource(path, source))
        return code;
    source.image.progress = progress;
    places.clear();
    if (source.isTrack)
        places = placesOf(source.tracks, findings);
    else if (StatusCode code = placesOf(source.image, places, findings))
        return code;
    dropPlaceless(places, findings);
    if (places.empty() && findings.pointsRead > 0)
        return planWithoutPlaces;
    if (findings.hasPlaces)
        dropStrays(places, findings);
    if (places.size() < 3)
        return planTooFewPoints;
    if (StatusCode code = setDistances(places, findings))
        return code;
    thinOut(places);
    return fitOk;
}

} // namespace torvane
