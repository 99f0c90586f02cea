// How far work has come, on a line of its own where a person reads standard error: a bar, and the time left.
#pragma once

#include "cli/answer.h"

#include <chrono>
#include <string>
#include <string_view>

namespace torvane {

// "[=====     ]  50 %  2 of 4 rides, 0:07 left"; without what has been done when nothing is said of it. The time left
// is told once a tenth is done, as if the rest went as the part before it.
std::string progressText(double done, double seconds, std::string_view told);

class ProgressLine {
public:
    // Begins to count the time.
    explicit ProgressLine(Streams& toStreams) : streams(toStreams) {}

    // done from 0 to 1. Nothing is shown in the first second, and no line twice; a part that is less than the one
    // before begins new work.
    void show(double done, std::string_view told);
    // Blanks the line: before anything else is written there, and at the end.
    void hide();

private:
    using Clock = std::chrono::steady_clock;

    Streams& streams;
    Clock::time_point begun = Clock::now();
    double last = 0;
    std::string text = {};
};

} // namespace torvane
