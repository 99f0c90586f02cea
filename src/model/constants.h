// Physical constants that the model and all that stands on it share. Digits as the model was fitted with them.
#pragma once

namespace torvane {

constexpr double pi = 3.14159265358979323846;
constexpr double standardGravity = 9.80665;    // m/s2; turns kgf into N
constexpr double seaLevelPressure = 1013.25;   // hPa
constexpr double celsiusOffset = 273.15;       // K at 0 Celsius
constexpr double stefanBoltzmann = 5.67051e-8; // W/m2K4

// Pitch radius of a half-inch chain, mm per tooth: 12.7 / (2 pi).
constexpr double pitchRadiusPerTooth = 2.0212677772670706;

// (50 / 3.6) x 9.80665: divides the watts of a figure taken at 50 kph into kgf.
constexpr double wattsPerKgfAt50Kph = 136.20347222222222;

} // namespace torvane
