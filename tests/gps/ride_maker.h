// Rides made by the model itself: a known rider holds a known power at the pedals on a known course, sampled once a
// second. What the analysis predicts of such a ride must be that power again.
#pragma once

#include "fit/fit_builder.h"

#include "gps/gps_record.h"
#include "model/constants.h"
#include "model/model_fixture.h"
#include "rides/ride_step.h"

#include <cmath>
#include <cstdint>
#include <random>

namespace torvane {

struct MadeRide {
    double power = 200; // W, at the pedals
    int seconds = 1800;
    double foot = 300;      // m above the sea
    double hillHeight = 40; // m, of hills that follow one another
    double hillLength = 3000;
    double circle = 9000;     // m, once around
    double turnsAfter = 0;    // m straight on, and back; 0: around the circle
    double windSpeed = 0;     // m/s
    double windDirection = 0; // deg, where it comes from
    double temperature = 20;  // Cel
    Physics physics = Physics::classic;
    uint32_t start = 900000000; // FIT seconds
    // Noise of one sample, standard deviations
    double speedNoise = 0;    // m/s
    double altitudeNoise = 0; // m
    double positionNoise = 0; // m
};

inline Road roadOf(const MadeRide& ride, double distance)
{
    double phase = 2 * pi * distance / ride.hillLength;
    double around = std::fmod(360 * distance / ride.circle, 360);
    double straight = distance < ride.turnsAfter ? 0 : 180;
    return {.altitude = ride.foot + ride.hillHeight / 2 * (1 - std::cos(phase)),
            .rise = ride.hillHeight * pi / ride.hillLength * std::sin(phase),
            .heading = ride.turnsAfter > 0 ? straight : around};
}

// The rows that a load of the ride would leave, not rounded to the units of the file.
inline GpsRecords makeRide(const Model& model, const MadeRide& ride)
{
    std::mt19937 random(1);
    GpsRecords records(static_cast<size_t>(ride.seconds));
    Place place;
    Weather weather = {ride.temperature, ride.windSpeed, ride.windDirection, ride.physics};
    for (size_t i = 0; i < records.size(); ++i) {
        GpsRecord& record = records[i];
        record.timestamp = ride.start + static_cast<uint32_t>(i);
        record.latitude = place.latitude + noise(random, ride.positionNoise) / metresPerDegree;
        record.longitude = place.longitude + noise(random, ride.positionNoise) / metresPerDegree;
        record.altitude = roadOf(ride, place.distance).altitude + noise(random, ride.altitudeNoise);
        record.distance = place.distance;
        record.speed = place.speed + noise(random, ride.speedNoise);
        for (int step = 0; step < 100; ++step)
            rideOn(model, roadOf(ride, place.distance), weather, ride.power, 0, 0.01, place);
    }
    return records;
}

// Shape of the file: one session, one lap, one activity; which fields a record has.
struct FileShape {
    bool bigEndian = false;
    bool timestamp = true, position = true, altitude = true, distance = true, speed = true;
    bool compressed = false;     // all records with compressed timestamp headers
    bool developerField = false; // two bytes behind the fields
    bool definedTwice = false;   // the record definition again in the middle
};

inline double inSemicircles(double degrees)
{
    return degrees * 2147483648.0 / 180;
}

inline FitBuilder fitOf(const GpsRecords& records, const FileShape& shape = {})
{
    struct Column {
        bool wanted;
        FitBuilder::Field field;
        double (*value)(const GpsRecord&);
    };
    const Column columns[] = {
        {shape.timestamp, {253, 4}, [](const GpsRecord& r) { return 1.0 * r.timestamp; }},
        {shape.position, {0, 4}, [](const GpsRecord& r) { return inSemicircles(r.latitude); }},
        {shape.position, {1, 4}, [](const GpsRecord& r) { return inSemicircles(r.longitude); }},
        {shape.altitude, {2, 2}, [](const GpsRecord& r) { return (r.altitude + 500) * 5; }},
        {shape.distance, {5, 4}, [](const GpsRecord& r) { return r.distance * 100; }},
        {shape.speed, {6, 2}, [](const GpsRecord& r) { return r.speed * 1000; }},
    };
    std::vector<FitBuilder::Field> fields;
    for (const Column& column : columns)
        if (column.wanted)
            fields.push_back(column.field);
    std::vector<FitBuilder::Field> developer;
    if (shape.developerField)
        developer.push_back({0, 2, 0});

    FitBuilder fit;
    fit.define(2, 0, {{0, 1}, {1, 2}}, shape.bigEndian).message(2, {4, 1});
    fit.define(0, 20, fields, shape.bigEndian, developer);
    for (size_t i = 0; i < records.size(); ++i) {
        const GpsRecord& record = records[i];
        if (shape.definedTwice && i == records.size() / 2)
            fit.define(0, 20, fields, shape.bigEndian, developer);
        std::vector<int64_t> values;
        for (const Column& column : columns)
            if (column.wanted)
                values.push_back(std::llround(column.value(record)));
        if (shape.developerField)
            values.push_back(0xBEEF);
        if (shape.compressed)
            fit.compressed(0, record.timestamp & 31, values);
        else
            fit.message(0, values);
    }
    uint32_t end = records.empty() ? 0 : records.back().timestamp;
    int64_t elapsed = static_cast<int64_t>(records.size()) * 1000;
    fit.define(3, 19, {{253, 4}, {2, 4}, {7, 4}, {8, 4}, {9, 4}, {13, 2}, {14, 2}, {25, 1}}, shape.bigEndian);
    fit.message(3, {end, 0, elapsed, elapsed, 0, 0, 0, 2});
    fit.define(4, 18, {{253, 4}, {2, 4}, {7, 4}, {8, 4}, {9, 4}, {14, 2}, {15, 2}, {5, 1}}, shape.bigEndian);
    fit.message(4, {end, 0, elapsed, elapsed, 0, 0, 0, 2});
    fit.define(5, 34, {{253, 4}, {0, 4}, {1, 2}}, shape.bigEndian).message(5, {end, elapsed, 1});
    return fit;
}

} // namespace torvane
