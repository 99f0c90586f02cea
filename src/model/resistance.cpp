#include "model/resistance.h"

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/run_state.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace torvane {

namespace {

constexpr double bpnOfCoefficients = 75.0; // rolling and friction coefficients are stated for this road

double radians(double degrees)
{
    return degrees * pi / 180.0;
}

// Powers and angles cost more than all else here together, and their arguments seldom change from one evaluation to the
// next. Each record below keeps them beside the arguments that they were made from, and is made anew when these differ
// in any bit: so it always holds what a fresh evaluation would give.

bool sameBits(double a, double b)
{
    return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
}

// The way that is seldom taken stays out of the code that asks.
template <class Kept>
[[gnu::noinline, gnu::cold]] void renew(Kept& kept)
{
    kept = Kept(modelState);
}

struct Slope {
    double inclination;
    double sine, cosine; // of its angle

    explicit Slope(double percent) : inclination(percent)
    {
        double angle = std::atan(percent / 100.0);
        sine = std::sin(angle);
        cosine = std::cos(angle);
    }
};

Slope slope{0.0};

const Slope& slopeAt(double inclination)
{
    if (!sameBits(slope.inclination, inclination)) {
        slope = Slope(inclination);
    }
    return slope;
}

double loadWeight()
{
    return modelState.humanWeight + modelState.bikeWeight;
}

// Factor of torso angle and clothing on the drag of the body.
double postureOf(double torso, int32_t wear)
{
    static constexpr double wearFactors[] = {0.956, 1.0, 1.07, 1.2, 1.3};
    double posture = std::sin(radians(torso)) / std::sin(radians(30.0)) * 0.8 + 0.2;
    if (torso < 20.0) {
        posture += std::sin(radians(20.0 - torso)); // very low gets worse again
    }
    return posture * wearFactors[wear];
}

// What the drag of rider and frame takes from their build, whatever the velocity.
struct Build {
    double height, humanWeight, bikeWeight, torsoAngle;
    int32_t wear;
    double surface; // body surface by height, per square of the air's velocity
    double weight, shellWeight;
    double posture;

    explicit Build(const ModelState& m)
        : height(m.humanHeight), humanWeight(m.humanWeight), bikeWeight(m.bikeWeight), torsoAngle(m.torsoAngle),
          wear(m.wear)
    {
        surface = 7.638e-5 * std::pow(height, 0.725);
        weight = std::pow(humanWeight + bikeWeight, 0.425);
        // A rider of standard build, 21.1 kg per square metre, on this bicycle.
        shellWeight = std::pow(bikeWeight + height * 21.1 * height / 10000.0, 0.425);
        posture = postureOf(torsoAngle, wear);
    }
    bool isOf(const ModelState& m) const
    {
        return sameBits(height, m.humanHeight) && sameBits(humanWeight, m.humanWeight) &&
               sameBits(bikeWeight, m.bikeWeight) && sameBits(torsoAngle, m.torsoAngle) && wear == m.wear;
    }
};

Build build{ModelState{}};

inline const Build& presentBuild()
{
    if (!build.isOf(modelState)) {
        renew(build);
    }
    return build;
}

// What a train of riders takes from its size and spacing, whatever the velocity.
struct Peloton {
    int32_t riders;
    double velocity, wheelDistance;
    double train, spacing;

    explicit Peloton(const ModelState& m)
        : riders(m.pelotonNumber), velocity(m.pelotonVelocity), wheelDistance(m.wheelDistance)
    {
        double length =
            riders < 15 ? riders : riders / 10.0 + 15.0; // a long train gains little more, with a step at 15
        train = (1.0 / std::pow(length, 0.2)) * std::pow(velocity, 0.2);
        spacing = std::pow(wheelDistance, 0.2);
    }
    bool isOf(const ModelState& m) const
    {
        return riders == m.pelotonNumber && sameBits(velocity, m.pelotonVelocity) &&
               sameBits(wheelDistance, m.wheelDistance);
    }
};

Peloton peloton{ModelState{}};

const Peloton& presentPeloton()
{
    if (!peloton.isOf(modelState)) {
        renew(peloton);
    }
    return peloton;
}

// Two numbers worked on side by side, each rounded as it would be alone: a division costs as much for two as for one.
using Pair [[gnu::vector_size(16)]] = double;

Pair pairOf(const double (&values)[2])
{
    return Pair{values[0], values[1]};
}

// The velocity against the air in kph, and the square of its share of 50 kph.
struct Pace {
    double kph, squared;

    explicit Pace(double air) : kph(air * 3.6), squared((kph / 50.0) * (kph / 50.0)) {}
};

// kgf of both wheels.
double wheelDragOf(const Pace& pace)
{
    const ModelState& m = modelState;
    Pair squares = {pace.squared, pace.squared};
    if (m.wheelResistVelocity[0] != 50.0 || m.wheelResistVelocity[1] != 50.0) { // hardly a wheel is measured elsewhere
        Pair share = pace.kph / pairOf(m.wheelResistVelocity);
        squares = share * share;
    }
    Pair drag = squares * pairOf(m.wheelResist) / wattsPerKgfAt50Kph * pairOf(m.tyreSize) / 23.0;
    return drag[0] + drag[1];
}

// kgf, what a helmet adds to a normal one.
double helmetDragOf(const Pace& pace)
{
    static constexpr double resists[] = {3.0, 0.0, -4.12}; // W at 50 kph
    return modelState.helmet == 1 ? 0.0 : pace.squared * resists[modelState.helmet] / wattsPerKgfAt50Kph;
}

// kgf, against air that comes with a velocity.
struct DragForces {
    double shell, human, wheel;
};

inline DragForces dragOf(const Build& b, double air)
{
    Pace pace(air);
    double surface = b.surface * (air * air);
    double all = b.weight * surface - pace.squared * 1.6 * 55.0 / wattsPerKgfAt50Kph;
    double shell = b.shellWeight * surface * 0.12;
    double body = all * 0.12 - shell + all * 0.88;
    double covered = modelState.shellType != 0 ? shell * modelState.shellAeroRatio : shell;
    return {covered, body * b.posture + helmetDragOf(pace), wheelDragOf(pace)};
}

} // namespace

void splitWeight(double inclination, double thrustForce)
{
    const Slope& road = slopeAt(inclination);
    double rear = ((road.sine + 0.1 + thrustForce / modelState.inertialWeight) * 0.5) / road.cosine + 0.5;
    modelState.rearWeightRatio = std::clamp(rear, 0.0, 1.0);
    modelState.frontWeightRatio = 1.0 - modelState.rearWeightRatio;
}

void updateGrip(int32_t bpn, int32_t roadSurface)
{
    double front = modelState.frictionCoefficient[0] * modelState.frontWeightRatio;
    double rear = modelState.frictionCoefficient[1] * modelState.rearWeightRatio;
    modelState.frontFrictionShare = front / (front + rear);
    modelState.rearFrictionShare = 1.0 - modelState.frontFrictionShare;
    modelState.effectiveFriction = (front + rear) * bpn / bpnOfCoefficients;
    if (roadSurface != 0) {
        modelState.effectiveFriction *= 0.7;
    }
}

void updateLoadAndGrip(double thrustForce)
{
    ModelState& m = modelState;
    splitWeight(runState.inclination, thrustForce);
    m.effectiveRolling = (m.rollingCoefficient[0] * m.frontWeightRatio + m.rollingCoefficient[1] * m.rearWeightRatio) *
                         m.bpn / bpnOfCoefficients;
    if (m.roadSurface == 1) {
        m.effectiveRolling *= 0.8;
    } else if (m.roadSurface == 2) {
        m.effectiveRolling *= 1.1;
    }
    updateGrip(m.bpn, m.roadSurface);
}

double tyreLoadFactor()
{
    double width =
        modelState.tyreSize[0] * modelState.frontWeightRatio + modelState.tyreSize[1] * modelState.rearWeightRatio;
    double factor = (23.0 * 23.0 * loadWeight() / 83.0) / (width * width);
    return factor < 1.0 ? 1.0 : factor;
}

void setLoads()
{
    const Slope& road = slopeAt(runState.inclination);
    runState.slopeLoad = road.sine * loadWeight();
    runState.rollingLoad = tyreLoadFactor() * road.cosine * loadWeight() * modelState.effectiveRolling;
}

double pelotonRatioAt(double airVelocity)
{
    int32_t riders = modelState.pelotonNumber;
    if (riders < 2 || !(airVelocity > 0.0)) {
        return 1.0;
    }
    const Peloton& p = presentPeloton();
    double ratio = p.train / std::pow(airVelocity * 3.6, 0.2) * p.spacing / std::pow(50.0, 0.2);
    if (modelState.rotateTop == 1) {
        ratio = ((riders - 1) * ratio + 1.0) / riders; // a share of the time in front, in free air
    }
    return ratio > 1.0 ? 1.0 : ratio;
}

double postureFactor()
{
    return presentBuild().posture;
}

double wheelDragAt(double velocity, double wind)
{
    return wheelDragOf(Pace(velocity + wind));
}

void dragForces(double velocity, double wind)
{
    DragForces drag = dragOf(presentBuild(), velocity + wind);
    runState.shellDrag = drag.shell;
    runState.humanDrag = drag.human;
    runState.wheelDrag = drag.wheel;
}

Solved resistanceAtVelocity(double velocity)
{
    RunState& r = runState;
    double airVelocity = r.headWind + velocity;
    double pelotonPart = modelState.pelotonMode != 0 ? pelotonRatioAt(airVelocity) : modelState.pelotonRatio;
    double density = r.airPressureRatio * pelotonPart;

    DragForces drag = dragOf(presentBuild(), airVelocity);
    r.shellDrag = drag.shell;
    r.humanDrag = drag.human;
    r.wheelDrag = drag.wheel;
    r.airDrag = drag.shell + drag.human + drag.wheel;

    // Air and peloton thin the powers only; the forces stay those of full air.
    double perForce = airVelocity * density * standardGravity;
    r.shellDragPower = drag.shell * perForce;
    r.humanDragPower = drag.human * perForce;
    r.wheelDragPower = drag.wheel * perForce;
    r.airDragPower = r.airDrag * perForce;
    r.totalLoad = r.rollingLoad + r.airDrag + r.slopeLoad;
    r.rollingPower = r.rollingLoad * velocity * standardGravity;
    r.slopePower = r.slopeLoad * velocity * standardGravity;
    return {r.rollingPower + r.airDragPower + r.slopePower, velocity > r.reachVelocity ? statusOverReach : 0};
}

} // namespace torvane
