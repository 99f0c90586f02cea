// The ride and theory commands: run, report, curves, progress.
#include "command/ride_command.h"

#include "captured_screens.h"
#include "command/settings_command.h"
#include "command/theory_command.h"
#include "ride/ride_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace torvane {

class RideCommand : public testing::Test {
protected:
    RideCommand()
    {
        session.screens.showProgress = [](bool visible) { shown.push_back(visible); };
        shown.clear();
        session.working.expressGraph = 0;
    }

    ResultStatus dispatch(RideMode mode, int target)
    {
        session.working.rideMode = mode;
        session.working.rideTarget = target;
        return dispatchRide(session);
    }

    bool lowerHas(const char* text) const
    {
        return captured.lower.find(text) != std::string::npos;
    }

    CapturedScreens captured;
    Session session = {captured.screens};
    static inline std::vector<bool> shown;
};

TEST_F(RideCommand, theTableFollowsTheReport)
{
    // heading: nullptr: no table
    constexpr std::tuple<RideMode, int, const char*> cases[] = {
        {ridePowerAndVelocity, 0, nullptr},
        {rideAcceleration, 0, "process of acceleration powered pedaling"},
        {rideDeceleration, 0, "process of deceleration powered pedaling"},
        {ridePatternBraking, 1, "process of braking powered (wheel)thrust"},
        {ridePatternBraking, 2, nullptr},
        {ridePatternBraking, 3, "cumulative data of motion"},
        {rideInclinationAndVelocity, 0, "process of inclination and velocity"},
        {rideCriticalCornering, 0, nullptr},
    };
    for (const auto& [mode, target, heading] : cases) {
        EXPECT_EQ(dispatch(mode, target), 0u) << mode << " " << target;
        bool table = lowerHas("process of") || lowerHas("cumulative data");
        EXPECT_EQ(table, heading != nullptr) << mode << " " << target;
        EXPECT_TRUE(heading == nullptr || lowerHas(heading)) << heading << " in " << captured.lower;
    }
    dispatch(ridePatternBraking, 3);
    auto lines = std::ranges::count(captured.lower, '\n');
    session.working.totalDistance = 0.0;
    dispatch(ridePatternBraking, 3);
    EXPECT_GT(lines, std::ranges::count(captured.lower, '\n') + 5) << "a line for each sector";
    EXPECT_TRUE(lowerHas("cumulative data of motion")); // of no sector
}

TEST_F(RideCommand, theBarIsShownForRunsOverTimeAlone)
{
    dispatch(ridePowerAndVelocity, 0);
    dispatch(rideCriticalCornering, 0);
    EXPECT_TRUE(shown.empty());
    captured.progress.clear();
    dispatch(rideAcceleration, 4);
    EXPECT_EQ(shown, (std::vector<bool>{true, false}));
    EXPECT_GT(captured.progress.size(), 50u);
}

TEST_F(RideCommand, theoryAnswersAndVerifies)
{
    session.working.theoryCalculator = 0;
    session.working.theoryTarget = 0;
    EXPECT_EQ(runTheory(session), 0u);
    EXPECT_TRUE(lowerHas("real performance with inclination"));
    session.working.theoryPower[0] = session.working.theoryMaxPower[0] + 1.0;
    EXPECT_EQ(runTheory(session), statusIllegalValue);
    EXPECT_FALSE(lowerHas("real performance"));
}

} // namespace torvane
