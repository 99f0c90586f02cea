#include "model/solver.h"

#include "model/drivetrain.h"
#include "model/power_search.h"

namespace torvane {

namespace {

// As powerAtVelocity, with the loads set already.
Solved stagePowerAt(const Model& model, Evaluation& e, int stage, double velocity)
{
    Solved required = resistanceAtVelocity(model, e, velocity);
    drivetrainFromThrust(model, e, velocity, required.value);
    return {stage == stageThrust ? required.value : stagePower(e, stage), required.status};
}

// The velocity may be below 0.
Solved searchVelocity(const Model& model, Evaluation& e, int stage, double wanted, double step)
{
    setLoads(model, e);
    PowerSearch search{firstVelocity, step};
    searchPower(search, wanted, [&](double velocity) { return stagePowerAt(model, e, stage, velocity); });
    return judged(search, wanted);
}

bool within(double value, double low, double high)
{
    return value >= low && value <= high;
}

} // namespace

ResultStatus toleranceClass(double value, double wanted)
{
    double wide = wanted == 0.0 ? 0.5 : wanted * 0.05;
    double narrow = wanted == 0.0 ? 0.1 : wanted * 0.01;
    // A negative wanted turns its bounds round, so that every value lies beyond one of them.
    if (value > wanted + wide || value < wanted - wide)
        return statusBeyondTolerance;
    return within(value, wanted - narrow, wanted + narrow) ? statusDone : statusLooseTolerance;
}

double requiredPower(double power, double cadence, double cadenceMax)
{
    return cadence == 0.0 ? 0.0 : cadenceMax * cadenceMax * power / (2.0 * cadenceMax - cadence) / cadence;
}

Solved judged(const PowerSearch& search, double wanted)
{
    ResultStatus status = search.status;
    if (search.velocity < 0.0)
        status |= statusTooShortPower;
    status |= search.exhausted ? statusNotConverged : toleranceClass(search.power, wanted);
    return {search.velocity, status};
}

Solved powerAtVelocity(const Model& model, Evaluation& e, int stage, double velocity)
{
    setLoads(model, e);
    return stagePowerAt(model, e, stage, velocity);
}

Solved velocityForPower(const Model& model, Evaluation& e, int stage, double power)
{
    Solved found = searchVelocity(model, e, stage, power, firstStep);
    return {found.value < 0.0 ? 0.0 : found.value, found.status};
}

Solved velocityFromPedaling(const Model& model, Evaluation& e, double power)
{
    return searchVelocity(model, e, stagePedaling, power, 6.0);
}

} // namespace torvane
