// Small rides for hostile changes: between them they reach every tool and both byte orders.
#include "targets.h"

namespace torvane {

namespace {

using Fields = std::vector<FitBuilder::Field>;

constexpr int64_t start = 1'000'000'000; // FIT seconds

// Parts that a seed is put together from; each defines what it needs on local types of its own.
struct RideFile {
    bool bigEndian = false;
    FitBuilder fit = {};
    int64_t time = start;
    int64_t distance = 0; // 1/100 m

    void begin()
    {
        fit.define(0, 0, {{0, 1, 0}, {1, 2, 0x84}, {4, 4, 0x86}}, bigEndian).message(0, {4, 1, start});
    }
    // Positions, altitude, distance and speed; more fields as asked for.
    void defineRecords(const Fields& more = {}, const Fields& developer = {})
    {
        Fields fields = {{253, 4, 0x86}, {0, 4, 0x85}, {1, 4, 0x85}, {2, 2, 0x84}, {5, 4, 0x86}, {6, 2, 0x84}};
        fields.insert(fields.end(), more.begin(), more.end());
        fit.define(1, 20, fields, bigEndian, developer);
    }
    void records(int count, const std::vector<int64_t>& more = {}, bool compressed = false)
    {
        for (int i = 0; i < count; i++, time++, distance += 800) {
            std::vector<int64_t> values = {time, 500'000'000 + distance, 100'000'000, 2600 + i, distance, 8000};
            values.insert(values.end(), more.begin(), more.end());
            compressed ? fit.compressed(1, static_cast<int>(time & 31), values) : fit.message(1, values);
        }
    }
    // Of a lap or a session, since a time.
    void summary(int local, int message, int sportField, int64_t from, bool define)
    {
        if (define)
            fit.define(local, message,
                       {{253, 4, 0x86}, {2, 4, 0x86}, {7, 4, 0x86}, {8, 4, 0x86}, {9, 4, 0x86}, {sportField, 1, 0}},
                       bigEndian);
        fit.message(local, {time, from, (time - from) * 1000, (time - from) * 1000, distance, 2});
    }
    void lap(int64_t from, bool define = true)
    {
        summary(2, 19, 25, from, define);
    }
    void session(int64_t from, bool define = true)
    {
        summary(3, 18, 5, from, define);
    }
    void activity(int sessions)
    {
        fit.define(4, 34, {{253, 4, 0x86}, {0, 4, 0x86}, {1, 2, 0x84}, {5, 4, 0x86}}, bigEndian);
        fit.message(4, {time, (time - start) * 1000, sessions, time + 3600});
    }
};

Bytes plainRide()
{
    RideFile ride;
    ride.begin();
    ride.defineRecords();
    ride.records(12);
    ride.lap(start);
    ride.session(start);
    ride.activity(1);
    return ride.fit.file();
}

// Two of everything, so that it can be divided; big-endian, with a timer event between.
Bytes twoSessions()
{
    RideFile ride = {true};
    ride.begin();
    ride.defineRecords();
    ride.records(6);
    ride.lap(start);
    ride.session(start);
    ride.fit.define(5, 21, {{253, 4, 0x86}, {0, 1, 0}, {1, 1, 0}}, true).message(5, {ride.time, 0, 4});
    ride.defineRecords();
    ride.records(6);
    ride.lap(start + 6, false);
    ride.session(start + 6, false);
    ride.activity(2);
    return ride.fit.file(12);
}

// What the file already has is not predicted: heart rate, cadence, power, temperature; compressed times, developer
// data.
Bytes fullRecords()
{
    RideFile ride;
    ride.begin();
    ride.defineRecords({{3, 1, 2}, {4, 1, 2}, {7, 2, 0x84}, {13, 1, 1}}, {{0, 2, 0}});
    ride.records(8, {140, 85, 220, 18, 0xBEEF}, true);
    ride.lap(start);
    ride.session(start);
    ride.activity(1);
    return ride.fit.file();
}

// As a device leaves it that lost power: no summaries. The temperature is there, the rest is to be predicted.
Bytes recordsAlone()
{
    RideFile ride;
    ride.begin();
    ride.defineRecords({{13, 1, 1}});
    ride.records(10, {18});
    return ride.fit.file();
}

// Laps without a session, and a definition of records for each.
Bytes twoLaps()
{
    RideFile ride;
    ride.begin();
    for (int64_t from : {start, start + 5}) {
        ride.defineRecords({{3, 1, 2}});
        ride.records(5, {150});
        ride.lap(from);
    }
    ride.activity(1);
    return ride.fit.file();
}

} // namespace

std::vector<Bytes> seedRides()
{
    return {plainRide(), twoSessions(), fullRecords(), recordsAlone(), twoLaps()};
}

} // namespace torvane
