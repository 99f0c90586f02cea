// A rim or rotor as one lump of metal at one temperature, cooled by radiation and moving air.
// The physics that braking runs and recorded rides share; who adds heat, and when, is theirs. Wheel 0 front, 1 rear.
#pragma once

#include "model/model.h"

namespace torvane {

// Of carbon, aluminum and stainless.
struct BrakeMaterials {
    double specificHeat[3]; // J/gK
    double emittance[3];
};

// The brakes of a run.
struct BrakeHeat {
    double brakeHeat[2];        // J that came in
    double brakeRadiated[2];    // J lost, negative
    double brakeTemperature[2]; // Cel
};

BrakeMaterials brakeMaterialsOf(const ParameterBlock& block);

// Heat in J that warms the brake of a wheel by one degree, of the brake type selected on it.
double brakeHeatCapacity(const Model& model, const BrakeMaterials& materials, int wheel);

// Loss in W of a brake at a temperature, in air of an ambient temperature (Celsius both).
// The convection coefficient is in W/m2K. The emittance is taken by wheel, not by material.
double brakeLossRate(const Model& model, const BrakeMaterials& materials, int wheel, double brakeTemperature,
                     double ambient, double convection);

// One step's view of brakeHeat and brakeRadiated: sets brakeTemperature[wheel], returns the loss in W while rolling at
// a velocity in m/s.
double heatLossRate(const Model& model, const BrakeMaterials& materials, BrakeHeat& heat, double velocity, int wheel);

// As keepEvaluation.
void keepBrakeHeat(ModelState& state, const BrakeHeat& heat);

} // namespace torvane
