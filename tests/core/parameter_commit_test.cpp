// Ways of values between the records.
#include "core/parameter_block.h"
#include "figures.h"

#include <gtest/gtest.h>

#include <cstring>

namespace torvane {

namespace {

struct Blocks {
    ParameterBlock saved, working;
    Blocks()
    {
        setDefaults(saved);
        setDefaults(working);
    }
};

bool same(const ParameterBlock& a, const ParameterBlock& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Changes every number of a block's settings and the targets; flags and names stay.
void disturb(ParameterBlock& block)
{
    block.theoryTarget = block.rideTarget = 1;
    constexpr size_t first = offsetof(ParameterBlock, humanHeight), last = offsetof(ParameterBlock, reserved96C);
    auto* bytes = reinterpret_cast<uint8_t*>(&block);
    for (size_t i = first; i < last; i += 4)
        bytes[i] ^= 1;
}

size_t changedWords(const ParameterBlock& a, const ParameterBlock& b)
{
    size_t count = 0;
    for (size_t i = 0; i < sizeof a; i += 4)
        count +=
            std::memcmp(reinterpret_cast<const uint8_t*>(&a) + i, reinterpret_cast<const uint8_t*>(&b) + i, 4) != 0;
    return count;
}

} // namespace

TEST(ParameterCommit, withoutAFlagOnlyTheProfileNameMoves)
{
    Blocks b;
    disturb(b.working);
    std::strcpy(b.working.profileFileName, "other.pro");
    ParameterBlock before = b.saved;
    commitCondition(b.saved, b.working);
    commitTheory(b.saved, b.working);
    commitRide(b.saved, b.working);
    commitGps(b.saved, b.working);
    commitPreference(b.saved, b.working);
    EXPECT_TRUE(same(b.saved, before));
    commitProfile(b.saved, b.working);
    std::strcpy(before.profileFileName, "other.pro");
    EXPECT_TRUE(same(b.saved, before));
}

// How many 32-bit words each flag lets through when every word of the working copy differs from the saved one.
TEST(ParameterCommit, eachFlagMovesItsSectionAlone)
{
    struct Case {
        const char* name;
        size_t flag;
        void (*commit)(ParameterBlock&, ParameterBlock&);
        int mode; // rideMode or theoryCalculator
        size_t words;
    };
    constexpr size_t page = offsetof(ParameterBlock, pageChanged), theory = offsetof(ParameterBlock, theorySaveFlag),
                     ride = offsetof(ParameterBlock, rideSaveFlag), gps = offsetof(ParameterBlock, gpsSaveFlag);
    // Each f64 counts two words (its two halves are disturbed), each i32 one.
    constexpr Case cases[] = {
        {"human, and the theory cadences", page + 4 * pageHuman, commitProfile, 0, 8 * 2 + 1 + 6 * 2},
        {"equip", page + 4 * pageEquip, commitProfile, 0, 3 + 2 + 2 + 1 + 2},
        {"shift", page + 4 * pageShift, commitProfile, 0, 2 + 2 + 2 + 3 + 15},
        {"wheel", page + 4 * pageWheel, commitProfile, 0, 4 + 2 + 2 + 4 + 4 + 1 + 2 + 2 + 2},
        {"tyre", page + 4 * pageTyre, commitProfile, 0, 4 * 4},
        {"brake, one type only", page + 4 * pageBrake, commitProfile, 0, 2 + 2 * (1 + 2 + 2)},
        {"loss", page + 4 * pageLoss, commitProfile, 0, 5 * 2},
        {"e-Assist", page + 4 * pageAssist, commitProfile, 0, 1 + 2 + 3 + 6 + 6},
        {"course", page + 4 * pageCourse, commitCondition, 0, 2 + 1 + 2 + 2 + 2 + 1 + 1},
        {"peloton", page + 4 * pagePeloton, commitCondition, 0, 1 + 2 + 2 + 3},
        {"physiology", page + 4 * pagePhysiology, commitPreference, 0, 1 + 2},
        {"process interval", page + 4 * pageProcessInterval, commitPreference, 0, 2 + 2 * 2},
        {"specific heat", page + 4 * pageSpecificHeat, commitPreference, 0, 3 * 2},
        {"emittance", page + 4 * pageEmittance, commitPreference, 0, 3 * 2},
        {"graph", page + 4 * pageGraph, commitPreference, 0, 3},
        {"initial values", page + 4 * pageInitialValues, commitPreference, 0, 1},
        {"GPS data", page + 4 * pageGpsData, commitPreference, 0, 2 + 1 + 1 + 2},
        {"cadence theory", theory + 4 * 0, commitTheory, 0, 1 + 6 * 2},
        {"pedaling dynamics", theory + 4 * 1, commitTheory, 1, 1 + 6 * 2 + 1},
        {"gear combination", theory + 4 * 2, commitTheory, 2, 1 + 6 * 2 + 3},
        {"power and velocity", ride + 4 * 0, commitRide, 0, 1 + 9 * 2 + 1 + 5},
        {"acceleration without its accele", ride + 4 * 1, commitRide, 1, 1 + 9 * 2 + 1 + 2 + 1 + 1},
        {"deceleration", ride + 4 * 2, commitRide, 2, 1 + 9 * 2 + 1 + 1 + 1},
        {"pattern braking", ride + 4 * 3, commitRide, 3, 1 + 9 * 2 + 1 + 4 + 2},
        {"inclination and velocity", ride + 4 * 4, commitRide, 4, 1 + 9 * 2 + 1 + 1},
        {"critical cornering", ride + 4 * 5, commitRide, 5, 1 + 9 * 2 + 1 + 4},
        {"express", gps + 4 * gpsExpress, commitGps, 0, 1 + 2 + 2},
        {"analyse without its temperature", gps + 4 * gpsAnalyse, commitGps, 0, 2 + 6 + 5},
        {"create", gps + 4 * gpsCreate, commitGps, 0, 1 + 4},
        {"combine", gps + 4 * gpsCombine, commitGps, 0, 4},
        {"convert", gps + 4 * gpsConvert, commitGps, 0, 4 + 1},
        {"add messages", gps + 4 * gpsAdd, commitGps, 0, 3 + 4},
        {"divide", gps + 4 * gpsDivide, commitGps, 0, 4},
        {"exclude messages", gps + 4 * gpsExclude, commitGps, 0, 3 + 4},
        {"increase timestamp", gps + 4 * gpsTimestamp, commitGps, 0, 4 + 2},
        {"one stroke is analyse and create", gps + 4 * gpsOneStroke, commitGps, 0, 13 + 1 + 4},
    };
    for (const Case& c : cases) {
        Blocks b;
        disturb(b.working);
        b.working.brakeType[0] = b.working.brakeType[1] = 1;
        b.working.rideMode = b.working.theoryCalculator = c.mode;
        std::memset(reinterpret_cast<uint8_t*>(&b.working) + c.flag, 1, 1);
        ParameterBlock before = b.saved;
        c.commit(b.saved, b.working);
        EXPECT_EQ(changedWords(b.saved, before), c.words) << c.name;
        c.commit(b.saved, b.working);
        EXPECT_EQ(reinterpret_cast<uint8_t*>(&b.working)[c.flag], 0) << c.name << ": flag stays";
    }
}

TEST(ParameterCommit, theModelStartsWithBothBrakeTypesAndLaterTakesTheSelected)
{
    ParameterBlock block;
    setDefaults(block);
    startModel(block);
    EXPECT_EQ(modelState.brakeSurfaceSize[1][0], 160);
    block.brakeSurfaceSize[1][0] = 180; // discs are not selected
    block.brakeSurfaceSize[0][0] = 40;
    applyProfile(block);
    EXPECT_EQ(modelState.brakeSurfaceSize[1][0], 160);
    EXPECT_EQ(modelState.brakeSurfaceSize[0][0], 40);
}

} // namespace torvane
