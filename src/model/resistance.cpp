#include "model/resistance.h"

#include "model/constants.h"
#include "model/drag.h"
#include "model/loads.h"

#include <bit>
#include <cmath>

namespace torvane {

namespace {

double radians(double degrees)
{
    return degrees * pi / 180.0;
}

// Powers and angles cost more than all else here together. Those of the build are taken once for a model; those of the
// slope are kept in the evaluation beside the inclination that they were taken of, and taken anew when it differs in
// any bit: so they always are what a fresh evaluation would give.

[[gnu::noinline]] void takeSlope(Evaluation& e)
{
    double angle = slopeAngle(e.inclination);
    e.slope = {e.inclination, std::sin(angle), std::cos(angle)};
}

double postureOf(double torso, int32_t wear)
{
    static constexpr double wearFactors[] = {0.956, 1.0, 1.07, 1.2, 1.3};
    double posture = std::sin(radians(torso)) / std::sin(radians(30.0)) * 0.8 + 0.2;
    if (torso < 20.0)
        posture += std::sin(radians(20.0 - torso)); // very low gets worse again
    return posture * wearFactors[wear];
}

Build buildOf(const ModelState& m)
{
    Build build;
    build.surface = 7.638e-5 * std::pow(m.humanHeight, 0.725);
    build.weight = std::pow(loadWeight(m), 0.425);
    // A rider of standard build, 21.1 kg per square metre, on this bicycle.
    build.shellWeight = std::pow(m.bikeWeight + m.humanHeight * 21.1 * m.humanHeight / 10000.0, 0.425);
    build.posture = postureOf(m.torsoAngle, m.wear);
    build.tyreLoad = 23.0 * 23.0 * loadWeight(m) / 83.0;
    return build;
}

Peloton pelotonOf(const ModelState& m)
{
    int32_t riders = m.pelotonNumber;
    double length = riders < 15 ? riders : riders / 10.0 + 15.0; // a long train gains little more, with a step at 15
    return {(1.0 / std::pow(length, 0.2)) * std::pow(m.pelotonVelocity, 0.2), std::pow(m.wheelDistance, 0.2)};
}

Gradient<double> gradientOf(const Slope& road)
{
    return {road.sine, road.cosine};
}

WheelWeights<double> wheelWeightsOf(const Evaluation& e)
{
    return {e.frontWeightRatio, e.rearWeightRatio};
}

void updateGrip(const ModelState& m, Evaluation& e)
{
    double front = m.frictionCoefficient[0] * e.frontWeightRatio;
    double rear = m.frictionCoefficient[1] * e.rearWeightRatio;
    e.frontFrictionShare = front / (front + rear);
    e.rearFrictionShare = 1.0 - e.frontFrictionShare;
    e.effectiveFriction = (front + rear) * m.bpn / bpnOfCoefficients;
    if (m.roadSurface != surfaceDry)
        e.effectiveFriction *= 0.7;
}

} // namespace

const Slope& slopeOf(Evaluation& e)
{
    if (std::bit_cast<uint64_t>(e.slope.inclination) != std::bit_cast<uint64_t>(e.inclination))
        takeSlope(e);
    return e.slope;
}

void keepDragFactors(Model& model)
{
    model.build = buildOf(model.state);
    model.peloton = pelotonOf(model.state);
    double learned = dragFactorOf(model.calibration);
    model.dragFactor[static_cast<int>(Physics::classic)] = model.calibratesClassic ? learned : 1.0;
    model.dragFactor[static_cast<int>(Physics::ofTheRoad)] = learned;
}

void updateLoadAndGrip(const Model& model, Evaluation& e, double thrustForce)
{
    WheelWeights<double> weights = wheelWeightsOf(model.state, gradientOf(slopeOf(e)), thrustForce);
    e.frontWeightRatio = weights.front;
    e.rearWeightRatio = weights.rear;
    e.effectiveRolling = rollingOf(model.state, weights);
    updateGrip(model.state, e);
}

double tyreLoadFactor(const Model& model, const Evaluation& e)
{
    return tyreFactorOf(model, wheelWeightsOf(e));
}

void setLoads(const Model& model, Evaluation& e)
{
    Gradient<double> road = gradientOf(slopeOf(e));
    e.slopeLoad = slopeLoadOf(model.state, road);
    e.rollingLoad = rollingLoadOf(model, road, wheelWeightsOf(e), e.effectiveRolling);
}

void setAir(Evaluation& e, double pressure, double temperature)
{
    e.airRatio = pressure / seaLevelPressure;
    if (e.physics == Physics::ofTheRoad)
        e.airRatio *= dragTemperature / (temperature + celsiusOffset);
}

double pelotonRatioAt(const Model& model, double airVelocity)
{
    int32_t riders = model.state.pelotonNumber;
    if (riders < 2 || !(airVelocity > 0.0))
        return 1.0;
    const Peloton& p = model.peloton;
    double ratio = p.train / std::pow(airVelocity * kphPerMps, 0.2) * p.spacing / std::pow(50.0, 0.2);
    if (model.state.rotateTop == topRotates)
        ratio = ((riders - 1) * ratio + 1.0) / riders; // a share of the time in front, in free air
    return ratio > 1.0 ? 1.0 : ratio;
}

Solved resistanceAtVelocity(const Model& model, Evaluation& e, double velocity)
{
    const ModelState& m = model.state;
    double airVelocity = e.headWind + velocity;
    double pelotonPart = m.pelotonMode != pelotonEntered ? pelotonRatioAt(model, airVelocity) : m.pelotonRatio;
    double density = e.airRatio * pelotonPart;

    DragForces drag = dragOf(model, model.dragFactor[static_cast<int>(e.physics)], airVelocity);
    e.shellDrag = drag.shell;
    e.humanDrag = drag.human;
    e.wheelDrag = drag.wheel;
    e.airDrag = drag.shell + drag.human + drag.wheel;

    // Air and peloton thin the powers only; the forces stay those of full air.
    double perForce = dragVelocity(e.physics, airVelocity, velocity) * density * standardGravity;
    e.shellDragPower = drag.shell * perForce;
    e.humanDragPower = drag.human * perForce;
    e.wheelDragPower = drag.wheel * perForce;
    e.airDragPower = e.airDrag * perForce;
    e.totalLoad = e.rollingLoad + e.airDrag + e.slopeLoad;
    e.rollingPower = e.rollingLoad * velocity * standardGravity;
    e.slopePower = e.slopeLoad * velocity * standardGravity;
    return {e.rollingPower + e.airDragPower + e.slopePower,
            velocity > model.reachVelocity ? statusOverReach : statusDone};
}

} // namespace torvane
