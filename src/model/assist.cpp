#include "model/assist.h"

#include "model/drivetrain_chain.h"
#include "model/power_search.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr int rangeCount = 3;

enum RangeMode : int { rangeNone, rangeConstant, rangeLinear };
enum MotorLocation : int { motorNone, motorCrank, motorHub };

// Range that a speed in kph lies in, its upper end included; rangeCount above all.
int rangeAt(double kph)
{
    int range = 0;
    while (range < rangeCount && modelState.assistRangeSpeed[range] < kph) {
        ++range;
    }
    return range;
}

double linearRatio(int range, double kph)
{
    const double* speed = modelState.assistRangeSpeed;
    const double* ratio = modelState.assistRangeRatio;
    double along = (kph - speed[range - 1]) / (speed[range] - speed[range - 1]);
    return along * (ratio[range] - ratio[range - 1]) + ratio[range - 1];
}

// A motor in the chain, with its ratio at the present velocity.
struct Motor {
    double ratio;

    double share() const
    {
        return ratio / (ratio + 1.0);
    }
    void rest() const
    {
        clearAssist();
    }
    void shareAtHub() const
    {
        if (modelState.motorLocation == motorHub) {
            applyAssistShare(share(), modelState.missionLossPercent, stageHub);
        }
    }
    void shareAtCrank(double shellLoss) const
    {
        if (modelState.motorLocation == motorCrank) {
            applyAssistShare(share(), shellLoss, stageCrank);
        }
    }
    void addAtCrank() const
    {
        if (modelState.motorLocation == motorCrank) {
            addTo(runState.crankPower);
        }
    }
    void addAtHub() const
    {
        if (modelState.motorLocation == motorHub) {
            addTo(runState.hubPower);
        }
    }
    void finish() const
    {
        const RunState& r = runState;
        if (modelState.motorLocation == motorCrank) {
            shareOf(r.crankPower, r.crankTorque, r.crankForce);
        } else if (modelState.motorLocation == motorHub) {
            shareOf(r.hubPower, r.hubTorque, r.hubForce);
        }
    }

private:
    void addTo(double& power) const
    {
        runState.assistPower = std::min(power * ratio, modelState.maxEPower);
        power += runState.assistPower;
    }
    static void shareOf(double power, double torque, double force)
    {
        double part = power == 0.0 ? 0.0 : runState.assistPower / power;
        runState.assistTorque = part * torque;
        runState.assistForce = part * force;
    }
};

Motor motorAt(double velocity)
{
    return {modelState.motorLocation > motorNone ? assistRatioAt(velocity) : 0.0};
}

// As assistedPowerAtVelocity, with the loads set already.
Solved assistedStagePowerAt(int stage, double velocity)
{
    Solved required = resistanceAtVelocity(velocity);
    clearAssist();
    assistedDrivetrainFromThrust(velocity, required.value);
    return {stage == stageThrust ? required.value : stagePower(stage), required.status};
}

// First range at whose end an unassisted rider has the power; rangeCount when it is met above all ranges only.
int rangeOfPower(int stage, double wanted)
{
    int range = 0;
    while (range < rangeCount && powerAtVelocity(stage, modelState.assistRangeSpeed[range] / 3.6).value < wanted) {
        ++range;
    }
    return range;
}

int lastAssistedRange()
{
    int range = rangeCount - 1;
    while (range > 0 && modelState.assistRangeMode[range] <= rangeNone) {
        --range;
    }
    return range;
}

// The two sides of the edge where the assist ends, for the report.
void sampleAssistEdge()
{
    runState.assistSampleVelocity[0] = modelState.assistRangeSpeed[lastAssistedRange()];
    runState.assistSampleVelocity[1] = runState.assistSampleVelocity[0] + 0.001;
    for (int n = 0; n < 2; ++n) {
        double velocity = runState.assistSampleVelocity[n] / 3.6;
        runState.assistSamplePower[n] = assistedPowerAtVelocity(stagePedaling, velocity).value;
    }
}

} // namespace

