#include "model/theory.h"

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/run_state.h"
#include "model/solver.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace torvane {

namespace {

bool anyZero(std::initializer_list<double> values)
{
    for (double value : values) {
        if (value == 0.0) {
            return true;
        }
    }
    return false;
}

ResultStatus zeroValue()
{
    RunState& r = runState;
    r.cadence = r.power = r.cadenceMax = r.maxPower = r.torque = r.force = 0.0;
    return statusZeroValue;
}

bool areNumbers(std::initializer_list<double> values)
{
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

// Figures next to 0 lead to others that are none; they are as good as 0.
ResultStatus numbersOrZero(ResultStatus status)
{
    RunState& r = runState;
    if (areNumbers({r.cadence, r.power, r.cadenceMax, r.maxPower, r.torque, r.force, r.gearRatio, r.expectedRatio}) &&
        std::isfinite(r.velocity)) {
        return status;
    }
    r.velocity = std::isfinite(r.velocity) ? r.velocity : 0.0;
    r.expectedRatio = std::isfinite(r.expectedRatio) ? r.expectedRatio : 0.0;
    return status | zeroValue();
}

double forceOfTorque(double torque)
{
    return forceAtLever(torque, crankLever());
}

double torqueOfForce(double force)
{
    return crankLever() * force * standardGravity;
}

void torqueStep()
{
    runState.torque = runState.power / radiansPerSecond(runState.cadence);
    runState.force = forceOfTorque(runState.torque);
}

// No summit at all gives a power at twice its cadence, where every parabola is down to 0.
ResultStatus maxPowerStep()
{
    const double summit = requiredPower(runState.power, runState.cadence, runState.cadenceMax);
    runState.maxPower = std::isfinite(summit) ? summit : 0.0;
    return std::isfinite(summit) ? 0 : statusZeroValue;
}

// Cadence theory: one point of the parabola, solved for one of its four figures.

ResultStatus cadenceOfPower()
{
    RunState& r = runState;
    if (anyZero({r.power, r.maxPower, r.cadenceMax})) {
        return zeroValue();
    }
    double m = r.cadenceMax;
    if (r.power > r.maxPower) {
        return statusIllegalValue;
    }
    if (r.power == r.maxPower) {
        r.cadence = m;
        return 0;
    }
    r.cadence = (2.0 * m - std::sqrt((m * m - m * m * r.power / r.maxPower) * 4.0)) * 0.5; // the rising side
    torqueStep();
    return 0;
}

ResultStatus powerOfCadence()
{
    RunState& r = runState;
    if (anyZero({r.cadence, r.maxPower, r.cadenceMax})) {
        return zeroValue();
    }
    double m = r.cadenceMax;
    r.power = (2.0 * m - r.cadence) * r.maxPower * r.cadence / (m * m);
    torqueStep();
    return 0;
}

ResultStatus cadenceMaxOfPower()
{
    RunState& r = runState;
    if (anyZero({r.cadence, r.power, r.maxPower})) {
        return zeroValue();
    }
    double c = r.cadence;
    if (r.power > r.maxPower) {
        return statusIllegalValue;
    }
    if (r.power == r.maxPower) {
        r.cadenceMax = c;
        return 0;
    }
    double root = std::sqrt((r.maxPower * c - r.power * c) * (r.maxPower * 4.0 * c));
    double low = (2.0 * r.maxPower * c - root) / (2.0 * r.power);
    double high = (2.0 * r.maxPower * c + root) / (2.0 * r.power);
    r.cadenceMax = low > high ? low : high;
    torqueStep();
    return 0;
}

ResultStatus maxPowerOfCadence()
{
    RunState& r = runState;
    if (anyZero({r.cadence, r.power, r.cadenceMax})) {
        return zeroValue();
    }
    torqueStep();
    return maxPowerStep();
}

// Pedaling dynamics: power is torque by angular velocity.

ResultStatus cadenceOfTorque()
{
    RunState& r = runState;
    if (anyZero({r.power, r.torque})) {
        return zeroValue();
    }
    if (r.torqueOrForce != 0) {
        r.torque = torqueOfForce(r.force);
    } else {
        r.force = forceOfTorque(r.torque);
    }
    r.cadence = r.power * 60.0 / (r.torque * 2.0 * pi);
    return maxPowerStep();
}

ResultStatus powerOfTorque()
{
    RunState& r = runState;
    if (anyZero({r.cadence, r.torque})) {
        return zeroValue();
    }
    if (r.torqueOrForce == 0) {
        r.force = forceOfTorque(r.torque);
    } else if (r.torqueOrForce == 1) {
        r.torque = torqueOfForce(r.force);
    }
    r.power = radiansPerSecond(r.cadence) * r.torque;
    return maxPowerStep();
}

ResultStatus torqueOfPower()
{
    RunState& r = runState;
    if (anyZero({r.cadence, r.power})) {
        return zeroValue();
    }
    torqueStep();
    return maxPowerStep();
}

// Gear combination.

void takeGear(int row)
{
    runState.frontTooth = frontToothOf(row);
    runState.rearTooth = rearToothOf(row);
    runState.gearRatio = gearTable[row].ratio;
}

double enteredRatio()
{
    return static_cast<double>(runState.frontTooth) / runState.rearTooth;
}

ResultStatus cadenceOfVelocity()
{
    RunState& r = runState;
    if (r.velocity == 0.0) {
        r.cadence = 0.0;
        takeGear(0);
        return statusZeroValue;
    }
    r.gearRatio = enteredRatio();
    r.cadence = r.velocity * 60000.0 / (modelState.rearCircumference * r.gearRatio);
    return 0;
}

ResultStatus velocityOfCadence()
{
    RunState& r = runState;
    if (r.cadence == 0.0) {
        r.velocity = 0.0;
        takeGear(0);
        return statusZeroValue;
    }
    r.gearRatio = enteredRatio();
    r.velocity = modelState.rearCircumference * r.gearRatio * r.cadence / 60000.0;
    return 0;
}

// Any whole teeth between the profile's smallest and largest, whether the bicycle has them or not.
void takeNearestTeeth(double ratio)
{
    const ModelState& m = modelState;
    double distance = 1000.0;
    for (int32_t front = m.chainring[m.chainringCount - 1]; front <= m.chainring[0]; ++front) {
        for (int32_t rear = m.sprocket[0]; rear <= m.sprocket[m.sprocketCount - 1]; ++rear) {
            double away = std::fabs(ratio - static_cast<double>(front) / rear);
            if (away < distance) {
                distance = away;
                runState.frontTooth = front;
                runState.rearTooth = rear;
            }
        }
    }
    runState.gearRatio = enteredRatio();
}

ResultStatus teethOfVelocity(bool ownGears)
{
    RunState& r = runState;
    if (anyZero({r.velocity, r.cadence})) {
        r.velocity = r.cadence = 0.0;
        r.expectedRatio = 0.0;
        takeGear(0);
        return statusZeroValue;
    }
    r.expectedRatio = r.velocity * 60000.0 / (modelState.rearCircumference * r.cadence);
    if (ownGears) {
        takeGear(nearestGear(r.expectedRatio));
    } else {
        takeNearestTeeth(r.expectedRatio);
    }
    r.cadence = r.cadence * (r.expectedRatio / r.gearRatio);
    return 0;
}

ResultStatus teethTarget()
{
    return teethOfVelocity(runState.useMissionProfile != 0);
}

using Case = ResultStatus (*)();
constexpr int targetsPerCalculator = 4;

constexpr Case cases[theoryCount][targetsPerCalculator] = {
    {cadenceOfPower, powerOfCadence, cadenceMaxOfPower, maxPowerOfCadence},
    {cadenceOfTorque, powerOfTorque, torqueOfPower, nullptr},
    {cadenceOfVelocity, velocityOfCadence, teethTarget, nullptr},
};

ResultStatus verifyPower(int calculator, int target)
{
    ResultStatus status = velocityFromPedaling();
    status |= teethOfVelocity(true);
    if ((calculator == 0 && target != 1) || (calculator == 1 && target == 2)) {
        status |= cadenceOfVelocity();
    }
    return status | powerFromVelocity();
}

} // namespace

void theorySetUp()
{
    const ParameterBlock& in = workingBlock;
    RunState& r = runState;
    const int n = in.theoryCalculator;
    r.airPressureRatio = modelState.hectoPascal / seaLevelPressure;
    r.headWind = modelState.windSpeed;
    r.cadence = in.theoryCadence[n];
    r.power = in.theoryPower[n];
    r.torque = in.theoryTorque[n];
    r.force = in.theoryForce[n];
    r.cadenceMax = in.theoryCadenceMax[n];
    r.maxPower = in.theoryMaxPower[n];
    r.velocity = in.theoryVelocity[n];
    r.inclination = in.theoryInclination[n];
    r.frontTooth = in.frontTooth;
    r.rearTooth = in.rearTooth;
    r.useMissionProfile = in.useMissionProfile;
    r.torqueOrForce = in.torqueOrForce;
    updateLoadAndGrip(0.0);
}

ResultStatus theoryCalculate()
{
    Case solve = cases[workingBlock.theoryCalculator][workingBlock.theoryTarget];
    return solve != nullptr ? numbersOrZero(solve()) : 0;
}

ResultStatus theoryVerify()
{
    const int calculator = workingBlock.theoryCalculator;
    ResultStatus status = calculator == 2 ? powerFromVelocity() : verifyPower(calculator, workingBlock.theoryTarget);
    return (status & 0x7FFF) != 0 ? status << 4 : numbersOrZero(status);
}

} // namespace torvane
