// A model with the defaults in force, on a level road in still air, as every test of the model and of what stands on it
// wants to start. Change fields of workingBlock and call restart, or change modelState and call rebuildModel.
#pragma once

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/run_state.h"

#include <gtest/gtest.h>

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

} // namespace torvane
