#include "model/brake_heat.h"

#include "core/units.h"
#include "model/constants.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace torvane {

BrakeMaterials brakeMaterialsOf(const ParameterBlock& block)
{
    BrakeMaterials materials;
    std::copy(std::begin(block.specificHeat), std::end(block.specificHeat), materials.specificHeat);
    std::copy(std::begin(block.emittance), std::end(block.emittance), materials.emittance);
    return materials;
}

double brakeHeatCapacity(const Model& model, const BrakeMaterials& materials, int wheel)
{
    const ModelState& m = model.state;
    int type = m.brakeType[wheel];
    int material = m.brakeMaterial[type][wheel];
    return materials.specificHeat[material] * m.brakeWeight[type][wheel];
}

double brakeLossRate(const Model& model, const BrakeMaterials& materials, int wheel, double brakeTemperature,
                     double ambient, double convection)
{
    double area = model.state.brakeSurfaceArea[wheel];
    double radiation = (std::pow(brakeTemperature + celsiusOffset, 4.0) - std::pow(ambient + celsiusOffset, 4.0)) *
                       area * materials.emittance[wheel] * stefanBoltzmann;
    return radiation + (brakeTemperature - ambient) * area * convection;
}

double heatLossRate(const Model& model, const BrakeMaterials& materials, BrakeHeat& heat, double velocity, int wheel)
{
    double ambient = model.state.temperature;
    heat.brakeTemperature[wheel] =
        (heat.brakeHeat[wheel] + heat.brakeRadiated[wheel]) / brakeHeatCapacity(model, materials, wheel) + ambient;
    return brakeLossRate(model, materials, wheel, heat.brakeTemperature[wheel], ambient,
                         velocity * 0.5 * kphPerMps + 7.0);
}

void keepBrakeHeat(ModelState& state, const BrakeHeat& heat)
{
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        state.brakeHeat[wheel] = heat.brakeHeat[wheel];
        state.brakeRadiated[wheel] = heat.brakeRadiated[wheel];
        state.brakeTemperature[wheel] = heat.brakeTemperature[wheel];
    }
}

} // namespace torvane
