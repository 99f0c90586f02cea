// Work at the pedals in the units of what is eaten for it.
#pragma once

namespace torvane {

constexpr double kiloCaloriePerKiloJoule = 0.238846;

// kcal to be eaten for work in kJ at the pedals, at an efficiency of the muscles, 0 to 1.
constexpr double foodKiloCalorieFor(double kiloJoule, double energyEfficiency)
{
    return kiloJoule * kiloCaloriePerKiloJoule / energyEfficiency;
}

} // namespace torvane
