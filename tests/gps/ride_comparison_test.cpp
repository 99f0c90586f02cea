// Two rides on one axis of time: powers whose means and correlation can be had by hand.
#include "figures.h"
#include "gps/ride_comparison.h"

#include <gtest/gtest.h>

#include <cmath>

namespace torvane {

namespace {

// Powers of 30 s each, from a second on.
std::vector<TimedPower> powersOf(uint32_t start, const std::vector<double>& halfMinutes)
{
    std::vector<TimedPower> powers;
    for (double watts : halfMinutes)
        for (int i = 0; i < 30; ++i)
            powers.push_back({start++, watts});
    return powers;
}

} // namespace

TEST(RideComparison, TellsMeansAndCorrelation)
{
    RideComparison result;
    ASSERT_EQ(comparePowers(powersOf(1000, {100, 200, 300}), powersOf(1000, {150, 200, 250}), result), fitOk);
    const PowerComparison& whole = result.whole;
    expectFigures({whole.seconds, whole.mean[0], whole.mean[1], whole.correlation}, {90, 200, 200, 1}, 1e-12);
    ASSERT_EQ(comparePowers(powersOf(0, {100, 200, 300}), powersOf(0, {100, 300, 200}), result), fitOk);
    expectFigures({whole.correlation, whole.windows}, {0.5, 3}, 1e-12);
    auto bandOf = [](const std::vector<TimedPower>& first, const std::vector<TimedPower>& second) {
        CommonMeans means;
        for (size_t i = 0; i < first.size(); ++i)
            means.add(first[i].timestamp, {first[i].watts, second[i].watts});
        return means.band();
    };
    CorrelationBand band = *bandOf(powersOf(0, {100, 200, 300, 0}), powersOf(0, {100, 300, 200, 0}));
    EXPECT_GT(band.most, 0.8); // which the four whole half minutes have
    EXPECT_LT(band.least, 0.8);
    EXPECT_FALSE(bandOf(powersOf(0, {100, 200}), powersOf(0, {100, 200})));
}

// A constant power is its own normalised one; a step gives the fourth root of the mean fourth power of the ramp.
TEST(RideComparison, Normalises)
{
    RideComparison result;
    ASSERT_EQ(comparePowers(powersOf(0, {200, 200}), powersOf(0, {0, 300}), result), fitOk);
    EXPECT_NEAR(result.whole.normalised[0], 200, 1e-9);
    double sum = 0;
    for (int i = 0; i <= 30; ++i)
        sum += std::pow(10.0 * i, 4);
    EXPECT_NEAR(result.whole.normalised[1], std::pow(sum / 31, 0.25), 1e-9);
    EXPECT_EQ(result.whole.correlation, 0); // one ride does not vary
}

// Only seconds of both count; a hole in either ends a sector, and windows do not reach across it.
TEST(RideComparison, DividesAtHoles)
{
    std::vector<TimedPower> first = powersOf(0, {100, 100, 100, 100, 100}), second = powersOf(30, {50, 50, 50, 50, 50});
    second.erase(second.begin() + 65); // second 95
    RideComparison result;
    ASSERT_EQ(comparePowers(first, second, result), fitOk);
    expectFigures({result.whole.seconds, result.alone[0], result.alone[1]}, {119, 31, 30});
    ASSERT_EQ(result.sectors.size(), 1u); // the other one is of 54 s
    expectFigures({result.sectors[0].start, result.sectors[0].seconds, result.whole.windows}, {30, 65, 3});
    EXPECT_EQ(comparePowers(first, powersOf(500, {1}), result), fitNotComparable);
    EXPECT_EQ(comparePowers({}, second, result), fitNotComparable);
}

} // namespace torvane
