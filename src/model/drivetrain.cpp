#include "model/drivetrain.h"

#include "model/drivetrain_chain.h"

namespace torvane {

double radiansPerSecond(double rpm)
{
    return rpm / 60.0 * 2.0 * pi;
}

double wheelRpmAt(double velocity)
{
    return velocity * 60000.0 / modelState.rearCircumference;
}

double forceAtLever(double torque, double lever)
{
    return torque / standardGravity / lever;
}

double crankLever()
{
    return modelState.crankLength / 1000.0;
}

double chainLever(int32_t teeth)
{
    return teeth * pitchRadiusPerTooth / 1000.0;
}

double rearWheelLever()
{
    return (modelState.rimDiameter[1] * 0.5 + modelState.tyreSize[1]) / 1000.0;
}

double stagePower(int stage)
{
    const double powers[] = {runState.pedalingPower, runState.crankPower, runState.hubPower, runState.thrustPower};
    return powers[stage];
}

void clearStages()
{
    RunState& r = runState;
    r.pedalingPower = r.pedalingTorque = r.pedalingForce = 0.0;
    r.crankPower = r.crankTorque = r.crankForce = 0.0;
    r.hubPower = r.hubTorque = r.hubForce = 0.0;
    r.thrustPower = r.thrustTorque = r.thrustForce = 0.0;
}

void drivetrainFromThrust(double velocity, double thrustPower)
{
    chainBack(velocity, thrustPower, NoMotor{});
}

void stagesFromThrust(double thrustPower, double wheelSpeed, double crankSpeed)
{
    stagesBack(thrustPower, wheelSpeed, crankSpeed, NoMotor{});
}

void drivetrainFromPedaling(const StepState& step)
{
    chainForward(step, NoMotor{});
}

} // namespace torvane
