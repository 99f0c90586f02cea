#include "model/solver.h"

#include "core/parameter_block.h"
#include "model/drivetrain.h"
#include "model/power_search.h"
#include "model/run_state.h"

namespace torvane {

namespace {

constexpr double firstVelocity = 11.0; // m/s, some 40 kph

// As powerAtVelocity, with the loads set already.
Solved stagePowerAt(int stage, double velocity)
{
    Solved required = resistanceAtVelocity(velocity);
    drivetrainFromThrust(velocity, required.value);
    return {stage == stageThrust ? required.value : stagePower(stage), required.status};
}

// The velocity may be below 0.
Solved searchVelocity(int stage, double wanted, double firstStep)
{
    setLoads();
    PowerSearch search{firstVelocity, firstStep};
    searchPower(search, wanted, [stage](double velocity) { return stagePowerAt(stage, velocity); });
    ResultStatus status = search.status;
    if (search.velocity < 0.0) {
        status |= statusTooShortPower;
    }
    status |= search.exhausted ? statusNotConverged : toleranceClass(search.power, wanted);
    return {search.velocity, status};
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
    if (value > wanted + wide || value < wanted - wide) {
        return statusBeyondTolerance;
    }
    return within(value, wanted - narrow, wanted + narrow) ? 0 : statusLooseTolerance;
}

double requiredPower(double power, double cadence, double cadenceMax)
{
    return cadence == 0.0 ? 0.0 : cadenceMax * cadenceMax * power / (2.0 * cadenceMax - cadence) / cadence;
}

Solved powerAtVelocity(int stage, double velocity)
{
    setLoads();
    return stagePowerAt(stage, velocity);
}

Solved velocityForPower(int stage, double power)
{
    Solved found = searchVelocity(stage, power, 2.0);
    return {found.value < 0.0 ? 0.0 : found.value, found.status};
}

ResultStatus velocityFromPedaling()
{
    Solved found = searchVelocity(stagePedaling, runState.power, 6.0);
    runState.velocity = found.value;
    return found.status;
}

ResultStatus powerFromVelocity()
{
    RunState& r = runState;
    setLoads();
    Solved required = resistanceAtVelocity(r.velocity);
    drivetrainFromThrust(r.velocity, required.value);
    double summit = modelState.cadencePoweredMax;
    r.peakPower[0] = requiredPower(required.value, r.cadence, summit);
    r.power = r.pedalingPower;
    r.torque = r.pedalingTorque;
    r.force = r.pedalingForce;
    r.cadenceMax = summit;
    r.maxPower = requiredPower(r.pedalingPower, r.cadence, summit);
    return required.status;
}

} // namespace torvane
