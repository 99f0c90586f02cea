#include "cli/progress_line.h"

#include <gtest/gtest.h>

#include <sstream>
#include <thread>

namespace torvane {

TEST(ProgressLine, ShowsABarWithTheTimeLeft)
{
    EXPECT_EQ(progressText(0.05, 2, ""), "[=                       ]   5 %");
    EXPECT_EQ(progressText(0.25, 30, ""), "[======                  ]  25 %  1:30 left");
    EXPECT_EQ(progressText(0.5, 7, "2 of 4 rides"), "[============            ]  50 %  2 of 4 rides, 0:07 left");
    std::ostringstream err;
    for (bool terminal : {false, true}) {
        Streams streams = {err, err, terminal};
        ProgressLine line(streams);
        line.show(0.1, {});
        EXPECT_EQ(err.str(), "") << "the first second";
        std::this_thread::sleep_for(std::chrono::milliseconds(1100));
        line.show(0.65, {});
        line.show(0.65, {});
        line.hide();
    }
    std::string bar = progressText(0.65, 1, {}); // the same for 0.93 to 2.78 s: a busy machine sleeps longer
    EXPECT_EQ(err.str(), "\r" + bar + "\r" + std::string(bar.size(), ' ') + "\r");
}

} // namespace torvane
