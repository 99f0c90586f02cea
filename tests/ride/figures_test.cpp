// Figures of whole rides, computed by others from the same formulas. A row holds to half of its last digit.
#include "core/result_status.h"
#include "figures.h"
#include "ride/physiology.h"
#include "ride/ride_fixture.h"

namespace torvane {

namespace {

using Block = ParameterBlock&;

void unchanged(Block) {}

void hubMotor(Block b)
{
    b.motorLocation = 2;
    b.assistRangeMode[0] = b.assistRangeMode[1] = b.assistRangeMode[2] = 1;
}

struct PedaledCase {
    RideMode mode;
    int target;
    void (*change)(Block);
    ResultStatus status;
    double time, distance, maxAccele, pedaling, peakThrust, normalized, assist, power;
};

constexpr PedaledCase pedaledCases[] = {
    {rideAcceleration, 0, unchanged, 0, 10.780, 77.571, 2.855, 563.668, 709.952, 563.671, 0, 800.000},
    {rideAcceleration, 1, unchanged, 0, 7.510, 53.181, 4.048, 799.999, 1077.277, 800.004, 0, 1273.523},
    {rideAcceleration, 2, unchanged, statusEndNotReached, 104.720, 1027.204, 1.109, 256.234, 255.872, 258.379, 0,
     273.174},
    {rideAcceleration, 3, unchanged, 0, 37.159, 307.495, 1.266, 273.173, 293.827, 277.046, 0, 315.056},
    {rideAcceleration, 5, unchanged, 0, 13.675, 99.963, 2.304, 463.697, 558.115, 463.702, 0, 617.374},
    {rideAcceleration, 6, unchanged, 0, 13.875, 101.503, 2.275, 458.163, 550.313, 458.165, 0, 608.192},
    {rideAcceleration, 7, unchanged, 0, 11.340, 81.844, 2.726, 539.833, 673.468, 539.838, 0, 755.706},
    {rideAcceleration, 8, unchanged, statusWheelSpin, 9.940, 74.640, 6.911, 626.155, 717.517, 626.157, 0, 800.000},
    {rideAcceleration, 4, hubMotor, 0, 15.000, 113.930, 3.020, 211.134, 492.727, 211.134, 209.091, 269.652},
    {rideAcceleration, 0,
     [](Block b) {
         b.rideStartVelocity[1] = kph(20), b.rideInclination[1] = 5, b.startGearMode[0] = 1, b.startGearIndex[0] = 3;
     },
     0, 17.600, 162.547, 1.024, 726.837, 709.959, 726.837, 0, 800.000},
    {rideDeceleration, 0, unchanged, 0, 25.120, 313.417, -0.969, 0, 0, 0, 0, 0},
    {rideDeceleration, 2, unchanged, statusDeclineMayStop, 122.730, 1174.377, -0.877, 119.571, 122.155, 119.754, 0,
     127.104},
    {rideDeceleration, 3, unchanged, 0, 49.990, 554.804, -0.887, 102.195, 108.123, 102.376, 0, 112.383},
    {rideDeceleration, 5, unchanged, 0, 55.370, 602.705, -0.884, 107.122, 112.696, 107.288, 0, 117.177},
    {rideDeceleration, 0, [](Block b) { hubMotor(b), b.ridePower[2] = 100; }, statusDeclineMayStop, 97.390, 1056.133,
     -0.896, 92.988, 183.058, 93.079, 78.280, 100.000},
};

struct BrakedCase {
    RideMode mode;
    int target;
    void (*change)(Block);
    ResultStatus status;
    double time, meanThrust /* 0 untested */, airDrag, heat, radiated, rearRadiated;
    double step; // last digit of the energies
};

constexpr BrakedCase brakedCases[] = {
    {rideDeceleration, 0, [](Block b) { b.ridePower[2] = -500; }, 0, 12.920, -337.225, 5802.510, 2180.366, -284.719,
     -251.635, 0.001},
    {rideDeceleration, 7, [](Block b) { b.ridePower[2] = -800; }, 0, 7.800, -800.000, 4067.533, 3286.540, -240.668,
     -196.253, 0.001},
    {rideDeceleration, 3, [](Block b) { b.rideLegTime[2] = 8; }, 0, 8.010, -809.456, 3818.045, 3412.574, -290.167,
     -230.364, 0.001},
    {rideDeceleration, 2, [](Block b) { b.rideInclination[2] = -9; }, 0, 169.380, -431.892, 29675, 40940, -28647,
     -20915, 1},
    {ridePatternBraking, 0, [](Block b) { b.brakeType[0] = b.brakeType[1] = 1, b.rideForce[3] = -60; }, statusSlip,
     1.220, -8139, 634.864, 8943.686, -191.443, -16.539, 0.001},
    {ridePatternBraking, 2, unchanged, 0, 600, 0, 58713, 86707, -77930, -64886, 1},
    {ridePatternBraking, 3, unchanged, 0, 413.9, 0, 131919, 61630, -54856, -19824, 1},
};

} // namespace

using Figures = RideTest;

TEST_F(Figures, pedaledRuns)
{
    constexpr double half = 0.00051;
    for (const PedaledCase& c : pedaledCases) {
        setDefaults(block);
        c.change(block);
        SCOPED_TRACE(testing::Message() << "mode " << c.mode << ", target " << c.target << ", " << c.time << " s");
        EXPECT_EQ(run(c.mode, c.target).status, c.status);
        expectFigures({ride->found.sectorTime, ride->found.distance, ride->found.maxAccele,
                       ride->found.meanStagePower[stagePedaling], ride->found.peakPower[stageThrust],
                       ride->physiology.normalizedPower, ride->found.assistMeanPower, ride->found.power},
                      {c.time, c.distance, c.maxAccele, c.pedaling, c.peakThrust, c.normalized, c.assist, c.power},
                      half);
    }
}

TEST_F(Figures, brakedRuns)
{
    for (const BrakedCase& c : brakedCases) {
        setDefaults(block);
        c.change(block);
        SCOPED_TRACE(testing::Message() << "mode " << c.mode << ", target " << c.target << ", " << c.time << " s");
        EXPECT_EQ(run(c.mode, c.target).status, c.status);
        EXPECT_NEAR(ride->found.sectorTime, c.time, 0.05);
        if (c.meanThrust != 0.0) {
            EXPECT_NEAR(ride->found.meanStagePower[stageThrust], c.meanThrust, c.meanThrust < -2000 ? 0.51 : 0.00051);
        }
        expectFigures({ride->found.airDragQuantity, ride->heat.brakeHeat[0], ride->heat.brakeRadiated[0],
                       ride->heat.brakeRadiated[1]},
                      {c.airDrag, c.heat, c.radiated, c.rearRadiated}, 0.51 * c.step);
    }
}

} // namespace torvane
