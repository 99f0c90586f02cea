// The resistances as their formulas read, every power and angle taken anew: what the program's own evaluation, which
// keeps what does not change, must equal to the last bit, and what its speed is measured against.
#pragma once

#include "model/constants.h"
#include "model/resistance.h"

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

inline double loadWeight(const ModelState& m)
{
    return m.humanWeight + m.bikeWeight;
}

constexpr double wearFactor[] = {0.956, 1.0, 1.07, 1.2, 1.3};
constexpr double helmetResist[] = {3.0, 0.0, -4.12}; // W at 50 kph against a normal helmet

inline double wheelDragOf(const ModelState& m, int wheel, double kph)
{
    double share = kph / m.wheelResistVelocity[wheel];
    return share * share * m.wheelResist[wheel] / wattsPerKgfAt50Kph * m.tyreSize[wheel] / 23.0;
}

inline void splitWeight(const ModelState& m, Evaluation& e, double thrustForce)
{
    double angle = slopeAngle(e.inclination);
    double rear = ((std::sin(angle) + 0.1 + thrustForce / m.inertialWeight) * 0.5) / std::cos(angle) + 0.5;
    e.rearWeightRatio = std::clamp(rear, 0.0, 1.0);
    e.frontWeightRatio = 1.0 - e.rearWeightRatio;
}

inline void updateGrip(const ModelState& m, Evaluation& e)
{
    double front = m.frictionCoefficient[0] * e.frontWeightRatio;
    double rear = m.frictionCoefficient[1] * e.rearWeightRatio;
    e.frontFrictionShare = front / (front + rear);
    e.rearFrictionShare = 1.0 - e.frontFrictionShare;
    e.effectiveFriction = (front + rear) * m.bpn / bpnOfCoefficients;
    if (m.roadSurface != 0)
        e.effectiveFriction *= 0.7;
}

inline void updateLoadAndGrip(const Model& model, Evaluation& e, double thrustForce)
{
    const ModelState& m = model.state;
    splitWeight(m, e, thrustForce);
    e.effectiveRolling = (m.rollingCoefficient[0] * e.frontWeightRatio + m.rollingCoefficient[1] * e.rearWeightRatio) *
                         m.bpn / bpnOfCoefficients;
    if (m.roadSurface == 1)
        e.effectiveRolling *= 0.8;
    else if (m.roadSurface == 2)
        e.effectiveRolling *= 1.1;
    updateGrip(m, e);
}

inline double tyreLoadFactor(const Model& model, const Evaluation& e)
{
    const ModelState& m = model.state;
    double width = m.tyreSize[0] * e.frontWeightRatio + m.tyreSize[1] * e.rearWeightRatio;
    double factor = (23.0 * 23.0 * loadWeight(m) / 83.0) / (width * width);
    return factor < 1.0 ? 1.0 : factor;
}

inline void setLoads(const Model& model, Evaluation& e)
{
    const ModelState& m = model.state;
    double angle = slopeAngle(e.inclination);
    e.slopeLoad = std::sin(angle) * loadWeight(m);
    e.rollingLoad = plain::tyreLoadFactor(model, e) * std::cos(angle) * loadWeight(m) * e.effectiveRolling;
}

inline double pelotonRatioAt(const ModelState& m, double airVelocity)
{
    int32_t riders = m.pelotonNumber;
    if (riders < 2 || !(airVelocity > 0.0))
        return 1.0;
    double length = riders < 15 ? riders : riders / 10.0 + 15.0; // a long train gains little more, with a step at 15
    double ratio = (1.0 / std::pow(length, 0.2)) * std::pow(m.pelotonVelocity, 0.2) / std::pow(airVelocity * 3.6, 0.2);
    ratio = ratio * std::pow(m.wheelDistance, 0.2) / std::pow(50.0, 0.2);
    if (m.rotateTop == 1)
        ratio = ((riders - 1) * ratio + 1.0) / riders; // a share of the time in front, in free air
    return ratio > 1.0 ? 1.0 : ratio;
}

inline double postureFactor(const ModelState& m)
{
    double torso = m.torsoAngle;
    double posture = std::sin(radians(torso)) / std::sin(radians(30.0)) * 0.8 + 0.2;
    if (torso < 20.0)
        posture += std::sin(radians(20.0 - torso)); // very low gets worse again
    return posture * wearFactor[m.wear];
}

inline void dragForces(const ModelState& m, Evaluation& e, double velocity)
{
    double height = m.humanHeight;
    double air = velocity + e.headWind;
    double surface = 7.638e-5 * std::pow(height, 0.725) * (air * air); // body surface by height
    double per50 = air * 3.6 / 50.0;
    double squared = per50 * per50;

    double all = std::pow(loadWeight(m), 0.425) * surface - squared * 1.6 * 55.0 / wattsPerKgfAt50Kph;
    double shell = std::pow(m.bikeWeight + height * 21.1 * height / 10000.0, 0.425) * surface * 0.12;
    double body = all * 0.12 - shell + all * 0.88;

    e.shellDrag = m.shellType != 0 ? shell * m.shellAeroRatio : shell;
    e.humanDrag = body * postureFactor(m) + squared * helmetResist[m.helmet] / wattsPerKgfAt50Kph;
    e.wheelDrag = wheelDragOf(m, 0, air * 3.6) + wheelDragOf(m, 1, air * 3.6);
}

inline Solved resistanceAtVelocity(const Model& model, Evaluation& e, double velocity)
{
    const ModelState& m = model.state;
    double airVelocity = e.headWind + velocity;
    double peloton = m.pelotonMode != 0 ? pelotonRatioAt(m, airVelocity) : m.pelotonRatio;
    double density = e.airRatio * peloton;

    dragForces(m, e, velocity);
    double factor = e.physics == Physics::ofTheRoad || model.calibratesClassic ? dragFactorOf(model.calibration) : 1;
    for (double* drag : {&e.shellDrag, &e.humanDrag, &e.wheelDrag})
        *drag *= factor;
    e.airDrag = e.shellDrag + e.humanDrag + e.wheelDrag;

    double overGround = airVelocity < 0.0 ? -velocity : velocity;
    double perForce = (e.physics == Physics::classic ? airVelocity : overGround) * density * standardGravity;
    e.shellDragPower = e.shellDrag * perForce;
    e.humanDragPower = e.humanDrag * perForce;
    e.wheelDragPower = e.wheelDrag * perForce;
    e.airDragPower = e.airDrag * perForce;
    e.totalLoad = e.rollingLoad + e.airDrag + e.slopeLoad;
    e.rollingPower = e.rollingLoad * velocity * standardGravity;
    e.slopePower = e.slopeLoad * velocity * standardGravity;
    return {e.rollingPower + e.airDragPower + e.slopePower,
            velocity > model.reachVelocity ? statusOverReach : statusDone};
}

} // namespace torvane::plain