double assistRatioAt(double velocity)
{
    double kph = velocity * 3.6;
    int range = rangeAt(kph);
    if (range == rangeCount) {
        return 0.0;
    }
    switch (modelState.assistRangeMode[range]) {
    case rangeConstant:
        return modelState.assistRangeRatio[range];
    case rangeLinear:
        return range == 0 ? 0.0 : linearRatio(range, kph); // there is no range to start from before the first
    default:
        return 0.0;
    }
}

void clearAssist()
{
    runState.assistPower = runState.assistTorque = runState.assistForce = 0.0;
}

void applyAssistShare(double share, double loss, int stage)
{
    RunState& r = runState;
    bool crank = stage == stageCrank;
    double power = crank ? r.crankPower : r.hubPower;
    r.assistPower = power * share;
    if (!(modelState.maxEPower > r.assistPower)) {
        r.assistPower = modelState.maxEPower;
        share = modelState.maxEPower / power;
    }
    r.assistTorque = share * (crank ? r.crankTorque : r.hubTorque);
    r.assistForce = share * (crank ? r.crankForce : r.hubForce);
    (crank ? r.pedalingPower : r.crankPower) = (1.0 - share) * power * 100.0 / (100.0 - loss);
}

void assistedDrivetrainFromThrust(double velocity, double thrustPower)
{
    chainBack(velocity, thrustPower, motorAt(velocity));
}

void assistedStagesFromThrust(double velocity, double thrustPower, double wheelSpeed, double crankSpeed)
{
    stagesBack(thrustPower, wheelSpeed, crankSpeed, motorAt(velocity));
}

void assistedDrivetrainFromPedaling(const StepState& step)
{
    chainForward(step, motorAt(step.velocity));
}

Solved assistedPowerAtVelocity(int stage, double velocity)
{
    setLoads();
    return assistedStagePowerAt(stage, velocity);
}

Solved assistedVelocityForPower(int stage, double wanted)
{
    setLoads();
    int range = rangeOfPower(stage, wanted);
    if (range == rangeCount) {
        double velocity = velocityForPower(stage, wanted).value;
        clearAssist();
        return {velocity, 0}; // whatever the plain solver said
    }
    double firstKph = range == 0 ? modelState.assistRangeSpeed[0] * 0.5 : modelState.assistRangeSpeed[range - 1];
    PowerSearch search{firstKph / 3.6, 2.0};
    searchPower(search, wanted, [stage](double velocity) { return assistedStagePowerAt(stage, velocity); });
    double velocity = search.velocity < 0.0 ? 0.0 : search.velocity;
    if (search.exhausted) {
        ResultStatus below = search.velocity < 0.0 ? statusTooShortPower : 0;
        return {velocity, search.status | statusNotConverged | below};
    }
    ResultStatus closeness = toleranceClass(search.power, wanted);
    if (closeness == statusBeyondTolerance) {
        sampleAssistEdge();
        return {velocity, statusNoAssistedVelocity};
    }
    return {velocity, closeness};
}

void driveStagesFromThrust(double velocity, double thrustPower, double wheelSpeed, double crankSpeed)
{
    if (modelState.motorLocation > motorNone) {
        assistedStagesFromThrust(velocity, thrustPower, wheelSpeed, crankSpeed);
    } else {
        stagesFromThrust(thrustPower, wheelSpeed, crankSpeed);
    }
}

void driveFromPedaling(const StepState& step)
{
    if (modelState.motorLocation > motorNone) {
        assistedDrivetrainFromPedaling(step);
    } else {
        drivetrainFromPedaling(step);
    }
}

Solved solvePowerAtVelocity(int stage, double velocity)
{
    return modelState.motorLocation > motorNone ? assistedPowerAtVelocity(stage, velocity)
                                                : powerAtVelocity(stage, velocity);
}

Solved solveVelocityForPower(int stage, double power)
{
    return modelState.motorLocation > motorNone ? assistedVelocityForPower(stage, power)
                                                : velocityForPower(stage, power);
}

} // namespace torvane
