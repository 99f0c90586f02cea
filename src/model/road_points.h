// The model asked for many points of a ride at once, each with its own road, air and velocity: to the last bit what
// resistance.h and drivetrain.h answer to each alone. Divisions cost as much for two points as for one, and those of
// one pair need not wait for those of the pair before.
#pragma once

#include "model/evaluation.h"
#include "model/model.h"

#include <array>
#include <cstddef>

namespace torvane {

// Some points, a list for each of their figures.
struct RoadPoints {
    static constexpr size_t room = 64; // even
    using Figures = std::array<double, room>;

    size_t count = 0;
    Figures headWind = {}, airRatio = {};      // as those of an Evaluation
    Figures inclination = {};                  // %
    Figures sine = {}, cosine = {};            // of it
    Figures rollingLoad = {}, slopeLoad = {};  // kgf
    Figures velocity = {};                     // m/s
    Figures cadence = {};                      // rpm
    Figures thrustPower = {}, stagePower = {}; // W
};

// Sets sine and cosine of each inclination, as slopeOf does.
void takeSlopes(RoadPoints& points);

// Sets the loads of a rider who does not brake on each slope, as setLoads does.
void takeLoads(const Model& model, RoadPoints& points);

// Sets thrustPower, the power that holds the velocity, as resistanceAtVelocity does.
void takeThrustPowers(const Model& model, Physics physics, RoadPoints& points);

// Sets stagePower for thrustPower, velocity and cadence, as stagesFromThrust does, for riders without a motor.
void takeStagePowers(const Model& model, int stage, RoadPoints& points);

} // namespace torvane
