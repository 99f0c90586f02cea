// Several figures at once: what came out beside what was worked out elsewhere.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace torvane {

struct AnyNumber {
    double value;

    template <class Number>
    AnyNumber(Number number) : value(static_cast<double>(number))
    {
    }
};

// Each figure within the tolerance, 0 for equal ones. A failure tells of the line that calls.
inline void expectFigures(const std::vector<AnyNumber>& found, const std::vector<AnyNumber>& wanted,
                          double tolerance = 0, const char* file = __builtin_FILE(), int line = __builtin_LINE())
{
    testing::ScopedTrace caller(file, line, "figures");
    ASSERT_EQ(found.size(), wanted.size());
    for (size_t i = 0; i < found.size(); ++i)
        EXPECT_TRUE(std::fabs(found[i].value - wanted[i].value) <= tolerance)
            << "figure " << i + 1 << " is " << found[i].value << " instead of " << wanted[i].value;
}

} // namespace torvane
