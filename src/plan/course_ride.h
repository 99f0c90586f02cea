// A course ridden, second by second: what the model makes of a power along a road.
#pragma once

#include "core/parameter_block.h"
#include "core/progress.h"
#include "model/model.h"
#include "model/power_sinks.h"
#include "plan/course.h"
#include "plan/plan_options.h"

#include <array>
#include <cstdint>
#include <vector>

namespace torvane {

enum class Going : uint8_t { pedalling, coasting, braking, walking, standing };

// The end of a time step; what flowed, flowed in the step that led there. The first is the start.
struct CourseStep {
    double time = 0;     // s since the start, stops included; a whole number of steps but for the last
    double distance = 0; // m
    double speed = 0;    // m/s
    double power = 0;    // W of the rider, at the stage that the settings tell power for
    double motor = 0;    // W
    double brake = 0;    // W into both brakes
    double cadence = 0;  // rpm, 0 who does not pedal
    std::array<double, 2> brakeTemperature = {}; // Cel, front and rear
    PowerSplit split = {};                       // W; on foot, of what pushes the bicycle
    int16_t gear = 0;                            // row of the gear table
    Going going = Going::pedalling;
};

// J. What comes in is pedalled, motored, and blown by a tail wind; the rest is where it goes.
struct EnergyBalance {
    double thrust = 0; // of rider and motor, at the road
    double slope = 0, air = 0, rolling = 0, brakes = 0, kinetic = 0;
    double walked = 0;  // what it takes to push the bicycle on foot, or to hold it
    double heights = 0; // weight times the rises of the course, point by point; must come to `slope`
};

struct CourseRide {
    std::vector<CourseStep> steps = {}; // each timeStep, and one at a stop's end and at the arrival
    double seconds = 0;                 // stops included
    double movingSeconds = 0;
    double pedalSeconds = 0, coastSeconds = 0, brakeSeconds = 0, walkSeconds = 0;
    double walkMetres = 0;
    double lowestCadence = 0;           // rpm at a steady speed; 0 who never pedals so
    double topSpeed = 0;                // m/s
    double meanPower = 0;               // W over the time in the saddle: in motion, but for walking
    double normalisedPower = 0;         // W, likewise
    double kiloJoule = 0;               // of the rider
    std::array<double, 2> hottest = {}; // Cel, brakes
    EnergyBalance energy = {};
};

// The power that a rider wants to give at a place.
struct PowerProfile {
    double step = 10;               // m
    std::vector<double> watts = {}; // of each step, the last goes on
    double at(double distance) const;
};
PowerProfile constantPower(double watts);

struct RideConditions {
    const Model& model;
    const ParameterBlock& settings; // safetyMargin, analysePowerBase, brake materials
    const Course& course;
    const PlanOptions& options;
    double extraHeadWind = 0; // m/s, whatever the heading
};

constexpr double mostRiding = 20 * 86400; // s in motion

// fitOk; planNeverArrives where nothing moves; planTooSlow. Without steps only the sums are kept.
StatusCode rideCourse(const RideConditions& conditions, const PowerProfile& profile, CourseRide& ride,
                      bool keepsSteps = true);

// m/s that the road allows at each point, by bends, the top speed and the braking before them and before stops.
std::vector<double> speedLimits(const RideConditions& conditions);

} // namespace torvane
