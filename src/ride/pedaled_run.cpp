#include "ride/pedaled_run.h"

#include "model/assist.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"

#include <cstdlib>

namespace torvane {

namespace {

double pedalingPowerAt(const RideRun& ride, PowerLaw law, double cadence)
{
    if (law == PowerLaw::constant)
        return ride.found.power;
    double summit = ride.model.state.cadencePoweredMax;
    return (2.0 * summit - cadence) * (ride.found.power / summit / summit) * cadence;
}

void pedal(RideRun& ride, const StepState& s, PowerLaw law)
{
    driveFromPedaling(ride.model, ride.now, s, pedalingPowerAt(ride, law, s.cadence));
}

int changesBetween(const GearEntry& from, const GearEntry& to)
{
    return std::abs(to.frontIndex - from.frontIndex) + std::abs(to.rearIndex - from.rearIndex);
}

// What a shift of some changes leaves of the velocity, by the rule of thumb that decides how far to shift.
double velocityAfterShift(const RideRun& ride, const StepState& s, int changes)
{
    double resistance = (s.previousResistance + s.resistance) * 0.5;
    return s.velocity - (resistance / ride.model.state.inertialWeight) * changes * ride.model.state.shiftTimeLoss;
}

// Moves one row and tells what that costs.
int moveGear(const RideRun& ride, StepState& s, int rows)
{
    const GearEntry& from = ride.model.gearTable[s.gear];
    s.gear += rows;
    return changesBetween(from, ride.model.gearTable[s.gear]);
}

void loseTime(const RideRun& ride, PedaledRun& run, int changes)
{
    if (changes != 0)
        run.shiftRemaining = changes * ride.model.state.shiftTimeLoss;
}

} // namespace

PedaledRun startPedaledRun(RideRun& ride, PowerLaw law, double dt, int gear)
{
    PedaledRun run{law, dt};
    StepState& s = run.state;
    clearPeaks(ride);
    s.velocity = ride.in.startVelocity;
    s.gear = gear;
    engageGear(ride.model, s);
    s.cadence = cadenceInGear(ride.model, s.velocity, s.gearRatio);
    resetGrip(ride);
    s.resistance = solvePowerAtVelocity(ride.model, ride.now, stageThrust, s.velocity).value;
    showStart(ride, s);
    return run;
}

void pedalOrShift(RideRun& ride, PedaledRun& run, double extraVelocity)
{
    StepState& s = run.state;
    engageGear(ride.model, s);
    s.previousThrustForce = ride.now.thrustForce;
    run.shifting = run.shiftRemaining > 0.0;
    if (run.shifting) {
        s.cadence = cadenceInGear(ride.model, s.velocity, s.gearRatio);
        clearStages(ride.now);
        clearAssist(ride.now);
        run.shiftRemaining -= run.dt;
    } else {
        s.cadence = cadenceInGear(ride.model, s.velocity + extraVelocity, s.gearRatio);
        pedal(ride, s, run.law);
    }
    updateResistance(ride, s);
}

void rideStep(RideRun& ride, PedaledRun& run, RunRecorder* recorder)
{
    addStages(ride, run.totals, run.dt);
    if (recorder != nullptr) {
        addToBins(recorder->bins, ride.now.pedalingPower, run.dt);
        reportProgress(ride.progress, progressPercent(ride.in.startVelocity, ride.in.endVelocity, run.state.velocity));
    }
    advance(run.state, run.dt);
}

void settleAtEnd(RideRun& ride, PedaledRun& run)
{
    takeStagesBack(ride, run.totals, run.dt, settleAtVelocity(ride, run.state, run.dt));
}

void shiftUp(const RideRun& ride, PedaledRun& run)
{
    StepState& s = run.state;
    int last = ride.model.state.gearCount - 1;
    int changes = 0;
    bool again = s.velocity > ride.model.gearTable[s.gear].velocityShiftUp;
    while (again && s.gear < last) {
        changes += moveGear(ride, s, 1);
        double limit = ride.model.gearTable[s.gear].velocityShiftUp;
        again = !(velocityAfterShift(ride, s, changes) < limit) && s.velocity > limit;
    }
    loseTime(ride, run, changes);
}

void shiftDown(const RideRun& ride, PedaledRun& run)
{
    StepState& s = run.state;
    int changes = 0;
    bool again = s.velocity < ride.model.gearTable[s.gear].velocityShiftDown;
    while (again && s.gear > 0) {
        changes += moveGear(ride, s, -1);
        const GearEntry& gear = ride.model.gearTable[s.gear];
        again = !(velocityAfterShift(ride, s, changes) < gear.velocityShiftUp) && gear.velocityShiftDown > s.velocity;
    }
    loseTime(ride, run, changes);
}

void finishPedaledRun(RideRun& ride, const PedaledRun& run, RunRecorder* recorder)
{
    const StepState& s = run.state;
    storeMeans(ride, run.totals, s.time);
    storeMotion(ride, s);
    if (recorder != nullptr)
        finishRecording(*recorder, s);
    else
        ride.log.sampleCount = run.count;
}

} // namespace torvane
