// The resistances as their formulas read, every power and angle taken anew: what the program's own evaluation, which
// keeps what does not change, must equal to the last bit, and what its speed is measured against.
#pragma once

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/resistance.h"
#include "model/run_state.h"

#include <algorithm>
#include <cmath>

namespace torvane::plain {

constexpr double bpnOfCoefficients = 75.0;

inline double radians(double degrees)
{
    return degrees * pi / 180.0;
}

inline double slopeAngle(double inclination)
{
    return std::atan(inclination / 100.0);
}

inline double loadWeight()
{
    return modelState.humanWeight + modelState.bikeWeight;
}

constexpr double wearFactor[] = {0.956, 1.0, 1.07, 1.2, 1.3};
constexpr double helmetResist[] = {3.0, 0.0, -4.12}; // W at 50 kph against a normal helmet

inline double wheelDragOf(int wheel, double kph)
{
    double share = kph / modelState.wheelResistVelocity[wheel];
    return share * share * modelState.wheelResist[wheel] / wattsPerKgfAt50Kph * modelState.tyreSize[wheel] / 23.0;
}

inline void splitWeight(double inclination, double thrustForce)
{
    double angle = slopeAngle(inclination);
    double rear = ((std::sin(angle) + 0.1 + thrustForce / modelState.inertialWeight) * 0.5) / std::cos(angle) + 0.5;
    modelState.rearWeightRatio = std::clamp(rear, 0.0, 1.0);
    modelState.frontWeightRatio = 1.0 - modelState.rearWeightRatio;
}

inline void updateGrip(int32_t bpn, int32_t roadSurface)
{
    double front = modelState.frictionCoefficient[0] * modelState.frontWeightRatio;
    double rear = modelState.frictionCoefficient[1] * modelState.rearWeightRatio;
    modelState.frontFrictionShare = front / (front + rear);
    modelState.rearFrictionShare = 1.0 - modelState.frontFrictionShare;
    modelState.effectiveFriction = (front + rear) * bpn / bpnOfCoefficients;
    if (roadSurface != 0)
        modelState.effectiveFriction *= 0.7;
}

inline void updateLoadAndGrip(double thrustForce)
{
    ModelState& m = modelState;
    splitWeight(runState.inclination, thrustForce);
    m.effectiveRolling = (m.rollingCoefficient[0] * m.frontWeightRatio + m.rollingCoefficient[1] * m.rearWeightRatio) *
                         m.bpn / bpnOfCoefficients;
    if (m.roadSurface == 1)
        m.effectiveRolling *= 0.8;
    else if (m.roadSurface == 2)
        m.effectiveRolling *= 1.1;
    updateGrip(m.bpn, m.roadSurface);
}

inline double tyreLoadFactor()
{
    double width =
        modelState.tyreSize[0] * modelState.frontWeightRatio + modelState.tyreSize[1] * modelState.rearWeightRatio;
    double factor = (23.0 * 23.0 * loadWeight() / 83.0) / (width * width);
    return factor < 1.0 ? 1.0 : factor;
}

inline void setLoads()
{
    double angle = slopeAngle(runState.inclination);
    runState.slopeLoad = std::sin(angle) * loadWeight();
    runState.rollingLoad = tyreLoadFactor() * std::cos(angle) * loadWeight() * modelState.effectiveRolling;
}

inline double pelotonRatioAt(double airVelocity)
{
    int32_t riders = modelState.pelotonNumber;
    if (riders < 2 || !(airVelocity > 0.0))
        return 1.0;
    double length = riders < 15 ? riders : riders / 10.0 + 15.0; // a long train gains little more, with a step at 15
    double ratio =
        (1.0 / std::pow(length, 0.2)) * std::pow(modelState.pelotonVelocity, 0.2) / std::pow(airVelocity * 3.6, 0.2);
    ratio = ratio * std::pow(modelState.wheelDistance, 0.2) / std::pow(50.0, 0.2);
    if (modelState.rotateTop == 1)
        ratio = ((riders - 1) * ratio + 1.0) / riders; // a share of the time in front, in free air
    return ratio > 1.0 ? 1.0 : ratio;
}

inline double postureFactor()
{
    double torso = modelState.torsoAngle;
    double posture = std::sin(radians(torso)) / std::sin(radians(30.0)) * 0.8 + 0.2;
    if (torso < 20.0)
        posture += std::sin(radians(20.0 - torso)); // very low gets worse again
    return posture * wearFactor[modelState.wear];
}

inline double wheelDragAt(double velocity, double wind)
{
    double kph = (velocity + wind) * 3.6;
    return wheelDragOf(0, kph) + wheelDragOf(1, kph);
}

inline void dragForces(double velocity, double wind)
{
    double height = modelState.humanHeight;
    double air = velocity + wind;
    double surface = 7.638e-5 * std::pow(height, 0.725) * (air * air); // body surface by height
    double per50 = air * 3.6 / 50.0;
    double squared = per50 * per50;

    double all = std::pow(loadWeight(), 0.425) * surface - squared * 1.6 * 55.0 / wattsPerKgfAt50Kph;
    double shell = std::pow(modelState.bikeWeight + height * 21.1 * height / 10000.0, 0.425) * surface * 0.12;
    double body = all * 0.12 - shell + all * 0.88;

    runState.shellDrag = modelState.shellType != 0 ? shell * modelState.shellAeroRatio : shell;
    runState.humanDrag = body * postureFactor() + squared * helmetResist[modelState.helmet] / wattsPerKgfAt50Kph;
    runState.wheelDrag = wheelDragAt(velocity, wind);
}

inline Solved resistanceAtVelocity(double velocity)
{
    RunState& r = runState;
    double airVelocity = r.headWind + velocity;
    double peloton = modelState.pelotonMode != 0 ? pelotonRatioAt(airVelocity) : modelState.pelotonRatio;
    double density = r.airPressureRatio * peloton;

    dragForces(velocity, r.headWind);
    r.airDrag = r.shellDrag + r.humanDrag + r.wheelDrag;

    double perForce = airVelocity * density * standardGravity;
    r.shellDragPower = r.shellDrag * perForce;
    r.humanDragPower = r.humanDrag * perForce;
    r.wheelDragPower = r.wheelDrag * perForce;
    r.airDragPower = r.airDrag * perForce;
    r.totalLoad = r.rollingLoad + r.airDrag + r.slopeLoad;
    r.rollingPower = r.rollingLoad * velocity * standardGravity;
    r.slopePower = r.slopeLoad * velocity * standardGravity;
    return {r.rollingPower + r.airDragPower + r.slopePower, velocity > r.reachVelocity ? statusOverReach : 0};
}

} // namespace torvane::plain
