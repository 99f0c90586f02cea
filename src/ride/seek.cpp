#include "ride/seek.h"

#include "core/result_status.h"
#include "model/solver.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr ResultStatus tooWeak = statusTooShortPower | statusNoAcceleration;
constexpr ResultStatus tooStrong = statusTooLargePower | statusNoDeceleration;
constexpr ResultStatus refused = statusIllegalValue | tooWeak | tooStrong;

// Numbers that no further round would mend.
bool isLost(const RideRun& ride, double error, double variable)
{
    return !std::isfinite(error) || !std::isfinite(variable) || !std::isfinite(ride.found.velocity);
}

bool isHigh(const Seek& seek, ResultStatus status)
{
    if ((status & refused) != 0)
        return (status & tooWeak) == 0;
    return seek.highSide == HighSide::aboveWanted ? *seek.result >= seek.wanted : *seek.result <= seek.wanted;
}

// A step of 0 would never move.
constexpr double leastStep = 10.0; // W

// Of an error that the tolerance took: after some hundred rounds that is wider than any wanted figure.
ResultStatus missClass(double error, double wanted)
{
    return error > std::fabs(wanted) * 0.01 ? statusLooseTolerance : statusDone;
}

ResultStatus walk(RideRun& ride, const Seek& seek, ResultStatus (*run)(RideRun&))
{
    Stepper stepper{*seek.variable, seek.step == 0.0 ? leastStep : seek.step, 0.7};
    double tolerance = seek.tolerance;
    double firstError = 0.0;
    ResultStatus status = 0;
    for (int round = 0; round < seekRounds; ++round) {
        if (round == 0 ||
            *seek.variable != stepper.value) { // else the step is used up, and the run would repeat itself
            *seek.variable = stepper.value;
            status = run(ride);
        }
        if (ride.found.peakPower[stagePedaling] > seek.peakLimit)
            return statusTooLargePower;
        double error = std::fabs(seek.wanted - *seek.result);
        if (isLost(ride, error, stepper.value))
            return statusNotConverged;
        firstError = round == 0 ? error : firstError;
        reportProgress(ride.progress, progressPercent(firstError, tolerance, error));
        if (error < tolerance && !isFatal(status))
            return toleranceClass(ride.found.velocity, ride.in.endVelocity) | missClass(error, seek.wanted);
        isHigh(seek, status) ? stepper.lower() : stepper.raise();
        stepper.value = std::max(stepper.value, seek.least);
        tolerance = round % 50 == 0 ? tolerance * 1.4 : tolerance;
    }
    return statusNotConverged;
}

} // namespace

ResultStatus seekTarget(RideRun& ride, const Seek& seek, ResultStatus (*run)(RideRun&))
{
    ResultStatus status = walk(ride, seek, run);
    if (isFatal(status))
        *seek.result = seek.wanted;
    return status;
}

} // namespace torvane
