// How the weight lies on the wheels and what the tyres and the gradient take of it, written once for one place and for
// two side by side. Internal to the model: callers use resistance.h and road_points.h. Number: double or Pair.
#pragma once

#include "model/evaluation.h"
#include "model/model.h"

#include <cmath>

namespace torvane {

constexpr double bpnOfCoefficients = 75.0; // rolling and friction coefficients are stated for this road

template <class Number>
struct Gradient {
    Number sine, cosine;
};

// rad
inline double slopeAngle(double inclination)
{
    return std::atan(inclination / 100.0);
}

// Sine and cosine of the inclination, worked out where it is not that of the last time.
const Slope& slopeOf(Evaluation& evaluation);

// Shares of the weight.
template <class Number>
struct WheelWeights {
    Number front, rear;
};

inline double loadWeight(const ModelState& m)
{
    return m.humanWeight + m.bikeWeight;
}

// A negative thrust is a braking force: it moves weight to the front.
template <class Number>
WheelWeights<Number> wheelWeightsOf(const ModelState& m, const Gradient<Number>& road, double thrustForce)
{
    Number rear = ((road.sine + 0.1 + thrustForce / m.inertialWeight) * 0.5) / road.cosine + 0.5;
    rear = rear < 0.0 ? Number{} : rear;
    rear = rear > 1.0 ? Number{} + 1.0 : rear;
    return {1.0 - rear, rear};
}

// The rolling coefficient in force.
template <class Number>
Number rollingOf(const ModelState& m, const WheelWeights<Number>& weights)
{
    Number rolling =
        (m.rollingCoefficient[0] * weights.front + m.rollingCoefficient[1] * weights.rear) * m.bpn / bpnOfCoefficients;
    if (m.roadSurface == surfaceDamp)
        return rolling * 0.8;
    return m.roadSurface == surfaceRain ? rolling * 1.1 : rolling;
}

template <class Number>
Number tyreFactorOf(const Model& model, const WheelWeights<Number>& weights)
{
    Number width = model.state.tyreSize[0] * weights.front + model.state.tyreSize[1] * weights.rear;
    Number factor = model.build.tyreLoad / (width * width);
    return factor < 1.0 ? Number{} + 1.0 : factor;
}

// kgf
template <class Number>
Number rollingLoadOf(const Model& model, const Gradient<Number>& road, const WheelWeights<Number>& weights,
                     Number rolling)
{
    return tyreFactorOf(model, weights) * road.cosine * loadWeight(model.state) * rolling;
}

// kgf
template <class Number>
Number slopeLoadOf(const ModelState& m, const Gradient<Number>& road)
{
    return road.sine * loadWeight(m);
}

} // namespace torvane
