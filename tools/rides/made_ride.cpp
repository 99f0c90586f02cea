#include "rides/made_ride.h"

#include "model/constants.h"
#include "rides/ride_step.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// A value that wanders about 0 and forgets itself over some seconds.
struct Wander {
    double deviation, memory, value = 0;

    double next(std::mt19937& random)
    {
        double keeps = std::exp(-1 / memory);
        value = value * keeps + noise(random, deviation * std::sqrt(1 - keeps * keeps));
        return value;
    }
};

struct Waves {
    double rise[2], length[2]; // m
};

Waves wavesOf(Terrain terrain, double leg)
{
    switch (terrain) {
    case Terrain::flat:
        return {{2, 1}, {leg, leg / 5}};
    case Terrain::rolling:
        return {{12, 6}, {leg / 4, leg / 9}};
    default:
        return {{70, 12}, {leg, leg / 5}};
    }
}

Road roadAt(const MeteredRide& made, double distance)
{
    Waves waves = wavesOf(made.terrain, made.legLength);
    bool back = made.way == Way::thereAndBack && std::fmod(distance, 2 * made.legLength) >= made.legLength;
    double along = std::fmod(distance, made.legLength), turn = 2 * pi * along / made.legLength;
    if (back)
        along = made.legLength - along;
    Road road = {100, 0, 70 + 25 * std::sin(2 * pi * along / made.legLength * 3)};
    if (made.way == Way::loop)
        road.heading = 180 / pi * (turn + 0.6 * std::sin(3 * turn));
    for (int i : {0, 1}) {
        double angle = 2 * pi * along / waves.length[i];
        road.altitude += waves.rise[i] * (1 - std::cos(angle));
        road.rise += waves.rise[i] * std::sin(angle) * 2 * pi / waves.length[i] * (back ? -1 : 1);
    }
    road.heading += back ? 180 : 0;
    return road;
}

double pedalled(const MeteredRide& made, const Road& road, double speed, double mood)
{
    bool coasts = road.rise < -0.02 && speed > 12;
    return coasts ? 0 : std::max(0.0, made.power * (1 + 3 * std::clamp(road.rise, -0.1, 0.1) + mood));
}

Model ridersModel(const Model& profile, const MadeRider& rider)
{
    Model model = profile;
    model.calibration = {static_cast<float>(rider.factor), 0, 0, 0};
    for (double& coefficient : model.state.rollingCoefficient)
        coefficient *= rider.rolling;
    model.state.humanWeight += rider.load;
    rebuildModel(model);
    return model;
}

} // namespace

MeasuredRide makeMeteredRide(const Model& profile, const MadeRider& rider, const MeteredRide& made)
{
    constexpr double dt = 0.5, fastest = 15;
    std::mt19937 random(made.seed);
    Model model = ridersModel(profile, rider);
    double meter = 1 + noise(random, made.meterError);
    Wander gust = {0.3, 20}, mood = {0.15, 40}, height = {made.altitudeNoise, 30}, east = {3, 20}, north = {3, 20};
    Weather weather = {18, 0, made.windDirection, Physics::ofTheRoad};
    Place place;
    MeasuredRide ride;
    ride.temperature = weather.temperature + noise(random, made.thermometerError);
    for (int second = 0; second < made.seconds; ++second) {
        weather.windSpeed = made.windSpeed * (1 + gust.next(random));
        double turnedIn = made.legLength - std::fmod(place.distance, made.legLength);
        bool turns = made.way == Way::thereAndBack && turnedIn < 40;
        double feeling = mood.next(random), power = 0;
        for (double t = 0; t < 1; t += dt) {
            Road road = roadAt(made, place.distance);
            bool brakes = place.speed > fastest || (turns && place.speed > 4);
            double given = brakes ? 0 : pedalled(made, road, place.speed, feeling);
            power += given * dt;
            rideOn(model, road, weather, given, brakes ? 1.5 : 0, dt, place);
        }
        double altitude = roadAt(made, place.distance).altitude + height.next(random);
        ride.seconds.push_back(
            {static_cast<uint32_t>(1000000000 + second), place.latitude + north.next(random) / metresPerDegree,
             place.longitude + east.next(random) / metresPerDegree, altitude, place.speed + noise(random, 0.1),
             std::round(power * meter), riddenCadence(model, place.speed)});
    }
    return ride;
}

MadeCase madeCase(unsigned i, double windSpeed)
{
    std::mt19937 random(1000 + i);
    auto between = [&](double least, double most) { return least + (most - least) * (random() / 4294967296.0); };
    MadeCase made;
    made.rider.factor = between(0.75, 1.4);
    made.rider.rolling = std::clamp(1 + noise(random, 0.2), 0.5, 1.5);
    made.rider.load = noise(random, 1);
    made.ride.terrain = static_cast<Terrain>(i % 3);
    made.ride.way = i / 3 % 2 == 0 ? Way::loop : Way::thereAndBack;
    made.ride.windSpeed = windSpeed;
    made.ride.windDirection = between(0, 360);
    made.ride.power = between(120, 240);
    made.ride.seed = i;
    return made;
}

} // namespace torvane
