// The model asked for many roads and velocities at once: to the last bit what resistance.h and solver.h answer to each
// alone, in a fraction of the time.
#pragma once

#include "model/resistance.h"

#include <cstddef>
#include <span>

namespace torvane {

// All combinations of these. Answers stand in this order, the last list running fastest.
struct RoadGrid {
    std::span<const double> inclinations; // %, + ascent
    std::span<const double> headWinds;    // m/s, + head, - tail
    std::span<const double> asked;        // velocities in m/s, or powers in W
};

inline size_t pointsOf(const RoadGrid& grid)
{
    return grid.inclinations.size() * grid.headWinds.size() * grid.asked.size();
}

// Of the evaluation physics and air hold for all; it sets slope and wind, and the loads of a rider who does not brake.
// As many threads as are asked for, at least one; fewer where the system has no more.

// W at a stage that hold each velocity, as solvePowerAtVelocity; answers has room for every point.
void powersOverGrid(const Model& model, const Evaluation& air, int stage, const RoadGrid& grid, size_t threads,
                    std::span<double> answers);

// Velocities in m/s that each power at a stage holds, with their statuses, as solveVelocityForPower.
void velocitiesOverGrid(const Model& model, const Evaluation& air, int stage, const RoadGrid& grid, size_t threads,
                        std::span<Solved> answers);

} // namespace torvane
