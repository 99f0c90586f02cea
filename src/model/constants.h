// Physical constants that the model and all that stands on it share. Digits as the model was fitted with them.
#pragma once

#include "core/units.h"

namespace torvane {

constexpr double pi = 3.14159265358979323846;
constexpr double standardGravity = 9.80665;    // m/s2; turns kgf into N
constexpr double mmPerMinute = 60000.0;        // in a m/s
constexpr double seaLevelPressure = 1013.25;   // hPa
constexpr double celsiusOffset = 273.15;       // K at 0 Celsius
constexpr double dragTemperature = 293.15;     // K, of the air that the drag is stated for
constexpr double stefanBoltzmann = 5.67051e-8; // W/m2K4

// Pitch radius of a half-inch chain, mm per tooth.
constexpr double pitchRadiusPerTooth = 12.7 / (2.0 * pi);

// Divides the watts of a figure taken at 50 kph into kgf.
constexpr double wattsPerKgfAt50Kph = 50.0 / kphPerMps * standardGravity;

} // namespace torvane
