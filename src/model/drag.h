// The air drag itself, written once for one velocity and for two side by side. Internal to the model: callers use
// resistance.h and road_grid.h.
#pragma once

#include "core/units.h"
#include "model/constants.h"
#include "model/model.h"

namespace torvane {

// Two numbers worked on side by side, each rounded as it would be alone: a division costs as much for two as for one.
using Pair [[gnu::vector_size(16)]] = double;

inline Pair pairOf(const double (&values)[2])
{
    return Pair{values[0], values[1]};
}

// The velocity against the air in kph, and the square of its share of 50 kph. Number: double or Pair.
template <class Number>
struct Pace {
    Number kph, squared;

    explicit Pace(Number air) : kph(air * kphPerMps), squared((kph / 50.0) * (kph / 50.0)) {}
};

// kgf of both wheels.
inline double wheelDragOf(const ModelState& m, const Pace<double>& pace)
{
    Pair squares = {pace.squared, pace.squared};
    if (m.wheelResistVelocity[0] != 50.0 || m.wheelResistVelocity[1] != 50.0) { // hardly a wheel is measured elsewhere
        Pair share = pace.kph / pairOf(m.wheelResistVelocity);
        squares = share * share;
    }
    Pair drag = squares * pairOf(m.wheelResist) / wattsPerKgfAt50Kph * pairOf(m.tyreSize) / 23.0;
    return drag[0] + drag[1];
}

inline Pair wheelDragOf(const ModelState& m, const Pace<Pair>& pace)
{
    Pair drag[wheelCount];
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        Pair squares = pace.squared;
        if (m.wheelResistVelocity[wheel] != 50.0) {
            Pair share = pace.kph / m.wheelResistVelocity[wheel];
            squares = share * share;
        }
        drag[wheel] = squares * m.wheelResist[wheel] / wattsPerKgfAt50Kph * m.tyreSize[wheel] / 23.0;
    }
    return drag[0] + drag[1];
}

// kgf, what a helmet adds to a normal one.
template <class Number>
Number helmetDragOf(const ModelState& m, const Pace<Number>& pace)
{
    constexpr double resists[] = {3.0, 0.0, -4.12}; // W at 50 kph
    return m.helmet == helmetNormal ? Number{} : pace.squared * resists[m.helmet] / wattsPerKgfAt50Kph;
}

// kgf, against air that comes with a velocity.
template <class Number>
struct DragForces {
    Number shell, human, wheel;
};

template <class Number>
DragForces<Number> dragOf(const Model& model, double factor, Number air)
{
    const ModelState& m = model.state;
    const Build& b = model.build;
    Pace<Number> pace(air);
    Number surface = b.surface * (air * air);
    Number all = b.weight * surface - pace.squared * 1.6 * 55.0 / wattsPerKgfAt50Kph;
    Number shell = b.shellWeight * surface * 0.12;
    Number body = all * 0.12 - shell + all * 0.88;
    Number covered = m.shellType != shellNormal ? shell * m.shellAeroRatio : shell;
    DragForces<Number> drag = {covered, body * b.posture + helmetDragOf(m, pace), wheelDragOf(m, pace)};
    if (factor != 1.0) // most riders have none, and nothing waits for the products then
        drag = {drag.shell * factor, drag.human * factor, drag.wheel * factor};
    return drag;
}

// What the drag's force goes with to make its power. Over ground the sign is that of the force: air that comes from
// behind pushes.
template <class Number>
Number dragVelocity(Physics physics, Number air, Number ground)
{
    if (physics == Physics::classic)
        return air;
    return air < 0.0 ? -ground : ground;
}

} // namespace torvane
