#include "model/drivetrain.h"

#include "model/drivetrain_chain.h"

namespace torvane {

double radiansPerSecond(double rpm)
{
    return rpm / 60.0 * 2.0 * pi;
}

double wheelRpmAt(const Model& model, double velocity)
{
    return velocity * mmPerMinute / model.state.rearCircumference;
}

double forceAtLever(double torque, double lever)
{
    return torque / standardGravity / lever;
}

double crankLever(const Model& model)
{
    return model.state.crankLength / 1000.0;
}

double chainLever(int32_t teeth)
{
    return teeth * pitchRadiusPerTooth / 1000.0;
}

double rearWheelLever(const Model& model)
{
    return (model.state.rimDiameter[1] * 0.5 + model.state.tyreSize[1]) / 1000.0;
}

double stagePower(const Evaluation& e, int stage)
{
    const double powers[] = {e.pedalingPower, e.crankPower, e.hubPower, e.thrustPower};
    return powers[stage];
}

void clearStages(Evaluation& e)
{
    e.pedalingPower = e.pedalingTorque = e.pedalingForce = 0.0;
    e.crankPower = e.crankTorque = e.crankForce = 0.0;
    e.hubPower = e.hubTorque = e.hubForce = 0.0;
    e.thrustPower = e.thrustTorque = e.thrustForce = 0.0;
}

void drivetrainFromThrust(const Model& model, Evaluation& evaluation, double velocity, double thrustPower)
{
    chainBack(model, evaluation, velocity, thrustPower, NoMotor{});
}

void stagesFromThrust(const Model& model, Evaluation& evaluation, double thrustPower, double wheelSpeed,
                      double crankSpeed)
{
    stagesBack(model.state, evaluation, thrustPower, wheelSpeed, crankSpeed, NoMotor{});
}

void drivetrainFromPedaling(const Model& model, Evaluation& evaluation, const StepState& step, double pedalingPower)
{
    chainForward(model, evaluation, step, pedalingPower, NoMotor{});
}

} // namespace torvane
