// A rim or rotor as one lump of metal at one temperature, cooled by radiation and moving air.
// The physics that braking runs and recorded rides share; who adds heat, and when, is theirs. Wheel 0 front, 1 rear.
// Reads modelState's brakes and runState's specificHeat and emittance.
#pragma once

namespace torvane {

// Heat in J that warms the brake of a wheel by one degree, of the brake type selected on it.
double brakeHeatCapacity(int wheel);

// Loss in W of a brake at a temperature, in air of an ambient temperature (Celsius both).
// The convection coefficient is in W/m2K. The emittance is taken by wheel, not by material.
double brakeLossRate(int wheel, double brakeTemperature, double ambient, double convection);

// One step's view of modelState.brakeHeat and brakeRadiated: sets brakeTemperature[wheel], returns the loss in W while
// rolling at a velocity in m/s.
double heatLossRate(double velocity, int wheel);

} // namespace torvane
