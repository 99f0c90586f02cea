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
const std::function<void(Random&, ModelState&, Evaluation&)> changes[] = {
    [](Random& r, ModelState& m, Evaluation&) { m.humanHeight = anyDouble(r, 170); },
    [](Random& r, ModelState& m, Evaluation&) { m.humanWeight = anyDouble(r, 65); },
    [](Random& r, ModelState& m, Evaluation&) { m.bikeWeight = anyDouble(r, 8); },
    [](Random& r, ModelState& m, Evaluation&) { m.inertialWeight = anyDouble(r, 75); },
    [](Random& r, ModelState& m, Evaluation&) { m.torsoAngle = anyDouble(r, 25); },
    [](Random& r, ModelState& m, Evaluation&) { m.wear = anyOf(r, 5); },
    [](Random& r, ModelState& m, Evaluation&) { m.helmet = anyOf(r, 3); },
    [](Random& r, ModelState& m, Evaluation&) { m.shellType = anyOf(r, 3); },
    [](Random& r, ModelState& m, Evaluation&) { m.shellAeroRatio = anyDouble(r, 0.5); },
    [](Random& r, ModelState& m, Evaluation&) { m.wheelResist[r() % 2] = anyDouble(r, 20); },
    [](Random& r, ModelState& m, Evaluation&) { m.wheelResistVelocity[r() % 2] = anyDouble(r, 50); },
    [](Random& r, ModelState& m, Evaluation&) { m.tyreSize[r() % 2] = anyDouble(r, 23); },
    [](Random& r, ModelState& m, Evaluation&) { m.pelotonMode = anyOf(r, 2); },
    [](Random& r, ModelState& m, Evaluation&) { m.pelotonRatio = anyDouble(r, 0.7); },
    [](Random& r, ModelState& m, Evaluation&) { m.pelotonNumber = anyOf(r, 40) - 2; },
    [](Random& r, ModelState& m, Evaluation&) { m.pelotonVelocity = anyDouble(r, 40); },
    [](Random& r, ModelState& m, Evaluation&) { m.wheelDistance = anyDouble(r, 50); },
    [](Random& r, ModelState& m, Evaluation&) { m.rotateTop = anyOf(r, 2); },
    [](Random& r, ModelState& m, Evaluation&) { m.roadSurface = anyOf(r, 3); },
    [](Random& r, ModelState&, Evaluation& e) { e.inclination = anyDouble(r, 8); },
    [](Random& r, ModelState&, Evaluation& e) { e.headWind = anyDouble(r, 3); },
    [](Random& r, ModelState&, Evaluation& e) { e.airRatio = anyDouble(r, 1); },
    [](Random& r, ModelState&, Evaluation& e) { e.physics = Physics{anyOf(r, 2)}; },
};

using Outcome = std::vector<double>;

struct Operations {
    void (*updateLoadAndGrip)(const Model&, Evaluation&, double);
    void (*setLoads)(const Model&, Evaluation&);
    Solved (*resistanceAtVelocity)(const Model&, Evaluation&, double);
    double (*tyreLoadFactor)(const Model&, const Evaluation&);
};

constexpr Operations program = {updateLoadAndGrip, setLoads, resistanceAtVelocity, tyreLoadFactor};
constexpr Operations plainForm = {plain::updateLoadAndGrip, plain::setLoads, plain::resistanceAtVelocity,
                                  plain::tyreLoadFactor};

Outcome evaluate(const Operations& by, const Model& model, Evaluation& e, double force, double velocity)
{
    by.updateLoadAndGrip(model, e, force);
    by.setLoads(model, e);
    Solved solved = by.resistanceAtVelocity(model, e, velocity);
    Outcome all = {e.frontWeightRatio,   e.rearWeightRatio,   e.effectiveRolling, e.effectiveFriction,
                   e.frontFrictionShare, e.rearFrictionShare, e.slopeLoad,        e.rollingLoad,
                   e.shellDrag,          e.humanDrag,         e.wheelDrag,        e.airDrag,
                   e.shellDragPower,     e.humanDragPower,    e.wheelDragPower,   e.airDragPower,
                   e.totalLoad,          e.rollingPower,      e.slopePower,       solved.value};
    all.insert(all.end(), {static_cast<double>(solved.status), by.tyreLoadFactor(model, e)});
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
        size_t change = random() % std::size(changes);
        changes[change](random, m, now);
        model.calibration.dragFactor = static_cast<float>(uniform(random, 0.3, 1.8)); // also such as count for 1
        model.calibratesClassic = random() % 2 != 0;
        keepDragFactors(model);
        double force = anyDouble(random, 5), velocity = anyDouble(random, 11);
        Evaluation plainly = now;
        Outcome kept = evaluate(program, model, now, force, velocity);
        Outcome wanted = evaluate(plainForm, model, plainly, force, velocity);
        for (size_t i = 0; i < wanted.size(); ++i)
            ASSERT_EQ(bitsOf(kept[i]), bitsOf(wanted[i])) << "value " << i << " after change " << change;
    }
}

} // namespace torvane
