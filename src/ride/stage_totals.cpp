#include "ride/stage_totals.h"

namespace torvane {

namespace {

struct StageFields {
    double Evaluation::*power;
    double Evaluation::*torque;
    double Evaluation::*force;
};

// In the order of Stage.
constexpr StageFields stages[] = {
    {&Evaluation::pedalingPower, &Evaluation::pedalingTorque, &Evaluation::pedalingForce},
    {&Evaluation::crankPower, &Evaluation::crankTorque, &Evaluation::crankForce},
    {&Evaluation::hubPower, &Evaluation::hubTorque, &Evaluation::hubForce},
    {&Evaluation::thrustPower, &Evaluation::thrustTorque, &Evaluation::thrustForce},
};
static_assert(sizeof stages / sizeof stages[0] == stageCount);

void raise(double& peak, double value)
{
    if (value > peak)
        peak = value;
}

double meanOver(double integral, double time)
{
    return time == 0.0 ? 0.0 : integral / time;
}

} // namespace

void clearPeaks(RideRun& ride)
{
    for (double& peak : ride.found.peakPower)
        peak = 0.0;
    ride.found.assistPeakPower = 0.0;
    ride.found.maxAccele = 0.0;
}

void addStages(RideRun& ride, StageTotals& totals, double dt)
{
    for (int stage = 0; stage < stageCount; ++stage) {
        const StageFields& fields = stages[stage];
        totals.power[stage] += ride.now.*fields.power * dt;
        totals.torque[stage] += ride.now.*fields.torque * dt;
        totals.force[stage] += ride.now.*fields.force * dt;
        raise(ride.found.peakPower[stage], ride.now.*fields.power);
    }
    totals.assistPower += ride.now.assistPower * dt;
    totals.assistTorque += ride.now.assistTorque * dt;
    totals.assistForce += ride.now.assistForce * dt;
    raise(ride.found.assistPeakPower, ride.now.assistPower);
}

void takeStagesBack(const RideRun& ride, StageTotals& totals, double dt, double fraction)
{
    for (int stage = 0; stage < stageCount; ++stage) {
        const StageFields& fields = stages[stage];
        totals.power[stage] -= ride.now.*fields.power * dt * fraction;
        totals.torque[stage] -= ride.now.*fields.torque * dt * fraction;
        totals.force[stage] -= ride.now.*fields.force * dt * fraction;
    }
    totals.assistPower -= ride.now.assistPower * dt * fraction;
    totals.assistTorque -= ride.now.assistTorque * dt * fraction;
    totals.assistForce -= ride.now.assistForce * dt * fraction;
}

void lowerThrustPeak(RideRun& ride)
{
    if (ride.now.thrustPower < ride.found.peakPower[stageThrust])
        ride.found.peakPower[stageThrust] = ride.now.thrustPower;
}

void addThrust(const RideRun& ride, StageTotals& totals, double dt)
{
    totals.power[stageThrust] += ride.now.thrustPower * dt;
    totals.torque[stageThrust] += ride.now.thrustTorque * dt;
    totals.force[stageThrust] += ride.now.thrustForce * dt;
}

void takeThrustBack(const RideRun& ride, StageTotals& totals, double dt, double fraction)
{
    totals.power[stageThrust] -= ride.now.thrustPower * dt * fraction;
    totals.torque[stageThrust] -= ride.now.thrustTorque * dt * fraction;
    totals.force[stageThrust] -= ride.now.thrustForce * dt * fraction;
}

void storeMeans(RideRun& ride, const StageTotals& totals, double time)
{
    for (int stage = 0; stage < stageCount; ++stage) {
        ride.found.meanStagePower[stage] = meanOver(totals.power[stage], time);
        ride.found.meanStageTorque[stage] = meanOver(totals.torque[stage], time);
        ride.found.meanStageForce[stage] = meanOver(totals.force[stage], time);
    }
    ride.found.assistMeanPower = meanOver(totals.assistPower, time);
    ride.found.assistMeanTorque = meanOver(totals.assistTorque, time);
    ride.found.assistMeanForce = meanOver(totals.assistForce, time);
}

} // namespace torvane
