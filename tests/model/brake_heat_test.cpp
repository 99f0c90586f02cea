// How a brake sheds heat.
#include "model/brake_heat.h"

#include "model/model_fixture.h"

namespace torvane {

class BrakeHeatTest : public ModelTest {
protected:
    BrakeHeatTest()
    {
        const double heats[] = {0.91, 0.917, 0.499}, emittances[] = {0.9, 0.2, 0.1};
        std::copy(heats, heats + 3, runState.specificHeat);
        std::copy(emittances, emittances + 3, runState.emittance);
        modelState.brakeSurfaceArea[0] = modelState.brakeSurfaceArea[1] = 0.1;
    }
};

TEST_F(BrakeHeatTest, capacityFollowsTypeAndMaterial)
{
    EXPECT_NEAR(brakeHeatCapacity(0), 318.5, 1e-12); // 350 g of carbon
    modelState.brakeType[1] = 1;
    EXPECT_NEAR(brakeHeatCapacity(1), 49.9, 1e-12); // 100 g of stainless
}

TEST_F(BrakeHeatTest, radiationGoesByWheelAndConvectionBySpeed)
{
    // 180 K above air of 20: 0.1 m2 radiate 242.318104 W as a black body, and give 18 W to each W/m2K.
    EXPECT_NEAR(brakeLossRate(0, 200.0, 20.0, 25.0), 0.9 * 242.318104 + 450.0, 1e-5);
    EXPECT_NEAR(brakeLossRate(1, 200.0, 20.0, 0.0), 0.2 * 242.318104, 1e-5);
    EXPECT_EQ(brakeLossRate(0, 20.0, 20.0, 25.0), 0.0);
}

TEST_F(BrakeHeatTest, stepTakesItsTemperatureFromWhatTheBrakeHolds)
{
    modelState.brakeHeat[0] = 80000.0;
    modelState.brakeRadiated[0] = 318.5 * 180.0 - 80000.0;
    EXPECT_NEAR(heatLossRate(kph(36), 0), 0.9 * 242.318104 + 450.0, 1e-5); // half of 36 kph, and 7
    EXPECT_NEAR(modelState.brakeTemperature[0], 200.0, 1e-9);
    EXPECT_NEAR(heatLossRate(0.0, 0), 0.9 * 242.318104 + 126.0, 1e-5);
    EXPECT_EQ(heatLossRate(kph(36), 1), 0.0);
    EXPECT_EQ(modelState.brakeTemperature[1], 20.0);
}

} // namespace torvane
