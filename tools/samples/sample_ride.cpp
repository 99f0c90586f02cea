#include "samples/sample_ride.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr int stepsPerSecond = 50;
constexpr double slowest = 0.6;     // m/s, of a rider who is about to stop, or who pushes off
constexpr double coasts = 50 / 3.6; // m/s from which nobody pedals
constexpr double hardBraking = 4;   // m/s2

// An error that wanders: successive samples resemble each other, as those of a receiver do.
struct Drift {
    double deviation; // of one sample
    double memory;    // s
    double value = 0;

    double next(std::mt19937& random)
    {
        double kept = std::exp(-1 / memory);
        value = value * kept + noise(random, deviation * std::sqrt(1 - kept * kept));
        return value;
    }
};

struct Device {
    std::mt19937 random{20240615};
    Drift north{1.5, 25}, east{1.5, 25}; // m
    Drift height{0.7, 60};               // m, of a barometer
    double distance = 0;                 // m, counted from the speeds measured
    double heartRate = 85;               // bpm
};

struct Rider {
    const Model& model;
    const RideTask& task;
    Course course = layOut(task.legs, task.stops, task.altitude, task.heading);
    Place place = {.distance = 0, .speed = slowest, .latitude = task.latitude, .longitude = task.longitude};
    uint32_t time = task.start;
    double power = 0; // W, at the pedals in the last step

    double end() const
    {
        return static_cast<double>(course.size() - 1);
    }
};

// Nobody holds a power exactly, nor finds it at once from a standstill.
double intendedPower(const Rider& rider, double second)
{
    double speed = rider.place.speed;
    const CourseMetre& metre = metreAt(rider.course, rider.place.distance);
    if (speed > coasts || speed > metre.limit * 0.97)
        return 0;
    double swing = 1 + 0.07 * std::sin(second / 17) + 0.05 * std::sin(second / 5.3);
    return std::min(metre.power * swing, 10 + 70 * speed);
}

double airTemperature(const Rider& rider)
{
    double climbed = roadAt(rider.course, rider.place.distance).altitude - rider.task.altitude;
    return rider.task.weather.temperature - 0.0065 * climbed;
}

void rideStep(Rider& rider, double second)
{
    Place& place = rider.place;
    Weather weather = rider.task.weather;
    weather.temperature = airTemperature(rider);
    double over = place.speed - metreAt(rider.course, place.distance).limit;
    double braking = std::clamp(over * 3, 0.0, hardBraking);
    rider.power = intendedPower(rider, second);
    rideOn(rider.model, roadAt(rider.course, place.distance), weather, rider.power, braking, 1.0 / stepsPerSecond,
           place);
    place.speed = std::max(place.speed, slowest);
}

void rideSecond(Rider& rider)
{
    for (int step = 0; step < stepsPerSecond; ++step)
        rideStep(rider, rider.time - rider.task.start + static_cast<double>(step) / stepsPerSecond);
    rider.time++;
}

void measurePower(GpsRecord& record, const Rider& rider, Device& device, bool moving)
{
    double power = moving ? rider.power : 0;
    device.heartRate += (75 + 0.4 * power - device.heartRate) / 40;
    record.heartRate = device.heartRate;
    record.power = std::max(0.0, power * (1 + noise(device.random, 0.03)));
    record.cadence = power > 0 ? riddenCadence(rider.model, rider.place.speed) : 0;
}

GpsRecord measure(const Rider& rider, Device& device, bool moving)
{
    const Place& place = rider.place;
    GpsRecord record = {};
    record.timestamp = rider.time;
    record.latitude = place.latitude + device.north.next(device.random) / metresPerDegree;
    record.longitude = place.longitude + device.east.next(device.random) / (metresPerDegree * 0.7);
    record.altitude = roadAt(rider.course, place.distance).altitude + device.height.next(device.random);
    record.speed = moving ? std::max(0.0, place.speed + noise(device.random, 0.03)) : 0;
    record.distance = device.distance += record.speed;
    record.temperature = airTemperature(rider);
    measurePower(record, rider, device, moving);
    return record;
}

void stand(Rider& rider, Device& device, const RideStop& stop, RiddenTrack& track)
{
    uint32_t stopped = rider.time, resumed = rider.time + static_cast<uint32_t>(stop.seconds);
    rider.place.speed = slowest;
    if (stop.paused) {
        track.pauses.push_back({stopped, resumed});
        rider.time = resumed;
        return;
    }
    for (; rider.time < resumed; ++rider.time)
        track.records.push_back(measure(rider, device, false));
}

} // namespace

RiddenTrack ride(const Model& model, const RideTask& task)
{
    Rider rider = {model, task};
    Device device;
    RiddenTrack track;
    auto stop = task.stops.begin();
    while (rider.place.distance < rider.end()) {
        track.records.push_back(measure(rider, device, true));
        rideSecond(rider);
        if (stop != task.stops.end() && rider.place.distance >= stop->distance)
            stand(rider, device, *stop++, track);
    }
    return track;
}

} // namespace torvane
