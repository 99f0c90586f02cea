#include "model/brake_heat.h"

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/run_state.h"

#include <cmath>

namespace torvane {

double brakeHeatCapacity(int wheel)
{
    int type = modelState.brakeType[wheel];
    int material = modelState.brakeMaterial[type][wheel];
    return runState.specificHeat[material] * modelState.brakeWeight[type][wheel];
}

double brakeLossRate(int wheel, double brakeTemperature, double ambient, double convection)
{
    double area = modelState.brakeSurfaceArea[wheel];
    double radiation = (std::pow(brakeTemperature + celsiusOffset, 4.0) - std::pow(ambient + celsiusOffset, 4.0)) *
                       area * runState.emittance[wheel] * stefanBoltzmann;
    return radiation + (brakeTemperature - ambient) * area * convection;
}

double heatLossRate(double velocity, int wheel)
{
    ModelState& m = modelState;
    m.brakeTemperature[wheel] =
        (m.brakeHeat[wheel] + m.brakeRadiated[wheel]) / brakeHeatCapacity(wheel) + m.temperature;
    return brakeLossRate(wheel, m.brakeTemperature[wheel], m.temperature, velocity * 0.5 * 3.6 + 7.0);
}

} // namespace torvane
