#include "ride/stage_totals.h"

namespace torvane {

namespace {

struct StageFields {
    double RunState::*power;
    double RunState::*torque;
    double RunState::*force;
};

// In the order of Stage.
constexpr StageFields stages[] = {
    {&RunState::pedalingPower, &RunState::pedalingTorque, &RunState::pedalingForce},
    {&RunState::crankPower, &RunState::crankTorque, &RunState::crankForce},
    {&RunState::hubPower, &RunState::hubTorque, &RunState::hubForce},
    {&RunState::thrustPower, &RunState::thrustTorque, &RunState::thrustForce},
};
static_assert(sizeof stages / sizeof stages[0] == stageCount);

void raise(double& peak, double value)
{
    if (value > peak) {
        peak = value;
    }
}

double meanOver(double integral, double time)
{
    return time == 0.0 ? 0.0 : integral / time;
}

} // namespace

void clearPeaks()
{
    for (double& peak : runState.peakPower) {
        peak = 0.0;
    }
    runState.assistPeakPower = 0.0;
    runState.maxAccele = 0.0;
}

void addStages(StageTotals& totals, double dt)
{
    for (int stage = 0; stage < stageCount; ++stage) {
        const StageFields& fields = stages[stage];
        totals.power[stage] += runState.*fields.power * dt;
        totals.torque[stage] += runState.*fields.torque * dt;
        totals.force[stage] += runState.*fields.force * dt;
        raise(runState.peakPower[stage], runState.*fields.power);
    }
    totals.assistPower += runState.assistPower * dt;
    totals.assistTorque += runState.assistTorque * dt;
    totals.assistForce += runState.assistForce * dt;
    raise(runState.assistPeakPower, runState.assistPower);
}

void takeStagesBack(StageTotals& totals, double dt, double fraction)
{
    for (int stage = 0; stage < stageCount; ++stage) {
        const StageFields& fields = stages[stage];
        totals.power[stage] -= runState.*fields.power * dt * fraction;
        totals.torque[stage] -= runState.*fields.torque * dt * fraction;
        totals.force[stage] -= runState.*fields.force * dt * fraction;
    }
    totals.assistPower -= runState.assistPower * dt * fraction;
    totals.assistTorque -= runState.assistTorque * dt * fraction;
    totals.assistForce -= runState.assistForce * dt * fraction;
}

void lowerThrustPeak()
{
    if (runState.thrustPower < runState.peakPower[stageThrust]) {
        runState.peakPower[stageThrust] = runState.thrustPower;
    }
}

void addThrust(StageTotals& totals, double dt)
{
    totals.power[stageThrust] += runState.thrustPower * dt;
    totals.torque[stageThrust] += runState.thrustTorque * dt;
    totals.force[stageThrust] += runState.thrustForce * dt;
}

void takeThrustBack(StageTotals& totals, double dt, double fraction)
{
    totals.power[stageThrust] -= runState.thrustPower * dt * fraction;
    totals.torque[stageThrust] -= runState.thrustTorque * dt * fraction;
    totals.force[stageThrust] -= runState.thrustForce * dt * fraction;
}

void storeMeans(const StageTotals& totals, double time)
{
    for (int stage = 0; stage < stageCount; ++stage) {
        runState.meanStagePower[stage] = meanOver(totals.power[stage], time);
        runState.meanStageTorque[stage] = meanOver(totals.torque[stage], time);
        runState.meanStageForce[stage] = meanOver(totals.force[stage], time);
    }
    runState.assistMeanPower = meanOver(totals.assistPower, time);
    runState.assistMeanTorque = meanOver(totals.assistTorque, time);
    runState.assistMeanForce = meanOver(totals.assistForce, time);
}

} // namespace torvane
