// Two readings of the same formulas. Whoever evaluates the model chooses one; nothing else tells them apart.
#pragma once

#include <cstdint>

namespace torvane {

enum class Physics : int32_t {
    // The calculators' and simulations': the drag's power is its force times the velocity against the air, air thins
    // with its pressure alone.
    classic,
    // What a recorded ride is held against: the drag's power is its force times the velocity over ground, and cold air
    // is denser. Differs where there is wind, or not 20 Cel.
    ofTheRoad,
};
constexpr int physicsCount = 2;

} // namespace torvane
