// Ways of values between the records.
#include "core/parameter_block.h"

#include <gtest/gtest.h>

#include <cstring>

namespace torvane {

namespace {

// Changes every number of a block's settings and the targets; flags and names stay.
void disturb(ParameterBlock& block)
{
    block.theoryTarget = block.rideTarget = 1;
    block.calibration = {0.9F, 0.1F, 20000, 15};
    block.useCalibration = 1;
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

// How many 32-bit words each flag lets through when every word of the working copy differs from the saved one: two for
// each f64, one for each i32. Of the brakes only one type, the acceleration and the analysis keep one figure.
TEST(ParameterCommit, eachFlagMovesItsSectionAlone)
{
    struct Case {
        size_t flags;
        int index; // of the flag; for theory and rides the mode as well
        void (*commit)(ParameterBlock&, ParameterBlock&);
        size_t words;
    };
    constexpr size_t page = offsetof(ParameterBlock, pageChanged), theory = offsetof(ParameterBlock, theorySaveFlag),
                     ride = offsetof(ParameterBlock, rideSaveFlag), gps = offsetof(ParameterBlock, gpsSaveFlag);
    constexpr Case cases[] = {
        {theory, 0, commitTheory, 13},     {page, pageHuman, commitProfile, 33},
        {theory, 1, commitTheory, 14},     {page, pageEquip, commitProfile, 10},
        {theory, 2, commitTheory, 16},     {page, pageShift, commitProfile, 24},
        {ride, 0, commitRide, 25},         {page, pageWheel, commitProfile, 23},
        {ride, 1, commitRide, 24},         {page, pageTyre, commitProfile, 16},
        {ride, 2, commitRide, 22},         {page, pageBrake, commitProfile, 12},
        {ride, 3, commitRide, 26},         {page, pageLoss, commitProfile, 10},
        {ride, 4, commitRide, 21},         {page, pageAssist, commitProfile, 18},
        {ride, 5, commitRide, 24},         {page, pageCourse, commitCondition, 11},
        {gps, gpsExpress, commitGps, 5},   {page, pagePeloton, commitCondition, 8},
        {gps, gpsAnalyse, commitGps, 13},  {page, pagePhysiology, commitPreference, 4},
        {gps, gpsCreate, commitGps, 5},    {page, pageProcessInterval, commitPreference, 6},
        {gps, gpsCombine, commitGps, 4},   {page, pageSpecificHeat, commitPreference, 6},
        {gps, gpsConvert, commitGps, 5},   {page, pageEmittance, commitPreference, 6},
        {gps, gpsAdd, commitGps, 7},       {page, pageGraph, commitPreference, 3},
        {gps, gpsDivide, commitGps, 4},    {page, pageInitialValues, commitPreference, 1},
        {gps, gpsExclude, commitGps, 7},   {page, pageGpsData, commitPreference, 6},
        {gps, gpsTimestamp, commitGps, 6}, {gps, gpsOneStroke, commitGps, 18},
    };
    for (const Case& c : cases) {
        const char* of = c.flags == page ? "page" : c.flags == theory ? "theory" : c.flags == ride ? "ride" : "gps";
        SCOPED_TRACE(testing::Message() << of << ' ' << c.index);
        ParameterBlock saved = defaultBlock(), before = saved, working = saved;
        disturb(working);
        working.brakeType[0] = working.brakeType[1] = 1;
        working.rideMode = working.theoryCalculator = c.flags == ride || c.flags == theory ? c.index : 0;
        size_t flag = c.flags + 4 * static_cast<size_t>(c.index);
        std::memset(reinterpret_cast<uint8_t*>(&working) + flag, 1, 1);
        c.commit(saved, working);
        EXPECT_EQ(changedWords(saved, before), c.words);
        EXPECT_EQ(changedWords(saved, working), changedWords(before, working) - c.words) << "each to its own place";
        c.commit(saved, working);
        EXPECT_EQ(reinterpret_cast<uint8_t*>(&working)[flag], 0) << "the flag stays";
    }
}

TEST(ParameterCommit, theModelStartsWithBothBrakeTypesAndLaterTakesTheSelected)
{
    ParameterBlock block = defaultBlock();
    ModelState model = {};
    startModel(model, block);
    EXPECT_EQ(model.brakeSurfaceSize[1][0], 160);
    block.brakeSurfaceSize[1][0] = 180; // discs are not selected
    block.brakeSurfaceSize[0][0] = 40;
    applyProfile(model, block);
    EXPECT_EQ(model.brakeSurfaceSize[1][0], 160);
    EXPECT_EQ(model.brakeSurfaceSize[0][0], 40);
}

} // namespace torvane
