// From power to velocity, and how the search says what it found.
#include "model/solver.h"

#include "figures.h"
#include "model/assist.h"
#include "model/model_fixture.h"

#include <utility>

namespace torvane {

using SolverTest = ModelTest;

TEST_F(SolverTest, toleranceClasses)
{
    // Value, wanted, the tolerance it misses: none, the close, the wide one. A negative wanted is never met.
    constexpr double cases[][3] = {{202, 200, 0},   {198, 200, 0},   {202.1, 200, 1}, {190, 200, 1},
                                   {210.1, 200, 2}, {189.9, 200, 2}, {-0.1, 0, 0},    {0.3, 0, 1},
                                   {0.5, 0, 1},     {-0.6, 0, 2},    {-200, -200, 2}};
    constexpr ResultStatus statuses[] = {0, statusLooseTolerance, statusBeyondTolerance};
    for (auto [value, wanted, missed] : cases)
        EXPECT_EQ(toleranceClass(value, wanted), statuses[static_cast<int>(missed)]) << value << " for " << wanted;
}

TEST_F(SolverTest, failures)
{
    // Nothing on a level road ends below zero; negative is met by no velocity; beyond all rounds.
    constexpr std::pair<double, ResultStatus> cases[] = {{0.0, statusTooShortPower},
                                                         {-100.0, statusTooShortPower | statusBeyondTolerance},
                                                         {1e300, statusNotConverged | statusOverReach}};
    for (auto [power, status] : cases) {
        Solved found = velocityForPower(model, now, stagePedaling, power);
        EXPECT_EQ(found.status, status) << power;
        EXPECT_EQ(found.value > 0.0, power > 0.0) << power;
        EXPECT_GE(found.value, 0.0) << power;
    }
    Solved pushed = velocityFromPedaling(model, now, -100.0);
    EXPECT_EQ(pushed.status, statusTooShortPower | statusBeyondTolerance);
    EXPECT_LT(pushed.value, 0.0);
}

} // namespace torvane
