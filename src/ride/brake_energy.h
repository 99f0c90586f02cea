// The brakes' heat and the energy of a braking run, step by step: what goes into the two brakes, what they shed, and
// what air and tyres take. Accumulates in the heat (wheel 0 front, 1 rear) and the quantities of a run. How a hot brake
// cools is the model's (brake_heat.h).
#pragma once

#include "ride/ride_records.h"

namespace torvane {

// Cold brakes and empty totals. Before a dry run and again before the logged run.
void clearBrakeEnergy(RideRun& ride);

// One braking step: each wheel takes its share of |thrustPower| (W) by its grip, and sheds heat at a velocity in m/s.
void accumulateBrakeStep(RideRun& ride, double velocity, double thrustPower, double dt);
// Takes a fraction of such a step back, where a run ended within it.
void undoBrakeOvershoot(RideRun& ride, double velocity, double thrustPower, double dt, double fraction);

// The brakes shed heat while none comes in. A negative time takes heat shed back.
void coolBrakes(RideRun& ride, double velocity, double dt);

// Work against air and tyres at the present resistances. A negative time takes it back.
void addDragQuantities(RideRun& ride, double dt);

// Temperature in Celsius as the curves show it. The rear brake's weight is looked up under the front brake's type, so
// that with two types its curve differs from the report; meant so.
double drawnTemperature(const RideRun& ride, int wheel);

// Energies in J between two velocities in m/s, over a distance on the present inclination. The kinetic energies take
// the velocities for kph and come out lower by 3.6 squared; meant so.
void energyLedger(RideRun& ride, double distance, double firstVelocity, double secondVelocity);

} // namespace torvane
