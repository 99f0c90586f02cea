#include "model/theory.h"

#include "model/constants.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/solver.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace torvane {

namespace {

bool anyZero(std::initializer_list<double> values)
{
    for (double value : values)
        if (value == 0.0)
            return true;
    return false;
}

ResultStatus zeroValue(Theory& r)
{
    r.cadence = r.power = r.cadenceMax = r.maxPower = r.torque = r.force = 0.0;
    return statusZeroValue;
}

bool areNumbers(std::initializer_list<double> values)
{
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

// Figures next to 0 lead to others that are none; they are as good as 0.
ResultStatus numbersOrZero(Theory& r, ResultStatus status)
{
    if (areNumbers({r.cadence, r.power, r.cadenceMax, r.maxPower, r.torque, r.force, r.gearRatio, r.expectedRatio}) &&
        std::isfinite(r.velocity))
        return status;
    r.velocity = std::isfinite(r.velocity) ? r.velocity : 0.0;
    r.expectedRatio = std::isfinite(r.expectedRatio) ? r.expectedRatio : 0.0;
    return status | zeroValue(r);
}

double forceOfTorque(const Model& model, double torque)
{
    return forceAtLever(torque, crankLever(model));
}

double torqueOfForce(const Model& model, double force)
{
    return crankLever(model) * force * standardGravity;
}

void torqueStep(const Model& model, Theory& r)
{
    r.torque = r.power / radiansPerSecond(r.cadence);
    r.force = forceOfTorque(model, r.torque);
}

// No summit at all gives a power at twice its cadence, where every parabola is down to 0.
ResultStatus maxPowerStep(Theory& r)
{
    double summit = requiredPower(r.power, r.cadence, r.cadenceMax);
    r.maxPower = std::isfinite(summit) ? summit : 0.0;
    return std::isfinite(summit) ? statusDone : statusZeroValue;
}

// Cadence theory: one point of the parabola, solved for one of its four figures.

ResultStatus cadenceOfPower(const Model& model, Theory& r)
{
    if (anyZero({r.power, r.maxPower, r.cadenceMax}))
        return zeroValue(r);
    double m = r.cadenceMax;
    if (r.power > r.maxPower)
        return statusIllegalValue;
    if (r.power == r.maxPower) {
        r.cadence = m;
        return 0;
    }
    r.cadence = (2.0 * m - std::sqrt((m * m - m * m * r.power / r.maxPower) * 4.0)) * 0.5; // the rising side
    torqueStep(model, r);
    return 0;
}

ResultStatus powerOfCadence(const Model& model, Theory& r)
{
    if (anyZero({r.cadence, r.maxPower, r.cadenceMax}))
        return zeroValue(r);
    double m = r.cadenceMax;
    r.power = (2.0 * m - r.cadence) * r.maxPower * r.cadence / (m * m);
    torqueStep(model, r);
    return 0;
}

ResultStatus cadenceMaxOfPower(const Model& model, Theory& r)
{
    if (anyZero({r.cadence, r.power, r.maxPower}))
        return zeroValue(r);
    double c = r.cadence;
    if (r.power > r.maxPower)
        return statusIllegalValue;
    if (r.power == r.maxPower) {
        r.cadenceMax = c;
        return 0;
    }
    double root = std::sqrt((r.maxPower * c - r.power * c) * (r.maxPower * 4.0 * c));
    double low = (2.0 * r.maxPower * c - root) / (2.0 * r.power);
    double high = (2.0 * r.maxPower * c + root) / (2.0 * r.power);
    r.cadenceMax = low > high ? low : high;
    torqueStep(model, r);
    return 0;
}

ResultStatus maxPowerOfCadence(const Model& model, Theory& r)
{
    if (anyZero({r.cadence, r.power, r.cadenceMax}))
        return zeroValue(r);
    torqueStep(model, r);
    return maxPowerStep(r);
}

// Pedaling dynamics: power is torque by angular velocity.

ResultStatus cadenceOfTorque(const Model& model, Theory& r)
{
    if (anyZero({r.power, r.torque}))
        return zeroValue(r);
    if (r.torqueOrForce != givenTorque)
        r.torque = torqueOfForce(model, r.force);
    else
        r.force = forceOfTorque(model, r.torque);
    r.cadence = r.power * 60.0 / (r.torque * 2.0 * pi);
    return maxPowerStep(r);
}

ResultStatus powerOfTorque(const Model& model, Theory& r)
{
    if (anyZero({r.cadence, r.torque}))
        return zeroValue(r);
    if (r.torqueOrForce == givenTorque)
        r.force = forceOfTorque(model, r.torque);
    else if (r.torqueOrForce == givenForce)
        r.torque = torqueOfForce(model, r.force);
    r.power = radiansPerSecond(r.cadence) * r.torque;
    return maxPowerStep(r);
}

ResultStatus torqueOfPower(const Model& model, Theory& r)
{
    if (anyZero({r.cadence, r.power}))
        return zeroValue(r);
    torqueStep(model, r);
    return maxPowerStep(r);
}

// Gear combination.

void takeGear(const Model& model, Theory& r, int row)
{
    r.frontTooth = frontToothOf(model, row);
    r.rearTooth = rearToothOf(model, row);
    r.gearRatio = model.gearTable[row].ratio;
}

double enteredRatio(const Theory& r)
{
    return static_cast<double>(r.frontTooth) / r.rearTooth;
}

ResultStatus cadenceOfVelocity(const Model& model, Theory& r)
{
    if (r.velocity == 0.0) {
        r.cadence = 0.0;
        takeGear(model, r, 0);
        return statusZeroValue;
    }
    r.gearRatio = enteredRatio(r);
    r.cadence = cadenceInGear(model, r.velocity, r.gearRatio);
    return 0;
}

ResultStatus velocityOfCadence(const Model& model, Theory& r)
{
    if (r.cadence == 0.0) {
        r.velocity = 0.0;
        takeGear(model, r, 0);
        return statusZeroValue;
    }
    r.gearRatio = enteredRatio(r);
    r.velocity = model.state.rearCircumference * r.gearRatio * r.cadence / mmPerMinute;
    return 0;
}

// Any whole teeth between the profile's smallest and largest, whether the bicycle has them or not.
void takeNearestTeeth(const ModelState& m, Theory& r, double ratio)
{
    double distance = 1000.0;
    for (int32_t front = m.chainring[m.chainringCount - 1]; front <= m.chainring[0]; ++front) {
        for (int32_t rear = m.sprocket[0]; rear <= m.sprocket[m.sprocketCount - 1]; ++rear) {
            double away = std::fabs(ratio - static_cast<double>(front) / rear);
            if (away < distance) {
                distance = away;
                r.frontTooth = front;
                r.rearTooth = rear;
            }
        }
    }
    r.gearRatio = enteredRatio(r);
}

ResultStatus teethOfVelocity(const Model& model, Theory& r, bool ownGears)
{
    if (anyZero({r.velocity, r.cadence})) {
        r.velocity = r.cadence = 0.0;
        r.expectedRatio = 0.0;
        takeGear(model, r, 0);
        return statusZeroValue;
    }
    r.expectedRatio = ratioAtCadence(model, r.velocity, r.cadence);
    if (ownGears)
        takeGear(model, r, nearestGear(model, r.expectedRatio));
    else
        takeNearestTeeth(model.state, r, r.expectedRatio);
    r.cadence = r.cadence * (r.expectedRatio / r.gearRatio);
    return 0;
}

ResultStatus teethTarget(const Model& model, Theory& r)
{
    return teethOfVelocity(model, r, r.useMissionProfile != 0);
}

using Case = ResultStatus (*)(const Model&, Theory&);
constexpr Case cases[calculatorCount][theoryTargetCount] = {
    {cadenceOfPower, powerOfCadence, cadenceMaxOfPower, maxPowerOfCadence},
    {cadenceOfTorque, powerOfTorque, torqueOfPower, nullptr},
    {cadenceOfVelocity, velocityOfCadence, teethTarget, nullptr},
};

// Power, torque, force and summit of a velocity on the road. Status 0 or statusOverReach.
ResultStatus powerFromVelocity(const Model& model, Theory& r)
{
    Evaluation& road = r.road;
    setLoads(model, road);
    Solved required = resistanceAtVelocity(model, road, r.velocity);
    drivetrainFromThrust(model, road, r.velocity, required.value);
    r.cadence = road.cadence;
    r.power = road.pedalingPower;
    r.torque = road.pedalingTorque;
    r.force = road.pedalingForce;
    r.cadenceMax = model.state.cadencePoweredMax;
    r.maxPower = requiredPower(r.power, r.cadence, r.cadenceMax);
    return required.status;
}

ResultStatus verifyPower(const Model& model, Theory& r)
{
    Solved found = velocityFromPedaling(model, r.road, r.power);
    r.velocity = found.value;
    r.cadence = r.road.cadence;
    ResultStatus status = found.status | teethOfVelocity(model, r, true);
    if ((r.calculator == calculatorCadence && r.target != cadenceTargetPower) ||
        (r.calculator == calculatorPedaling && r.target == pedalingTargetTorque))
        status |= cadenceOfVelocity(model, r);
    return status | powerFromVelocity(model, r);
}

} // namespace

Theory theorySetUp(const Model& model, const ParameterBlock& in)
{
    int n = in.theoryCalculator;
    Theory r = {};
    r.calculator = n;
    r.target = in.theoryTarget;
    r.cadence = r.askedCadence = in.theoryCadence[n];
    r.power = in.theoryPower[n];
    r.torque = in.theoryTorque[n];
    r.force = in.theoryForce[n];
    r.cadenceMax = in.theoryCadenceMax[n];
    r.maxPower = in.theoryMaxPower[n];
    r.velocity = in.theoryVelocity[n];
    r.frontTooth = in.frontTooth;
    r.rearTooth = in.rearTooth;
    r.useMissionProfile = in.useMissionProfile;
    r.torqueOrForce = in.torqueOrForce;
    setAir(r.road, model.state.hectoPascal, model.state.temperature);
    r.road.headWind = model.state.windSpeed;
    r.road.inclination = in.theoryInclination[n];
    updateLoadAndGrip(model, r.road, 0.0);
    return r;
}

ResultStatus theoryCalculate(const Model& model, Theory& theory)
{
    Case solve = cases[theory.calculator][theory.target];
    return solve != nullptr ? numbersOrZero(theory, solve(model, theory)) : 0;
}

ResultStatus theoryVerify(const Model& model, Theory& theory)
{
    ResultStatus status =
        theory.calculator == calculatorGears ? powerFromVelocity(model, theory) : verifyPower(model, theory);
    return isFatal(status) ? status << 4 : numbersOrZero(theory, status);
}

} // namespace torvane
