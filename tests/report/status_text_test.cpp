// Statuses in words, and times.
#include "core/parameter_block.h"
#include "figures.h"
#include "model/run_state.h"
#include "report/status_text.h"
#include "report/time_text.h"

#include <gtest/gtest.h>

#include <cmath>

namespace torvane {

namespace {

struct StatusCase {
    ResultStatus status;
    const char* lines;
};

// The tail of the status line follows from what the pane tells.
void expectText(const StatusCase& c, const std::string& lines)
{
    SCOPED_TRACE(c.status);
    EXPECT_EQ(lines, c.lines);
    EXPECT_STREQ(statusTail(c.status), c.lines[0] == 'a'   ? ", with fatal error"
                                       : c.lines[0] == 'w' ? ", with any warning"
                                                           : "");
}

TEST(StatusText, theory)
{
    constexpr StatusCase cases[] = {
        {0, ""},
        {0x1, "alert :\nillegal variate value\n"},
        {0x20, "alert :\n"},                           // fatal without a text
        {0x40001, "alert :\nillegal variate value\n"}, // hides the warning
        {0x40000, "warning :\nnon-sence variate value\n"},
        {0x500000, "warning :\nover maximal velocity under current profile\ntoo short power under current profile\n"},
        {0x200000, "warning :\nvelocity not converged under current profile\n"},
        {0x80000000, ""},
    };
    for (const StatusCase& c : cases)
        expectText(c, theoryStatusLines(c.status));
}

TEST(StatusText, rideQuotesTheRun)
{
    runState = {};
    runState.seekHigh = 12.5;
    runState.velocity = 10.0;
    runState.reachVelocity = 20.0;
    constexpr StatusCase cases[] = {
        {0x200, "alert :\ntoo long sector time limitted maximum 12.500000 sec\n"},
        {0x400, "alert :\ntoo long distance limitted maximum 12.500000 m\n"},
        {0x800, "alert :\ntoo hi accele limitted maximum 12.500000\n"},
        {0x1000, "alert :\nno need braking cause maximal velocity is 36.0 kph as ending poised\n"},
        {0x8000, "alert :\n-- .\n"}, // unused
        {0xA, "alert :\nnot converged cause illegal initial values\ntoo short power or too short accele\n"},
        {0x10001, "alert :\nillegal initial variate value\n"},
        {0x100000, "warning :\nover 72.000 kph as max powered cadence on top gear\n"},
        {0xC0000, "warning :\nover friction of tyre that makes wheel-spin\nover friction of tyre that makes slip and "
                  "fall\n"},
        {0x800000, "warning :\ncould not decelerate cause too large power for the ending velocity\n"},
        {0x1000000, "warning :\n"},
    };
    for (const StatusCase& c : cases)
        expectText(c, rideStatusLines(c.status));
}

TEST(StatusText, noVelocityInTheAssistRanges)
{
    runState = {};
    runState.assistSamplePower[0] = 101.25;
    runState.assistSamplePower[1] = 202.5;
    runState.assistSampleVelocity[0] = 25.0;
    runState.assistSampleVelocity[1] = 25.001;
    EXPECT_EQ(rideStatusLines(0x4000),
              "alert :\n"
              " The specified human power is in the velocity range of the assist,\n"
              "and can be expected to be assisted by the motor,\n"
              "but the total power assisted will exceed the velocity of that assist range.\n"
              "\n The settings in question do not converge to a specific velocity.\n"
              "\n refer to in and out of assist range due to the current profile,\nas following samples:\n"
              "pedaling power and velocity\t:  101.250 W  ,   25.000 kph\n"
              "pedaling power and velocity\t:  202.500 W  ,   25.001 kph\n");
}

TEST(TimeText, hoursAndWholeSeconds)
{
    constexpr std::pair<int, const char*> times[] = {
        {0, "00:00:00h"}, {3605, "01:00:05h"}, {59, "00:00:59h"}, {360000, "100:00:00h"}};
    for (auto [seconds, text] : times)
        EXPECT_EQ(hms(seconds), text);
    expectFigures({wholeSeconds(59.99), wholeSeconds(-3.5), wholeSeconds(std::nan("")), wholeSeconds(1e300)},
                  {59, 0, 0, 2147483647});
}

} // namespace

} // namespace torvane
