#include "model/assist.h"

#include "core/units.h"
#include "model/drivetrain_chain.h"
#include "model/power_search.h"

#include <algorithm>

namespace torvane {

namespace {

// Range that a speed in kph lies in, its upper end included; assistRangeCount above all.
int rangeAt(const ModelState& m, double kph)
{
    int range = 0;
    while (range < assistRangeCount && m.assistRangeSpeed[range] < kph)
        ++range;
    return range;
}

double linearRatio(const ModelState& m, int range, double kph)
{
    const double* speed = m.assistRangeSpeed;
    const double* ratio = m.assistRangeRatio;
    double along = (kph - speed[range - 1]) / (speed[range] - speed[range - 1]);
    return along * (ratio[range] - ratio[range - 1]) + ratio[range - 1];
}

// What the motor takes of a stage: `share` of its power, at most maxEPower. Its force is the share of the stage's force
// as the evaluation before left it. Returns what is left for the rider before the loss in percent towards the pedals.
double riderPower(const ModelState& m, Evaluation& e, double share, double loss, int stage)
{
    bool crank = stage == stageCrank;
    double power = crank ? e.crankPower : e.hubPower;
    e.assistPower = power * share;
    if (!(m.maxEPower > e.assistPower)) {
        e.assistPower = m.maxEPower;
        share = m.maxEPower / power;
    }
    e.assistTorque = share * (crank ? e.crankTorque : e.hubTorque);
    e.assistForce = share * (crank ? e.crankForce : e.hubForce);
    return (1.0 - share) * power * 100.0 / (100.0 - loss);
}

// A motor in the chain, with its ratio at the present velocity.
struct Motor {
    const ModelState& m;
    Evaluation& e;
    double ratio;

