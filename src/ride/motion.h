// The laws of motion that all runs over time share, one step of constant acceleration at a time.
// Reads ride.model.state and ride.found; keeps its place in a StepState.
#pragma once

#include "core/ride_choices.h"
#include "model/step_state.h"
#include "ride/ride_records.h"

namespace torvane {

constexpr double longestRun = 900.0;      // s simulated; a run is cut there
constexpr double plateauAccele = 0.00025; // m/s2; below it a velocity counts as steady
constexpr double leastInterval = 0.001;   // s; a finer step would take hours

// Teeth and ratio of the row state.gear.
void engageGear(const Model& model, StepState& state);
// The row that a run starts in: the user's choice, held within the gear table, or the one nearest to usualRatio.
int startGear(const RideRun& ride, GearedStart which, double velocity);

// The power found for a reference; false where losses that reach the whole of it leave no number, and then it is 0.
bool takePower(RideRun& ride, double power);

// Weight split, rolling and grip without thrust at the present inclination. Every pass starts from there, so that two
// passes are the same physics to the last bit, whatever ran before.
void resetGrip(RideRun& ride);

// Pedaling power in W that holds the ending velocity, on that grip.
double powerForEndingVelocity(RideRun& ride);

// The stages of a log's first row: the power that holds the starting velocity, as if it were pedaled.
void showStart(RideRun& ride, const StepState& state);

// Moves the resistance of the step before into previousResistance, and takes that of the present velocity.
void updateResistance(RideRun& ride, StepState& state);

// Acceleration in m/s2 by now.thrustPower less the mean of both resistances. Needs a velocity.
double powerAcceleration(const RideRun& ride, const StepState& state);
// The same by a force in kgf and the gradient alone, where power over velocity has no meaning: at standstill.
double gravityAcceleration(const RideRun& ride, double thrustForce);

// Lets found.maxAccele follow the largest amount, keeping its sign.
void followLargestAccele(RideRun& ride, double accele);

// Velocity and distance of one step at state.accele. The time is the caller's: a last step may be shorter.
void advance(StepState& state, double dt);

// Ends a step at endVelocity, which it has passed: distance and time go back to there. Returns the overshoot
// in seconds, which is taken as a fraction of the step; meant so.
double settleAtVelocity(const RideRun& ride, StepState& state, double dt);

// Velocity, sector time, distance and mean acceleration of a run from startVelocity into found.
// The mean of a run over time goes to endVelocity, also where the run stopped short of it.
void storeMotion(RideRun& ride, const StepState& state);

// Mean acceleration between two velocities; 0 over no time.
double meanAccele(double from, double to, double time);

// Step for an interval wanted: 1/n s for the n from 2 to 100 dividing 1000 whose 1/n is nearest.
double quantizeInterval(double wanted);

// Step that resolves the turn of a wheel in the gear for a velocity.
double automaticInterval(const Model& model, double velocity);

} // namespace torvane
