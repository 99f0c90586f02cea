// Statuses in words, and times.
#include "figures.h"
#include "report/status_text.h"
#include "report/time_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <utility>
#include <vector>

namespace torvane {

namespace {

using StatusCase = std::pair<ResultStatus, const char*>;

// The tail of the status line follows from what the pane tells.
template <class LinesOf>
void expectTexts(LinesOf linesOf, const std::vector<StatusCase>& cases)
{
    for (auto [status, lines] : cases) {
        EXPECT_EQ(linesOf(status), lines) << status;
        EXPECT_STREQ(statusTail(status), lines[0] == 'a'   ? ", with fatal error"
                                         : lines[0] == 'w' ? ", with any warning"
                                                           : "")
            << status;
    }
}

TEST(StatusText, theory)
{
    expectTexts(
        theoryStatusLines,
        {{0, ""},
         {0x20, "alert :\n"},                           // fatal without a text
         {0x40001, "alert :\nillegal variate value\n"}, // hides the warning
         {0x40000, "warning :\nnon-sence variate value\n"},
         {0x500000, "warning :\nover maximal velocity under current profile\ntoo short power under current profile\n"},
         {0x200000, "warning :\nvelocity not converged under current profile\n"},
         {0x80000000, ""}});
}

TEST(StatusText, rideQuotesTheRun)
{
    Model model;
    model.reachVelocity = 20.0;
    RideRun ride = {model, {}};
    ride.found.seekHigh = 12.5;
    ride.found.velocity = 10.0;
    auto linesOf = [&](ResultStatus status) {
        ride.status = status;
        return rideStatusLines(ride);
    };
    expectTexts(
        linesOf,
        {{0x400, "alert :\ntoo long distance limitted maximum 12.500000 m\n"},
         {0x800, "alert :\ntoo hi accele limitted maximum 12.500000\n"},
         {0x1000, "alert :\nno need braking cause maximal velocity is 36.0 kph as ending poised\n"},
         {0x8000, "alert :\n-- .\n"}, // unused
         {0xA, "alert :\nnot converged cause illegal initial values\ntoo short power or too short accele\n"},
         {0x10001, "alert :\nillegal initial variate value\n"},
         {0x100000, "warning :\nover 72.000 kph as max powered cadence on top gear\n"},
         {0xC0000, "warning :\nover friction of tyre that makes wheel-spin\nover friction of tyre that makes slip and "
                   "fall\n"},
         {0x800000, "warning :\ncould not decelerate cause too large power for the ending velocity\n"},
         {0x1000000, "warning :\n"}});
}

TEST(StatusText, noVelocityInTheAssistRanges)
{
    Model model;
    RideRun ride = {model, {}};
    ride.status = 0x4000;
    std::tie(ride.now.assistSamplePower[0], ride.now.assistSampleVelocity[0]) = std::tuple(101.25, 25);
    std::tie(ride.now.assistSamplePower[1], ride.now.assistSampleVelocity[1]) = std::tuple(202.5, 25.001);
    EXPECT_EQ(rideStatusLines(ride),
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
    EXPECT_EQ(hms(3605) + hms(59) + hms(360000), "01:00:05h00:00:59h100:00:00h");
    expectFigures({wholeSeconds(59.99), wholeSeconds(-3.5), wholeSeconds(std::nan("")), wholeSeconds(1e300)},
                  {59, 0, 0, 2147483647});
}

} // namespace

} // namespace torvane
