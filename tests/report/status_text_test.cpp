// Statuses in words, and times.
#include "core/parameter_block.h"
#include "model/run_state.h"
#include "report/status_text.h"
#include "report/time_text.h"

#include <gtest/gtest.h>

#include <cmath>

namespace torvane {

namespace {

struct StatusCase {
    const char* name;
    ResultStatus status;
    const char* lines;
    const char* tail;
};

TEST(StatusText, theory)
{
    constexpr StatusCase cases[] = {
        {"none", 0, "", ""},
        {"power above its maximum", 0x1, "alert :\nillegal variate value\n", ", with fatal error"},
        {"fatal without a text", 0x20, "alert :\n", ", with fatal error"},
        {"fatal hides the warning", 0x40001, "alert :\nillegal variate value\n", ", with fatal error"},
        {"zero rule", 0x40000, "warning :\nnon-sence variate value\n", ", with any warning"},
        {"two warnings", 0x500000,
         "warning :\nover maximal velocity under current profile\ntoo short power under current profile\n",
         ", with any warning"},
        {"not converged", 0x200000, "warning :\nvelocity not converged under current profile\n", ", with any warning"},
        {"warning without a text", 0x20000, "warning :\n", ", with any warning"},
        {"top bit alone", 0x80000000, "", ""},
    };
    for (const StatusCase& c : cases) {
        EXPECT_EQ(theoryStatusLines(c.status), c.lines) << c.name;
        EXPECT_STREQ(statusTail(c.status), c.tail) << c.name;
    }
}

TEST(StatusText, rideQuotesTheRun)
{
    runState = {};
    runState.seekHigh = 12.5;
    runState.velocity = 10.0;
    runState.reachVelocity = 20.0;
    constexpr StatusCase cases[] = {
        {"none", 0, "", ""},
        {"sector time", 0x200, "alert :\ntoo long sector time limitted maximum 12.500000 sec\n", ", with fatal error"},
        {"distance", 0x400, "alert :\ntoo long distance limitted maximum 12.500000 m\n", ", with fatal error"},
        {"accele", 0x800, "alert :\ntoo hi accele limitted maximum 12.500000\n", ", with fatal error"},
        {"poised", 0x1000, "alert :\nno need braking cause maximal velocity is 36.0 kph as ending poised\n",
         ", with fatal error"},
        {"unused", 0x8000, "alert :\n-- .\n", ", with fatal error"},
        {"several in their order", 0xA,
         "alert :\nnot converged cause illegal initial values\ntoo short power or too short accele\n",
         ", with fatal error"},
        {"fatal and warning", 0x10001, "alert :\nillegal initial variate value\n", ", with fatal error"},
        {"reach", 0x100000, "warning :\nover 72.000 kph as max powered cadence on top gear\n", ", with any warning"},
        {"both grips", 0xC0000,
         "warning :\nover friction of tyre that makes wheel-spin\nover friction of tyre that makes slip and fall\n",
         ", with any warning"},
        {"decelerate", 0x800000, "warning :\ncould not decelerate cause too large power for the ending velocity\n",
         ", with any warning"},
        {"warning without a text", 0x1000000, "warning :\n", ", with any warning"},
    };
    for (const StatusCase& c : cases) {
        EXPECT_EQ(rideStatusLines(c.status), c.lines) << c.name;
        EXPECT_STREQ(statusTail(c.status), c.tail) << c.name;
    }
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

TEST(TimeText, hms)
{
    EXPECT_EQ(hms(0), "00:00:00h");
    EXPECT_EQ(hms(3605), "01:00:05h");
    EXPECT_EQ(hms(59), "00:00:59h");
    EXPECT_EQ(hms(360000), "100:00:00h");
}

TEST(TimeText, wholeSecondsOfAnyDouble)
{
    EXPECT_EQ(wholeSeconds(59.99), 59);
    EXPECT_EQ(wholeSeconds(-3.5), 0);
    EXPECT_EQ(wholeSeconds(std::nan("")), 0);
    EXPECT_EQ(wholeSeconds(1e300), 2147483647);
}

TEST(TimeText, intension)
{
    struct Case {
        int32_t minutes, seconds, kilometres, metres;
        const char* text;
    };
    constexpr Case cases[] = {
        {60, 0, 40, 0, "40.000km per 01:00:00h"},
        {5, 7, 0, 999, "999m per 00:05:07h"}, // the blank of " per " stays
        {81, 42, 50, 7, "50.007km per 01:21:42h"},
    };
    for (const Case& c : cases) {
        runState.intensionFirst[0] = c.minutes;
        runState.intensionSecond[0] = c.seconds;
        runState.intensionFirst[1] = c.kilometres;
        runState.intensionSecond[1] = c.metres;
        EXPECT_EQ(intensionText(), c.text);
    }
}

} // namespace

} // namespace torvane