    double share() const
    {
        return ratio / (ratio + 1.0);
    }
    void rest() const
    {
        clearAssist(e);
    }
    void shareAtHub() const
    {
        if (m.motorLocation == motorHub)
            e.crankPower = riderPower(m, e, share(), m.missionLossPercent, stageHub);
    }
    void shareAtCrank(double shellLoss) const
    {
        if (m.motorLocation == motorCrank)
            e.pedalingPower = riderPower(m, e, share(), shellLoss, stageCrank);
    }
    void addAtCrank() const
    {
        if (m.motorLocation == motorCrank)
            addTo(e.crankPower);
    }
    void addAtHub() const
    {
        if (m.motorLocation == motorHub)
            addTo(e.hubPower);
    }
    void finish() const
    {
        if (m.motorLocation == motorCrank)
            shareOf(e.crankPower, e.crankTorque, e.crankForce);
        else if (m.motorLocation == motorHub)
            shareOf(e.hubPower, e.hubTorque, e.hubForce);
    }

private:
    void addTo(double& power) const
    {
        e.assistPower = std::min(power * ratio, m.maxEPower);
        power += e.assistPower;
    }
    void shareOf(double power, double torque, double force) const
    {
        double part = power == 0.0 ? 0.0 : e.assistPower / power;
        e.assistTorque = part * torque;
        e.assistForce = part * force;
    }
};

Motor motorAt(const Model& model, Evaluation& e, double velocity)
{
    return {model.state, e, model.state.motorLocation > motorNone ? assistRatioAt(model, velocity) : 0.0};
}

// As assistedPowerAtVelocity, with the loads set already.
Solved assistedStagePowerAt(const Model& model, Evaluation& e, int stage, double velocity)
{
    Solved required = resistanceAtVelocity(model, e, velocity);
    clearAssist(e);
    assistedDrivetrainFromThrust(model, e, velocity, required.value);
    return {stage == stageThrust ? required.value : stagePower(e, stage), required.status};
}

// First range at whose end an unassisted rider has the power; assistRangeCount when it is met above all ranges only.
int rangeOfPower(const Model& model, Evaluation& e, int stage, double wanted)
{
    const double* speed = model.state.assistRangeSpeed; // kph
    int range = 0;
    while (range < assistRangeCount && powerAtVelocity(model, e, stage, speed[range] / kphPerMps).value < wanted)
        ++range;
    return range;
}

int lastAssistedRange(const ModelState& m)
{
    int range = assistRangeCount - 1;
    while (range > 0 && m.assistRangeMode[range] <= rangeNone)
        --range;
    return range;
}

// The two sides of the edge where the assist ends, for the report.
void sampleAssistEdge(const Model& model, Evaluation& e)
{
    e.assistSampleVelocity[0] = model.state.assistRangeSpeed[lastAssistedRange(model.state)];
    e.assistSampleVelocity[1] = e.assistSampleVelocity[0] + 0.001;
    for (int n = 0; n < 2; ++n) {
        double velocity = e.assistSampleVelocity[n] / kphPerMps;
        e.assistSamplePower[n] = assistedPowerAtVelocity(model, e, stagePedaling, velocity).value;
    }
}

} // namespace

double assistRatioAt(const Model& model, double velocity)
{
    const ModelState& m = model.state;
    double kph = velocity * kphPerMps;
    int range = rangeAt(m, kph);
    if (range == assistRangeCount)
        return 0.0;
    switch (m.assistRangeMode[range]) {
    case rangeConstant:
        return m.assistRangeRatio[range];
    case rangeLinear:
        return range == 0 ? 0.0 : linearRatio(m, range, kph); // there is no range to start from before the first
    default:
        return 0.0;
    }
}

void clearAssist(Evaluation& e)
{
    e.assistPower = e.assistTorque = e.assistForce = 0.0;
}

void assistedDrivetrainFromThrust(const Model& model, Evaluation& e, double velocity, double thrustPower)
{
    chainBack(model, e, velocity, thrustPower, motorAt(model, e, velocity));
}

void assistedStagesFromThrust(const Model& model, Evaluation& e, double velocity, double thrustPower, double wheelSpeed,
                              double crankSpeed)
{
    stagesBack(model.state, e, thrustPower, wheelSpeed, crankSpeed, motorAt(model, e, velocity));
}

void assistedDrivetrainFromPedaling(const Model& model, Evaluation& e, const StepState& step, double pedalingPower)
{
    chainForward(model, e, step, pedalingPower, motorAt(model, e, step.velocity));
}

Solved assistedPowerAtVelocity(const Model& model, Evaluation& e, int stage, double velocity)
{
    setLoads(model, e);
    return assistedStagePowerAt(model, e, stage, velocity);
}

Solved assistedVelocityForPower(const Model& model, Evaluation& e, int stage, double wanted)
{
    setLoads(model, e);
    int range = rangeOfPower(model, e, stage, wanted);
    if (range == assistRangeCount) {
        double velocity = velocityForPower(model, e, stage, wanted).value;
        clearAssist(e);
        return {velocity, 0}; // whatever the plain solver said
    }
    const double* speed = model.state.assistRangeSpeed;
    double firstKph = range == 0 ? speed[0] * 0.5 : speed[range - 1];
    PowerSearch search{firstKph / kphPerMps, 2.0};
    searchPower(search, wanted, [&](double velocity) { return assistedStagePowerAt(model, e, stage, velocity); });
    double velocity = search.velocity < 0.0 ? 0.0 : search.velocity;
    if (search.exhausted) {
        ResultStatus below = search.velocity < 0.0 ? statusTooShortPower : statusDone;
        return {velocity, search.status | statusNotConverged | below};
    }
    ResultStatus closeness = toleranceClass(search.power, wanted);
    if (closeness == statusBeyondTolerance) {
        sampleAssistEdge(model, e);
        return {velocity, statusNoAssistedVelocity};
    }
    return {velocity, closeness};
}

void driveStagesFromThrust(const Model& model, Evaluation& e, double velocity, double thrustPower, double wheelSpeed,
                           double crankSpeed)
{
    if (model.state.motorLocation > motorNone)
        assistedStagesFromThrust(model, e, velocity, thrustPower, wheelSpeed, crankSpeed);
    else
        stagesFromThrust(model, e, thrustPower, wheelSpeed, crankSpeed);
}

void driveFromPedaling(const Model& model, Evaluation& e, const StepState& step, double pedalingPower)
{
    if (model.state.motorLocation > motorNone)
        assistedDrivetrainFromPedaling(model, e, step, pedalingPower);
    else
        drivetrainFromPedaling(model, e, step, pedalingPower);
}

Solved solvePowerAtVelocity(const Model& model, Evaluation& e, int stage, double velocity)
{
    return model.state.motorLocation > motorNone ? assistedPowerAtVelocity(model, e, stage, velocity)
                                                 : powerAtVelocity(model, e, stage, velocity);
}

Solved solveVelocityForPower(const Model& model, Evaluation& e, int stage, double power)
{
    return model.state.motorLocation > motorNone ? assistedVelocityForPower(model, e, stage, power)
                                                 : velocityForPower(model, e, stage, power);
}

} // namespace torvane
