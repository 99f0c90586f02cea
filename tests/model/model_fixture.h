// A model of the defaults, on a level road in still air, as every test of the model and of what stands on it wants to
// start. Change the block and call restart, or change the model's state and call rebuildModel.
#pragma once

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/gear_table.h"
#include "model/resistance.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

namespace torvane {

class ModelTest : public ::testing::Test {
protected:
    ModelTest()
    {
        setDefaults(block);
        restart();
    }

    void restart()
    {
        model = modelOf(block);
        now = {};
        setAir(now, m.hectoPascal, m.temperature);
        takeRoad(0.0);
    }

    void takeRoad(double inclination)
    {
        now.inclination = inclination;
        now.headWind = m.windSpeed;
        updateLoadAndGrip(model, now, 0.0);
        setLoads(model, now);
    }

    ParameterBlock block;
    Model model;
    ModelState& m = model.state;
    Evaluation now;
};

constexpr double kph(double value)
{
    return value / 3.6;
}

using Random = std::mt19937_64;

inline double uniform(Random& random, double low, double high)
{
    return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
}

// The sign and payload of what is no number depend on the order of operands, which compilers choose.
inline uint64_t bitsOf(double value)
{
    return std::isnan(value) ? ~uint64_t{0} : std::bit_cast<uint64_t>(value);
}

} // namespace torvane
