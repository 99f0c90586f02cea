// A model with the defaults in force, on a level road in still air, as every test of the model and of what stands on it
// wants to start. Change fields of workingBlock and call restart, or change modelState and call rebuildModel.
#pragma once

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/run_state.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

namespace torvane {

class ModelTest : public ::testing::Test {
protected:
    ModelTest()
    {
        setDefaults(workingBlock);
        restart();
    }

    static void restart()
    {
        runState = {};
        modelState = {};
        startModel(workingBlock);
        rebuildModel();
        runState.airPressureRatio = modelState.hectoPascal / seaLevelPressure;
        takeRoad(0.0);
    }

    static void takeRoad(double inclination)
    {
        runState.inclination = inclination;
        runState.headWind = modelState.windSpeed;
        updateLoadAndGrip(0.0);
        setLoads();
    }
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
