#include "model/chain_inverse.h"

#include "model/assist.h"

#include <cmath>
#include <limits>

namespace torvane {

namespace {

// A thrust power and how far the stage is above the wanted power there.
struct Trial {
    double thrust, excess;
};

// Where a chord between two sides of the answer meets 0; their middle where one is infinite.
double between(const Trial& low, const Trial& high)
{
    double chord = low.thrust - low.excess * (high.thrust - low.thrust) / (high.excess - low.excess);
    return chord > low.thrust && chord < high.thrust ? chord : (low.thrust + high.thrust) * 0.5;
}

// excessAt(thrust) rises from `low` on and is not below 0 at `most`. Regula falsi; the weight of an end that stays
// twice is halved. The last call is that of the answer.
template <class ExcessAt>
double rootOf(ExcessAt excessAt, Trial low, double most, double tolerance)
{
    constexpr int rounds = 200;
    Trial high = {most, excessAt(most)}, latest = high;
    bool wasLow = false;
    for (int round = 0; round < rounds && std::fabs(latest.excess) > tolerance; ++round) {
        double thrust = between(low, high);
        if (thrust == low.thrust || thrust == high.thrust)
            break;
        latest = {thrust, excessAt(thrust)};
        bool isLow = latest.excess < 0.0;
        (isLow ? low : high) = latest;
        if (round > 0 && isLow == wasLow)
            (isLow ? high : low).excess *= 0.5;
        wasLow = isLow;
    }
    return latest.thrust;
}

} // namespace

double thrustForStage(const Model& model, Evaluation& e, int stage, double power, double velocity, double cadence)
{
    if (!(power > 0.0 && velocity > 0.0 && cadence > 0.0)) {
        clearStages(e);
        clearAssist(e);
        return 0.0;
    }
    double wheelSpeed = radiansPerSecond(wheelRpmAt(model, velocity));
    double crankSpeed = radiansPerSecond(cadence);
    auto excessAt = [&](double thrust) {
        driveStagesFromThrust(model, e, velocity, thrust, wheelSpeed, crankSpeed);
        double found = stagePower(e, stage);
        // Beyond the torque that loses all power the signs turn; no power reaches so far.
        return found > 0.0 ? found - power : std::numeric_limits<double>::infinity();
    };
    double motor = model.state.motorLocation > motorNone ? model.state.maxEPower : 0.0;
    return rootOf(excessAt, {0.0, -power}, power + motor, power * 1e-12);
}

} // namespace torvane
