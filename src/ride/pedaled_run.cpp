#include "ride/pedaled_run.h"

#include "core/parameter_block.h"
#include "core/screens.h"
#include "model/assist.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"

#include <cstdlib>

namespace torvane {

namespace {

double pedalingPowerAt(PowerLaw law, double cadence)
{
    if (law == PowerLaw::constant) {
        return runState.power;
    }
    const double summit = modelState.cadencePoweredMax;
    return (2.0 * summit - cadence) * (runState.power / summit / summit) * cadence;
}

void pedal(const StepState& s, PowerLaw law)
{
    runState.pedalingPower = pedalingPowerAt(law, s.cadence);
    driveFromPedaling(s);
}

int changesBetween(const GearEntry& from, const GearEntry& to)
{
    return std::abs(to.frontIndex - from.frontIndex) + std::abs(to.rearIndex - from.rearIndex);
}

// What a shift of some changes leaves of the velocity, by the rule of thumb that decides how far to shift.
double velocityAfterShift(const StepState& s, int changes)
{
    double resistance = (s.previousResistance + s.resistance) * 0.5;
    return s.velocity - (resistance / modelState.inertialWeight) * changes * modelState.shiftTimeLoss;
}

// Moves one row and tells what that costs.
int moveGear(StepState& s, int rows)
{
    const GearEntry& from = gearTable[s.gear];
    s.gear += rows;
    return changesBetween(from, gearTable[s.gear]);
}

void loseTime(PedaledRun& run, int changes)
{
    if (changes != 0) {
        run.shiftRemaining = changes * modelState.shiftTimeLoss;
    }
}

} // namespace

PedaledRun startPedaledRun(PowerLaw law, double dt, int gear)
{
    PedaledRun run{law, dt};
    StepState& s = run.state;
    clearPeaks();
    s.velocity = runState.startVelocity;
    s.gear = gear;
    engageGear(s);
    s.cadence = cadenceInGear(s.velocity, s.gearRatio);
    resetGrip();
    s.resistance = solvePowerAtVelocity(stageThrust, s.velocity).value;
    showStart(s);
    return run;
}

void pedalOrShift(PedaledRun& run, double extraVelocity)
{
    StepState& s = run.state;
    engageGear(s);
    s.previousThrustForce = runState.thrustForce;
    run.shifting = run.shiftRemaining > 0.0;
    if (run.shifting) {
        s.cadence = cadenceInGear(s.velocity, s.gearRatio);
        clearStages();
        clearAssist();
        run.shiftRemaining -= run.dt;
    } else {
        s.cadence = cadenceInGear(s.velocity + extraVelocity, s.gearRatio);
        pedal(s, run.law);
    }
    updateResistance(s);
}

void rideStep(PedaledRun& run, RunRecorder* recorder)
{
    addStages(run.totals, run.dt);
    if (recorder != nullptr) {
        addToBins(recorder->bins, runState.pedalingPower, run.dt);
        reportProgress(progressPercent(runState.startVelocity, runState.endVelocity, run.state.velocity));
    }
    advance(run.state, run.dt);
}

void settleAtEnd(PedaledRun& run)
{
    takeStagesBack(run.totals, run.dt, settleAtVelocity(run.state, run.dt));
}

void shiftUp(PedaledRun& run)
{
    StepState& s = run.state;
    const int last = modelState.gearCount - 1;
    int changes = 0;
    bool again = s.velocity > gearTable[s.gear].velocityShiftUp;
    while (again && s.gear < last) {
        changes += moveGear(s, 1);
        const double limit = gearTable[s.gear].velocityShiftUp;
        again = !(velocityAfterShift(s, changes) < limit) && s.velocity > limit;
    }
    loseTime(run, changes);
}

void shiftDown(PedaledRun& run)
{
    StepState& s = run.state;
    int changes = 0;
    bool again = s.velocity < gearTable[s.gear].velocityShiftDown;
    while (again && s.gear > 0) {
        changes += moveGear(s, -1);
        const GearEntry& gear = gearTable[s.gear];
        again = !(velocityAfterShift(s, changes) < gear.velocityShiftUp) && gear.velocityShiftDown > s.velocity;
    }
    loseTime(run, changes);
}

void finishPedaledRun(const PedaledRun& run, SampleLog& log, RunRecorder* recorder)
{
    const StepState& s = run.state;
    storeMeans(run.totals, s.time);
    storeMotion(s);
    if (recorder != nullptr) {
        finishRecording(*recorder, s);
    } else {
        log.sampleCount = run.count;
    }
}

} // namespace torvane
