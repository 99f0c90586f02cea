// The resistances against their plain form, to the last bit, while their inputs change one at a time: whatever the
// program keeps from one evaluation to the next must not outlive a change.
#include "plain/resistance.h"

#include "model/model_fixture.h"

#include <functional>
#include <limits>

namespace torvane {

namespace {

// Mostly of the order of `usual`; sometimes anything that a double can be.
double anyDouble(Random& random, double usual)
{
    constexpr double odd[] = {0.0, -0.0, 1e-310, 1e308, -1e308, INFINITY, std::numeric_limits<double>::quiet_NaN()};
    uint64_t kind = random() % 16;
    if (kind == 0)
        return odd[random() % std::size(odd)];
    return kind == 1 ? uniform(random, -2.0, 2.0) * usual : uniform(random, 0.5, 1.5) * usual;
}

int32_t anyOf(Random& random, uint64_t count)
{
    return static_cast<int32_t>(random() % count);
}

// Each changes one thing that the resistances depend on.
const std::function<void(Random&)> changes[] = {
    [](Random& r) { modelState.humanHeight = anyDouble(r, 170); },
    [](Random& r) { modelState.humanWeight = anyDouble(r, 65); },
    [](Random& r) { modelState.bikeWeight = anyDouble(r, 8); },
    [](Random& r) { modelState.inertialWeight = anyDouble(r, 75); },
    [](Random& r) { modelState.torsoAngle = anyDouble(r, 25); },
    [](Random& r) { modelState.wear = anyOf(r, 5); },
    [](Random& r) { modelState.helmet = anyOf(r, 3); },
    [](Random& r) { modelState.shellType = anyOf(r, 3); },
    [](Random& r) { modelState.shellAeroRatio = anyDouble(r, 0.5); },
    [](Random& r) { modelState.wheelResist[r() % 2] = anyDouble(r, 20); },
    [](Random& r) { modelState.wheelResistVelocity[r() % 2] = anyDouble(r, 50); },
    [](Random& r) { modelState.tyreSize[r() % 2] = anyDouble(r, 23); },
    [](Random& r) { modelState.pelotonMode = anyOf(r, 2); },
    [](Random& r) { modelState.pelotonRatio = anyDouble(r, 0.7); },
    [](Random& r) { modelState.pelotonNumber = anyOf(r, 40) - 2; },
    [](Random& r) { modelState.pelotonVelocity = anyDouble(r, 40); },
    [](Random& r) { modelState.wheelDistance = anyDouble(r, 50); },
    [](Random& r) { modelState.rotateTop = anyOf(r, 2); },
    [](Random& r) { modelState.roadSurface = anyOf(r, 3); },
    [](Random& r) { runState.inclination = anyDouble(r, 8); },
    [](Random& r) { runState.headWind = anyDouble(r, 3); },
    [](Random& r) { runState.airPressureRatio = anyDouble(r, 1); },
};

using Outcome = std::vector<double>;

struct Operations {
    void (*updateLoadAndGrip)(double);
    void (*setLoads)();
    Solved (*resistanceAtVelocity)(double);
    double (*postureFactor)();
    double (*wheelDragAt)(double, double);
    double (*tyreLoadFactor)();
};

constexpr Operations program = {updateLoadAndGrip, setLoads,    resistanceAtVelocity,
                                postureFactor,     wheelDragAt, tyreLoadFactor};
constexpr Operations plainForm = {plain::updateLoadAndGrip, plain::setLoads,    plain::resistanceAtVelocity,
                                  plain::postureFactor,     plain::wheelDragAt, plain::tyreLoadFactor};

Outcome evaluate(const Operations& by, double force, double velocity)
{
    by.updateLoadAndGrip(force);
    by.setLoads();
    const Solved solved = by.resistanceAtVelocity(velocity);
    const ModelState& m = modelState;
    const RunState& r = runState;
    Outcome all = {m.frontWeightRatio,   m.rearWeightRatio,   m.effectiveRolling, m.effectiveFriction,
                   m.frontFrictionShare, m.rearFrictionShare, r.slopeLoad,        r.rollingLoad,
                   r.shellDrag,          r.humanDrag,         r.wheelDrag,        r.airDrag,
                   r.shellDragPower,     r.humanDragPower,    r.wheelDragPower,   r.airDragPower,
                   r.totalLoad,          r.rollingPower,      r.slopePower,       solved.value};
    all.insert(all.end(), {static_cast<double>(solved.status), by.postureFactor(), by.wheelDragAt(velocity, force),
                           by.tyreLoadFactor()});
    return all;
}

} // namespace

using PlainResistanceTest = ModelTest;

TEST_F(PlainResistanceTest, everyValueEqualsThePlainFormToTheLastBit)
{
    Random random(20240229);
    for (int round = 0; round < 60000; ++round) {
        if (round % 400 == 0)
            restart();
        const size_t change = random() % std::size(changes);
        changes[change](random);
        const double force = anyDouble(random, 5), velocity = anyDouble(random, 11);
        const Outcome kept = evaluate(program, force, velocity), wanted = evaluate(plainForm, force, velocity);
        for (size_t i = 0; i < wanted.size(); ++i)
            ASSERT_EQ(bitsOf(kept[i]), bitsOf(wanted[i])) << "value " << i << " after change " << change;
    }
}

} // namespace torvane
