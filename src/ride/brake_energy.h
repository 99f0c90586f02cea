// The brakes' heat and the energy of a braking run, step by step: what goes into the two brakes, what they shed, and
// what air and tyres take. Accumulates in modelState.brakeHeat and brakeRadiated (wheel 0 front, 1 rear) and in
// runState's quantities. How a hot brake cools is the model's (brake_heat.h).
#pragma once

namespace torvane {

// Cold brakes and empty totals. Before a dry run and again before the logged run.
void clearBrakeEnergy();

// One braking step: each wheel takes its share of |thrustPower| (W) by its grip, and sheds heat at a velocity in m/s.
void accumulateBrakeStep(double velocity, double thrustPower, double dt);
// Takes a fraction of such a step back, where a run ended within it.
void undoBrakeOvershoot(double velocity, double thrustPower, double dt, double fraction);

// The brakes shed heat while none comes in. A negative time takes heat shed back.
void coolBrakes(double velocity, double dt);

// Work against air and tyres at the present resistances. A negative time takes it back.
void addDragQuantities(double dt);

// Temperature in Celsius as the curves show it. The rear brake's weight is looked up under the front brake's type, so
// that with two types its curve differs from the report; meant so.
double drawnTemperature(int wheel);

// Energies in J between two velocities in m/s, over a distance on an inclination. The kinetic energies take the
// velocities for kph and come out lower by 3.6 squared; meant so.
void energyLedger(double inclination, double distance, double firstVelocity, double secondVelocity);

} // namespace torvane
