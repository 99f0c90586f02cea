// The simulations: one run of each, and the slowest seek of each family, at the finest interval.
#include "made_files.h"

#include "core/parameter_block.h"
#include "ride/ride_run.h"

#include <benchmark/benchmark.h>

namespace torvane {

namespace {

struct RideCase {
    const char* name;
    int mode, target;
    double startKph, endKph, inclination;
    double asked;  // of what the target is about, as stored
    int limit = 0; // of a roll: 1 distance, 2 time; the ending velocity is the one wanted
};

void setAsked(ParameterBlock& in, int mode, double asked)
{
    in.ridePower[mode] = in.rideLegTime[mode] = in.rideDistance[mode] = in.rideAccele[mode] = in.rideForce[mode] =
        asked;
}

// One command's whole computation, its logged run included.
void simulate(benchmark::State& state, const RideCase& ride)
{
    Model model = plainModel();
    ParameterBlock in;
    setDefaults(in);
    in.rideMode = ride.mode;
    in.rideTarget = ride.target;
    in.accelerationIntervalMode = in.decelerationIntervalMode = 1;
    in.accelerationInterval = in.decelerationInterval = 0.01;
    in.rideStartVelocity[ride.mode] = ride.startKph / 3.6;
    in.rideEndVelocity[ride.mode] = ride.endKph / 3.6;
    in.rideVelocity[ride.mode] = ride.endKph / 3.6;
    in.rideInclination[ride.mode] = ride.inclination;
    in.inclinationLimit = ride.limit;
    setAsked(in, ride.mode, ride.asked);
    for (auto _ : state)
        benchmark::DoNotOptimize(runRide(model, takeRideInputs(in, {})).status);
}

const RideCase cases[] = {
    {"acceleration", rideAcceleration, 0, 0, 40, 0, 800},
    {"acceleration by mean power", rideAcceleration, 1, 0, 40, 0, 800},
    {"acceleration by sector time, long", rideAcceleration, 4, 0, 40, 0, 100},
    {"acceleration by distance", rideAcceleration, 5, 0, 40, 0, 100},
    {"acceleration that is never met", rideAcceleration, 1, 47.67, 194.99, 0, 338},
    {"deceleration", rideDeceleration, 0, 70, 30, 0, 0},
    {"deceleration by mean power", rideDeceleration, 1, 70, 30, 0, 50},
    {"deceleration by ending velocity, long", rideDeceleration, 2, 31.94, 0.1, -0.47, 0},
    {"deceleration by sector time", rideDeceleration, 3, 70, 30, 0, 50},
    {"pattern braking", ridePatternBraking, 0, 70, 30, 0, -30},
    {"critical full braking", ridePatternBraking, 1, 70, 30, 0, -30},
    {"roll on a slope", rideInclinationAndVelocity, 0, 0, 40, -7, 890, 2},
    {"slope by time, long", rideInclinationAndVelocity, 1, 0, 200, 0, 890, 2},
    {"slope by distance, long", rideInclinationAndVelocity, 1, 0, 190, 0, 50000, 1},
};

int registerRides()
{
    for (const RideCase& ride : cases)
        benchmark::RegisterBenchmark((std::string("ride/") + ride.name).c_str(), simulate, ride)
            ->Unit(benchmark::kMillisecond);
    return 0;
}
const int registered = registerRides();

} // namespace

} // namespace torvane
