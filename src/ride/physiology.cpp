#include "ride/physiology.h"

#include "model/food.h"

#include <algorithm>

namespace torvane {

namespace {

// Whole units of a length that may be infinite, or no number.
int32_t wholePart(double value)
{
    constexpr double most = 2'000'000'000.0;
    return value > 0.0 ? static_cast<int32_t>(std::min(value, most)) : 0;
}

double durationByTime(RideLength& length, double velocity)
{
    double duration = length.intensionFirst[intensionByTime] * 60.0 + length.intensionSecond[intensionByTime];
    int32_t metres = wholePart(velocity * duration);
    length.intensionFirst[intensionByDistance] = metres / 1000;
    length.intensionSecond[intensionByDistance] = metres % 1000;
    return duration;
}

double durationByDistance(RideLength& length, double velocity)
{
    const double metres =
        length.intensionFirst[intensionByDistance] * 1000.0 + length.intensionSecond[intensionByDistance];
    double duration = velocity > 0.0 ? metres / velocity : 0.0; // standing still is no ride
    int32_t seconds = wholePart(duration);
    length.intensionFirst[intensionByTime] = seconds / 60;
    length.intensionSecond[intensionByTime] = seconds % 60;
    return duration;
}

} // namespace

int trainingLevelOf(const Model& model, double power)
{
    int level = 1;
    for (int bound = 1; bound < trainingLevelBoundCount; ++bound)
        level += power < model.trainingLevelBound[bound] ? 0 : 1;
    return level;
}

PhysiologyFigures physiologyOfSteadyRide(const Model& model, const PhysiologyInputs& in, double power, double velocity)
{
    RideLength length = in.length;
    bool byDistance = in.intensionCase == intensionByDistance;
    double duration = byDistance ? durationByDistance(length, velocity) : durationByTime(length, velocity);
    double positive = std::max(power, 0.0);
    PhysiologyFigures figures = physiologyOfRun(model, in, positive, positive, duration);
    figures.length = length;
    return figures;
}

PhysiologyFigures physiologyOfRun(const Model& model, const PhysiologyInputs& in, double meanPower,
                                  double normalizedPower, double time)
{
    double ftp = model.state.ftp;
    PhysiologyFigures p = {};
    p.meanPower = std::max(meanPower, 0.0);
    p.normalizedPower = normalizedPower;
    p.duration = time;
    p.variabilityIndex = p.meanPower > 0.0 ? normalizedPower / p.meanPower : 0.0;
    if (in.useFtp != 0) {
        p.level = trainingLevelOf(model, p.meanPower);
        p.intensityFactor = normalizedPower / ftp;
        p.trainingStressScore = normalizedPower * time * p.intensityFactor / (ftp * 3600.0) * 100.0;
    }
    p.kiloJoule = time * p.meanPower / 1000.0;
    p.kiloCalorie = p.kiloJoule * kiloCaloriePerKiloJoule;
    p.foodKiloCalorie = foodKiloCalorieFor(p.kiloJoule, in.energyEfficiency);
    return p;
}

} // namespace torvane
