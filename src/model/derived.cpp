#include "model/derived.h"

#include "model/constants.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// A wheel is named by its old rim sizes: 28 inch has a rim of 622 mm, the others scale.
double rimDiameterOf(int32_t inches)
{
    return inches * 622.0 / 28.0;
}

double rollingCircumference(const ModelState& m, int wheel)
{
    return (m.rimDiameter[wheel] + 2.0 * m.tyreSize[wheel]) * pi;
}

void deriveWheels(ModelState& m)
{
    m.tyresWeight = m.tyreWeight[0] + m.tyreWeight[1];
    m.wheelsWeight = m.wheelWeight[0] + m.wheelWeight[1];
    m.rimDiameter[0] = rimDiameterOf(m.wheelSize[0]);
    m.frontCircumference = rollingCircumference(m, 0);
    m.rimDiameter[1] = rimDiameterOf(m.wheelSize[1]);
    m.rearCircumference = rollingCircumference(m, 1);
}

void deriveMasses(ModelState& m)
{
    if (m.exceptWheels != 0)
        m.bikeWeight = (m.wheelsWeight + m.tyresWeight) * 0.001 + m.bikeWeightExceptWheels;
    m.totalWeight = m.humanWeight + m.bikeWeight;
    // Rotating mass counts again, wheels by half and tyres by 0.9; both in grams.
    m.bikeInertialWeight = m.wheelsWeight * 0.0005 + m.bikeWeight + m.tyresWeight * 0.0009;
    m.inertialWeight = m.bikeInertialWeight + m.humanWeight;
}

void deriveTrainingLevels(Model& model)
{
    constexpr double shares[trainingLevelBoundCount] = {0.0, 0.56, 0.76, 0.91, 1.06, 1.21, 1.51};
    for (int level = 0; level < trainingLevelBoundCount; ++level)
        model.trainingLevelBound[level] = model.state.ftp * shares[level];
}

// Both sides of the rim's braking band, mm2. The metal below a low band sheds heat too.
double rimArea(double rimDiameter, double bandHeight)
{
    double band = bandHeight < 30.0 ? (bandHeight + 30.0) * 0.5 : bandHeight;
    return (rimDiameter - band * 0.5) * pi * band * 2.0;
}

// Both sides of the rotor, mm2.
double rotorArea(double diameter)
{
    double radius = diameter * 0.5;
    return radius * radius * pi * 2.0;
}

// Heat shedding surface of both brakes, m2.
void deriveBrakeSurfaceArea(ModelState& m)
{
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        int type = m.brakeType[wheel];
        double size = m.brakeSurfaceSize[type][wheel];
        double area = type == brakeRim ? rimArea(m.rimDiameter[wheel], size) : rotorArea(size);
        m.brakeSurfaceArea[wheel] = area / 1000000.0;
    }
}

} // namespace

void computeDerived(Model& model)
{
    ModelState& m = model.state;
    deriveWheels(m);
    deriveMasses(m);
    if (m.airPressureSource == pressureComputed)
        m.hectoPascal = airPressureAt(m.temperature, m.altitude);
    deriveBrakeSurfaceArea(m);
    deriveTrainingLevels(model);
}

double torsoAngleForPosition(int position)
{
    constexpr double angles[] = {0.0, 24.0, 30.0, 41.0, 47.3, 72.5};
    static_assert(std::size(angles) == positionCount);
    return position > positionTorsoAngle && position < positionCount ? angles[position] : 0.0;
}

double airPressureAt(double temperature, double altitude)
{
    double base = 1.0 - altitude * 0.0065 / (temperature + celsiusOffset);
    return base > 0.0 ? seaLevelPressure * std::pow(base, 5.2559) : 0.0;
}

WheelResist predictWheelResist(int32_t rimDepth, int32_t spokeCount, int32_t modelYear)
{
    // Wheels improved from 2001 on, ever more slowly, and no more after 2017.
    double progress = modelYear < 2001 ? 0.0 : 9.0 * std::log10(std::min(modelYear, 2017) - 2000.0);
    double exponent = spokeCount * 0.008015186913 - rimDepth * 0.00924480958 - progress * 0.034550905509;
    return {38.572590548 * std::exp(exponent), 50.0};
}

} // namespace torvane
