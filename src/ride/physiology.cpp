#include "ride/physiology.h"

#include "core/parameter_block.h"
#include "model/derived.h"
#include "model/run_state.h"

#include <algorithm>
#include <cstdint>

namespace torvane {

PhysiologyFigures physiology;

namespace {

constexpr double kiloCaloriePerKiloJoule = 0.238846;

enum IntensionCase : int { timeBased, distanceBased };

// Whole units of a length that may be infinite, or no number.
int32_t wholePart(double value)
{
    constexpr double most = 2'000'000'000.0;
    return value > 0.0 ? static_cast<int32_t>(std::min(value, most)) : 0;
}

double durationByTime()
{
    RunState& r = runState;
    const double duration = r.intensionFirst[timeBased] * 60.0 + r.intensionSecond[timeBased];
    const int32_t metres = wholePart(r.velocity * duration);
    r.intensionFirst[distanceBased] = metres / 1000;
    r.intensionSecond[distanceBased] = metres % 1000;
    return duration;
}

double durationByDistance()
{
    RunState& r = runState;
    const double metres = r.intensionFirst[distanceBased] * 1000.0 + r.intensionSecond[distanceBased];
    const double duration = r.velocity > 0.0 ? metres / r.velocity : 0.0; // standing still is no ride
    const int32_t seconds = wholePart(duration);
    r.intensionFirst[timeBased] = seconds / 60;
    r.intensionSecond[timeBased] = seconds % 60;
    return duration;
}

void compute(double meanPower, double normalizedPower, double duration)
{
    PhysiologyFigures& p = physiology;
    p = {};
    p.meanPower = std::max(meanPower, 0.0);
    p.normalizedPower = normalizedPower;
    p.duration = duration;
    p.variabilityIndex = p.meanPower > 0.0 ? normalizedPower / p.meanPower : 0.0;
    if (runState.useFtp == 1) {
        p.level = trainingLevelOf(p.meanPower);
        p.intensityFactor = normalizedPower / modelState.ftp;
        p.trainingStressScore = normalizedPower * duration * p.intensityFactor / (modelState.ftp * 3600.0) * 100.0;
    }
    p.kiloJoule = duration * p.meanPower / 1000.0;
    p.kiloCalorie = p.kiloJoule * kiloCaloriePerKiloJoule;
    p.foodKiloCalorie = p.kiloCalorie / runState.energyEfficiency;
}

} // namespace

int trainingLevelOf(double power)
{
    int level = 1;
    for (int bound = 1; bound < trainingLevelBoundCount; ++bound) {
        level += power < trainingLevelBound[bound] ? 0 : 1;
    }
    return level;
}

void physiologyOfSteadyRide()
{
    const double power = std::max(runState.pedalingPower, 0.0);
    compute(power, power, runState.intensionCase == distanceBased ? durationByDistance() : durationByTime());
}

void physiologyOfRun(double normalizedPower)
{
    compute(runState.meanStagePower[stagePedaling], normalizedPower, runState.sectorTime);
}

} // namespace torvane
