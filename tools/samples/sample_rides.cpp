#include "samples/samples.h"

#include "core/parameter_file.h"
#include "samples/phone_track.h"
#include "samples/planned_track.h"
#include "samples/sample_file.h"
#include "samples/sample_ride.h"

#include <iostream>

namespace torvane {

namespace {

constexpr uint32_t morning = 1087371000; // 15 June 2024, 07:30:00 UTC
constexpr uint32_t day = 86400, hour = 3600;

// Up a valley, over a pass and down the hairpins behind it: one wait at a crossing, which the device records, and one
// rest on the pass, where it is paused.
RideTask valleyTask()
{
    std::vector<Leg> legs = {
        {1200, 0.3, 25, 150}, {1300, 0.4, -30, 175}, {2200, 1.2, 40, 185}, {900, 6.5, 60, 230}, {60, 5, 170, 230},
        {800, 7.5, -10, 235}, {60, 5, -170, 230},    {1300, 7.2, 30, 230}, {300, 2, 10, 190},
    };
    for (double turn : {165.0, -170.0, 160.0, -165.0, 170.0}) {
        legs.push_back({560, -7, turn > 0 ? 12.0 : -9.0, 0, 58});
        legs.push_back({40, -5, turn, 0, 22});
    }
    legs.insert(legs.end(), {{900, -6.5, -20, 0, 62}, {1200, -2.5, 15, 120, 60}, {2800, -0.3, -45, 190}});
    return {.start = morning,
            .latitude = 46.58,
            .longitude = 8.32,
            .altitude = 520,
            .heading = 75,
            .weather = {.temperature = 19},
            .legs = legs,
            .stops = {{1200, 35, false}, {8120, 180, true}}};
}

Bytes valley(const Model& model)
{
    return activityFile(ride(model, valleyTask()), {.lapEnds = {4700, 8120}});
}

// Rolling hills against a breeze, with a power meter at the pedals.
Bytes hills(const Model& model)
{
    RideTask task = {.start = morning + 3 * day,
                     .latitude = 47.31,
                     .longitude = 7.92,
                     .altitude = 410,
                     .heading = 20,
                     .weather = {.temperature = 16, .windSpeed = 2, .windDirection = 10, .physics = Physics::ofTheRoad},
                     .legs = {},
                     .stops = {}};
    for (int hill = 0; hill < 4; ++hill) {
        task.legs.push_back({500, 4.0 + hill, 35, 250});
        task.legs.push_back({250, 0, -50, 200});
        task.legs.push_back({550, -3.5 - hill, 30, 120, 55});
        task.legs.push_back({400, 0.2, -20, 210});
    }
    return activityFile(ride(model, task), {.powerMeter = true, .lapEnds = {1700, 3400, 5100}});
}

// Three traffic lights on flat streets, with the motor's help.
Bytes commute(const Model& model)
{
    RideTask task = {.start = morning + 9 * day,
                     .latitude = 47.05,
                     .longitude = 7.61,
                     .altitude = 445,
                     .heading = 180,
                     .weather = {.temperature = 14, .windSpeed = 1, .windDirection = 250},
                     .legs = {{650, 0.1, 0, 90},
                              {15, 0, 90, 60, 15},
                              {900, -0.2, 5, 95},
                              {15, 0, -90, 60, 15},
                              {1100, 0.3, -8, 100},
                              {400, 0, 20, 95}},
                     .stops = {{420, 28, false}, {1500, 40, false}, {2400, 22, false}}};
    return activityFile(ride(model, task), {});
}

RideTask lakeTask(uint32_t start)
{
    return {.start = start,
            .latitude = 47.21,
            .longitude = 7.22,
            .altitude = 432,
            .heading = 130,
            .weather = {.temperature = 21},
            .legs = {{700, 0.5, 30, 190}, {500, -0.6, -50, 180}, {700, 0.3, 60, 200}, {600, -0.2, -35, 195}},
            .stops = {}};
}

// One ride in two files: the device was switched off at the coffee stop.
Bytes firstHalf(const Model& model)
{
    return activityFile(ride(model, lakeTask(morning + 14 * day)), {});
}

Bytes secondHalf(const Model& model)
{
    RideTask task = lakeTask(morning + 14 * day + hour / 2);
    task.latitude = 47.197;
    task.longitude = 7.245;
    task.heading = 310;
    return activityFile(ride(model, task), {});
}

// The device lost power before it could write its summaries.
Bytes noLaps(const Model& model)
{
    return activityFile(ride(model, lakeTask(morning + 20 * day)), {.summaries = false});
}

// The clock is a day and two hours late.
Bytes wrongClock(const Model& model)
{
    return activityFile(ride(model, lakeTask(morning + 21 * day)), {.clockError = day + 2 * hour});
}

// Once around after work: a light, a hill, and home.
RideTask eveningTask(uint32_t start)
{
    return {.start = start,
            .latitude = 47.38,
            .longitude = 8.17,
            .altitude = 390,
            .heading = 250,
            .weather = {.temperature = 17},
            .legs = {{600, 0.2, 10, 170},
                     {500, -0.3, 60, 180},
                     {700, 5.2, 45, 240},
                     {150, 0, 60, 200},
                     {900, -4.1, 50, 60, 50},
                     {750, 0.2, 70, 190}},
            .stops = {{600, 25, false}}};
}

// A device that writes a record only where something changes, in the wider fields.
Bytes smart(const Model& model)
{
    return activityFile(ride(model, eveningTask(morning + 30 * day)), {.wideFields = true, .longestStep = 7});
}

// A power meter that the device finds after a while and loses once.
Bytes meter(const Model& model)
{
    return activityFile(
        ride(model, eveningTask(morning + 31 * day)),
        {.powerMeter = true, .lapEnds = {1100}, .wideFields = true, .meterFound = 15, .meterLost = 300});
}

// Twice around on a windy day, for calibration: the rider sits lower than the profile says, and has less drag by 15
// percent.
Bytes loop(const Model& profile)
{
    Model model = profile;
    model.calibration.dragFactor = 0.85F;
    rebuildModel(model);
    RideTask task = {
        .start = morning + 40 * day,
        .latitude = 47.02,
        .longitude = 7.05,
        .altitude = 440,
        .heading = 30,
        .weather = {.temperature = 15, .windSpeed = 3, .windDirection = 240, .physics = Physics::ofTheRoad},
        .legs = {},
        .stops = {}};
    for (int round = 0; round < 2; ++round)
        for (double rise : {0.4, 1.1, -0.6, -0.9}) {
            task.legs.push_back({1200, rise, 60, 190 + 20 * rise});
            task.legs.push_back({1100, rise / 2, 30, 210});
        }
    return activityFile(ride(model, task), {.powerMeter = true, .lapEnds = {9200}});
}

Bytes phone(const Model& model)
{
    return phoneTrack(ride(model, eveningTask(morning + 32 * day)));
}

// The copy from the device broke off.
Bytes cut(const Model& model)
{
    Bytes file = smart(model);
    file.resize(file.size() * 9 / 10 - 5);
    return file;
}

// A planned tour over a pass: a valley, a climb with a ramp of 11 percent below its top, and hairpins down.
Bytes pass(const Model&)
{
    std::vector<Leg> legs = {{2500, 0.8, 40, 0}, {2600, 6.5, -50, 0}, {60, 5, 165, 0},  {1700, 7.5, 25, 0},
                             {60, 5, -170, 0},   {900, 7, 30, 0},     {500, 11, 10, 0}, {300, 1.5, 10, 0}};
    for (double turn : {165.0, -170.0, 160.0, -165.0}) {
        legs.push_back({850, -7.5, turn > 0 ? 14.0 : -12.0, 0});
        legs.push_back({35, -5, turn, 0});
    }
    legs.insert(legs.end(), {{1800, -6, -35, 0}, {3500, -0.8, 30, 0}});
    return plannedTrack(layOut(legs, {}, 640, 60), 46.62, 8.41, "Over the pass");
}

constexpr SampleFile rides[] = {
    {"valley.fit", "road.pro", valley},
    {"hills.fit", "climbing.pro", hills},
    {"commute.fit", "commuter.pro", commute},
    {"half-1.fit", "road.pro", firstHalf},
    {"half-2.fit", "road.pro", secondHalf},
    {"no-laps.fit", "road.pro", noLaps},
    {"wrong-clock.fit", "road.pro", wrongClock},
    {"smart.fit", "road.pro", smart},
    {"meter.fit", "road.pro", meter},
    {"loop.fit", "road.pro", loop},
    {"phone.gpx", "road.pro", phone},
    {"cut.fit", "road.pro", cut},
    {"pass.gpx", "road.pro", pass},
};

} // namespace

std::span<const SampleFile> sampleRides()
{
    return rides;
}

Bytes makeSampleRide(const SampleFile& ride, const std::string& profileFolder)
{
    ParameterBlock block;
    Model model;
    setDefaults(block);
    startModel(model.state, block);
    Screens screens;
    if (loadProfile(screens, model.state, model.calibration, block, profileFolder + "/" + ride.profile) != 0) {
        std::cerr << "there is no profile " << ride.profile << '\n';
        return {};
    }
    rebuildModel(model);
    return ride.make(model);
}

} // namespace torvane
