// Status lines, dates, summary and record table of FIT files, to the character.
#include "captured_screens.h"
#include "core/parameter_block.h"
#include "figures.h"
#include "report/fit_figures.h"
#include "report/fit_report.h"
#include "report/listed_figures.h"
#include "told.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace torvane {

namespace {

class FitReport : public testing::Test {
protected:
    FitReport()
    {
        presence.hasRecords = 1;
    }

    ReportedRide reported(FitReportMode mode, uint32_t flags) const
    {
        return {"/rides/a.fit", mode, inventory, summary, presence, settings, flags, {}, {}, brakes};
    }
    std::string summaryText(FitReportMode mode, uint32_t flags = 0)
    {
        reportSummary(shown.screens, reported(mode, flags));
        return shown.lower;
    }
    std::string fieldsText(const GpsRecords& rows, uint32_t flags, uint32_t predicted)
    {
        shown.lower = "";
        reportFields(shown.screens, reported(reportAnalysed, flags), rows, predicted);
        return shown.lower;
    }

    void expectLines(const std::string& lines) const
    {
        EXPECT_NE(shown.lower.find(lines), std::string::npos) << lines << shown.lower;
    }
    CapturedScreens shown;
    ParameterBlock settings = defaultBlock();
    FitInventory inventory = {};
    FitSummary summary = {};
    FieldPresence presence = {};
    BrakeRecords brakes = {};
};

} // namespace

// Failures stand in the lower pane as well, successes on the status line alone. The outcomes of the tools are read in
// the tests of the console.
TEST_F(FitReport, statusTexts)
{
    constexpr std::tuple<StatusCode, const char*, bool> cases[] = {
        {1, "found an invalid file extension 'a.fit' not supported", true},
        {4, "failed to read the file 'a.fit' might be an invalid structure", true},
        {8, "found invalid CRC. the file 'a.fit' might be broken", true},
        {16, "could not express messages cause a fit file had not be loaded", true},
        {64, "failed to create a fit file", true},
        {2048, "failed to divide a fit file 'a.fit'", true},
        {32753, "express remarkable fields data of 'a.fit'", false},
        {32756, "success to convert a fit file to 'a.fit'", false},
        {32758, "success to divide a fit file to '/r/a.fit'", false},
    };
    for (const auto& [code, text, failure] : cases) {
        shown.lower = "before";
        EXPECT_EQ(reportStatus(shown.screens, "/r/a.fit", code), code);
        EXPECT_EQ(shown.lower, failure ? std::string("\n\t") + text : "before");
        EXPECT_EQ(shown.status, std::string("status : ") + text);
    }
    for (StatusCode silent : {3, 0x8007, 0x8000, 0}) {
        shown.status = "earlier";
        EXPECT_EQ(reportStatus(shown.screens, "a.fit", silent), silent);
        EXPECT_EQ(shown.status, silent == 0 ? "" : "earlier") << silent;
    }
    constexpr std::pair<StatusCode, const char*> incoherences[] = {{32769, "sport types of multiple sessions"},
                                                                   {32770, "sport types of multiple laps"},
                                                                   {32772, "record fields"},
                                                                   {32774, "sport types and record fields"}};
    for (auto [code, what] : incoherences) {
        shown.lower = "before";
        EXPECT_EQ(reportStatus(shown.screens, "a.fit", code), code);
        EXPECT_EQ(shown.lower,
                  std::string("before\n\tdetected lack coherence about ") + what +
                      " in '.fit'\n\tit's recommended to divide the fit file for analysis and prediction.\n");
        EXPECT_EQ(shown.status, "status : detected lack coherence, please divide the fit file for analysis");
    }
}

TEST_F(FitReport, dates)
{
    constexpr std::pair<uint32_t, const char*> cases[] = {{0, "31,Dec,1989,Sun,00:00:00"},
                                                          {789203109, "03,Jan,2015,Sat,07:05:09"},
                                                          {320716800, "29,Feb,2000,Tue,00:00:00"},
                                                          {4294967295, "06,Feb,2126,Wed,06:28:15"}};
    for (auto [timestamp, text] : cases)
        EXPECT_EQ(formatDateTime(timestamp), text);
    EXPECT_EQ(formatTimeOfDay(789203109), "07:05:09");
    constexpr int32_t days[][5] = {{2451545, 2000, 1, 1, 6}, {2299161, 1582, 10, 15, 5}, {0, -4713, 1, 1, 1}};
    for (auto [day, year, month, date, weekday] : days) {
        CalendarDate found = julianToCalendar(day);
        expectFigures({found.year, found.month, found.day, found.weekday}, {year, month, date, weekday});
    }
}

TEST_F(FitReport, sports)
{
    const std::tuple<std::vector<uint8_t>, std::vector<uint8_t>, const char*> cases[] = {
        {{}, {}, "\tsport type(workout code): not defined cause no session message\n"},
        {{2}, {1, 1}, "\tsport type (workout)\t: cycling as 1 sessions\n"},
        {{}, {254, 0}, "\tsport type (workout)\t: all, generic as 2 laps\n"},
    };
    for (const auto& [sessions, laps, text] : cases) {
        inventory.sessionSport = sessions;
        inventory.lapSport = laps;
        summary.sessionTotal = static_cast<uint16_t>(sessions.size());
        summary.lapTotal = static_cast<uint16_t>(laps.size());
        shown.lower = "";
        reportSports(shown.screens, inventory, summary);
        EXPECT_EQ(shown.lower, text);
    }
}

TEST_F(FitReport, summaryOfALoadedFile)
{
    FitInventory& i = inventory;
    std::tie(i.fileType, i.recordCount, i.definitionCount) = std::tuple(4, 221, 9);
    std::tie(i.normalDataCount, i.compressedTimestampCount) = std::tuple(230, 1);
    presence = {1, 1, 0x11, 0x77, 7, 0x73, 3, 7, 0x17, 15, 3};
    FitSummary& s = summary;
    std::tie(s.startTimestamp, s.endTimestamp, s.recordInterval) = std::tuple(789203109, 789206770, 1);
    std::tie(s.firstLatitude, s.lastLatitude, s.firstLongitude) = std::tuple(1 << 29, -(1 << 30), 1);
    std::tie(s.lastLongitude, s.totalDistance, s.totalTimer) = std::tuple(-(1 << 29), 1153643, 3661999);
    std::tie(s.avgAltitude, s.maxAltitude, s.gpsAccuracy) = std::tuple(2603, 3001, 5);
    std::tie(s.avgSpeed, s.maxSpeed, s.avgTemperature) = std::tuple(7106, 12345, -4);
    std::tie(s.avgHeartRate, s.maxHeartRate, s.avgCadence, s.maxCadence) = std::tuple(99, 181, 88, 120);
    std::tie(s.avgPower, s.maxPower, s.normalizedPower) = std::tuple(210, 1020, 222);
    expectTold(summaryText(reportLoaded), "tests/report/told/loaded.txt");
}

TEST_F(FitReport, summaryOfAnAnalysedFile)
{
    presence = {1, 1, 1, 0x11, 0, 0x01, 0, 0, 0, 0, 0};
    settings.thresholdSpeed = 7.25;
    settings.predictCadence = settings.predictPower = settings.detectBraking = 1;
    settings.analysePowerBase = 1;
    summary.avgPower = 150;
    std::tie(summary.avgBrakeForce, summary.maxRearBrake) = std::tuple(1.25, 123.46);
    std::string text = summaryText(reportAnalysed, 1);
    EXPECT_EQ(text.find("\n\t\tanalysed the fit file named 'a.fit'\n\n summary of the fit file after excluding records "
                        "under threshold speed 7.2 kph\n\n"),
              0u);
    expectLines("\tdistance\t\t\t: analysed, total    0.000 km\n"
                "\tspeed\t\t\t\t: analysed, average  0.00 kph, maxi   0.00 kph\n");
    expectLines("\tcadence\t\t\t: analysed, average   0 rpm,   maxi   0 rpm\n"
                "\tcrank power\t\t\t: analysed, average 150 watts, maxi   0 watts\n"
                "\tbraking force\t\t: analysed, average   1.2 kgf, maxi   0.0 kgf\n"
                "\tfront brake temperature\t: analysed, average   0.0 Cel, maxi   0.0 Cel\n"
                "\trear brake temperature\t: analysed, average   0.0 Cel, maxi 123.5 Cel\n");
    // Braking is left out with power in the file, without its detection, and in the other modes.
    EXPECT_EQ(summaryText(reportExpressed).find("braking"), std::string::npos);
    expectLines("in the record and stats of fields data\n\n");
    presence.powerFlags = 1;
    EXPECT_EQ(summaryText(reportAnalysed).find("braking"), std::string::npos);
    settings.detectBraking = presence.powerFlags = 0;
    EXPECT_EQ(summaryText(reportAnalysed).find("braking"), std::string::npos);
    presence = {};
    summaryText(reportLoaded);
    expectLines("\trecord message\t\t: none\n\tdefinition messages\t: counted   0\n\tnormal data messages\t: "
                "counted   0\n\tcompressed timestamp\t: counted   0\n"
                "\n\t\timpossible to analyse and predict cause no record data message\n");
    EXPECT_EQ(shown.lower.find("remarkable"), std::string::npos);
}

TEST_F(FitReport, fieldLinesByFlags)
{
    using P = FieldPresence;
    constexpr std::tuple<uint8_t P::*, uint8_t, const char*> cases[] = {
        {&P::timestampFlags, 0, "\ttimestamp\t\t\t: none\n"},
        {&P::timestampFlags, 0x01, "    , inter   12 second\n"},
        {&P::positionFlags, 0, "\tlatitude and longitude\t: none, prediction is impossible except flat calm\n"},
        {&P::positionFlags, 0x50, "\tlatitude\t\t\t: none\n\tlongitude\t\t\t: existing, end      0.000000\n"},
        {&P::powerFlags, 1, "\tpower\t\t\t\t: existing\n"},
        {&P::altitudeFlags, 5, "\taltitude\t\t\t: existing, maxi  -500.0 m\n"},
        {&P::altitudeFlags, 2, "\taltitude\t\t\t: none, prediction is impossible except flat course\n"},
        {&P::accuracyFlags, 2, "\tGPS accuracy\t\t: none\n"},
        {&P::motionFlags, 0, "\tspeed and distance\t: none, prediction is impossible\n"},
        {&P::motionFlags, 0x01,
         "\tdistance\t\t\t: existing\n"
         "\t-- besides no timestamp, latitude nor longitude that makes prediction to be impossible\n"},
        {&P::motionFlags, 0x10, "\tdistance\t\t\t: none\n\tspeed\t\t\t\t: existing\n"},
        {&P::motionFlags, 0x50, "\tspeed\t\t\t\t: existing, maxi     0.00 kph\n"},
        {&P::temperatureFlags, 0, "\ttemperature\t\t\t: none, need to input average temperature for prediction\n"},
        {&P::temperatureFlags, 2, "\ttemperature\t\t\t: none, but average  0 Cel\n"},
        {&P::heartRateFlags, 5, "\theart rate\t\t\t: none\n"},
        {&P::cadenceFlags, 21, "\tcadence\t\t\t: existing, maxi      0 rpm\n"},
        {&P::powerFlags, 5, "\tpower\t\t\t\t: existing, maxi     0 watts\n"},
        {&P::powerFlags, 9, "\tpower\t\t\t\t: none\n"},
    };
    summary.recordInterval = 12;
    for (const auto& [flags, value, line] : cases) {
        presence = {};
        presence.hasRecords = 1;
        presence.*flags = value;
        summaryText(reportLoaded);
        expectLines(line);
    }
    presence.motionFlags = presence.timestampFlags = 1;
    presence.positionFlags = 0x11;
    summaryText(reportLoaded);
    expectLines("\tspeed\t\t\t\t: none\n");
}

TEST_F(FitReport, tableOfRecords)
{
    GpsRecords rows(3);
    GpsRecord& row = rows[2];
    row.sector = 12;
    row.timestamp = 789203109;
    std::tie(row.heading, row.altitude, row.inclination) = std::tuple(271.25, 35.84, -3.16);
    std::tie(row.speed, row.distance, row.temperature) = std::tuple(10, 1234.5, 21);
    std::tie(row.cadence, row.power) = std::tuple(90, 250.5);
    brakes = {{}, {}, {1.5, 2.5, 5.5, 3.5, 6.5, 4.5, 7.5, 0, 0}};
    presence = {1, 1, 1, 1, 1, 0x11, 1, 0, 1, 0, 0};
    EXPECT_EQ(fieldsText(rows, 1, 0),
              "\n remarkable fields data due to outlier rejection and smoothing\n\n"
              "\tsector, timestamp,  heading, altitude, inclinat,    speed, distance, temperat,  cadence\n"
              "\t      ,       UTC,   degree,        m,        %,      kph,       km,      Cel,      rpm\n"
              "\t    12,  07:05:09,    271.2,     35.8,     -3.2,     36.0,    1.234,     21.0,     90.0\n");
    presence = {1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    settings.detectBraking = 1;
    EXPECT_EQ(fieldsText(rows, 0, predictedCadence | predictedPower),
              "\n remarkable fields data\n\n"
              "\tsector,  cadence,    power,    brake,  f.brake, -friction, -radiate,  r.brake, -friction, -radiate\n"
              "\t      ,      rpm,        W,      kgf,  celsius,     Jule,     Jule,  celsius,     Jule,     Jule\n"
              "\t    12,     90.0,    250.5,    1.500,    2.500,    3.500,    4.500,    5.500,    6.500,    7.500\n");
    presence = {1, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0}; // brakes are followed only with a predicted power
    EXPECT_EQ(fieldsText(GpsRecords(1), 0, predictedCadence),
              "\n remarkable fields data\n\n\tsector,  cadence,    power\n\t      ,      rpm,        W\n");
    rows = GpsRecords(20'000, rows[2]);
    int pieces = 0;
    tellFields(reported(reportAnalysed, 0), rows, 0, [&](std::string_view) { return ++pieces < 2; });
    EXPECT_EQ(pieces, 2) << "it ends where no more is wanted";
}

// A lap's figures by hand from the units of the file; what is 0 or filled with ones has not been told.
TEST_F(FitReport, figuresOfALap)
{
    SessionLapEntry lap = {};
    std::tie(lap.recordCount, lap.sport, lap.startTime) = std::tuple(61, 2, 1'000'000'000);
    std::tie(lap.timestamp, lap.totalElapsed, lap.totalTimer) = std::tuple(1'000'000'070, 70'000, 65'000);
    std::tie(lap.totalMovingTime, lap.totalDistance) = std::tuple(60'500, 123'456);
    std::tie(lap.startLatitude, lap.startLongitude) = std::tuple(1 << 29, -(1 << 28)); // of 180 degrees in 1 << 31
    std::tie(lap.endLatitude, lap.endLongitude) = std::tuple(1 << 30, 1 << 27);
    std::tie(lap.avgAltitude, lap.maxAltitude, lap.minAltitude) = std::tuple(3000, 3500, 2750);
    std::tie(lap.avgSpeed, lap.maxSpeed, lap.avgTemperature, lap.maxTemperature) = std::tuple(10'000, 15'000, 20, 25);
    std::tie(lap.avgHeartRate, lap.maxHeartRate, lap.minHeartRate) = std::tuple(120, 150, 90);
    std::tie(lap.avgCadence, lap.maxCadence, lap.avgPower, lap.maxPower) = std::tuple(80, 100, 200, 600);
    std::tie(lap.normalizedPower, lap.totalCalories, lap.totalFatCalories) = std::tuple(210, 500, 0xFFFF);
    ReportedRide ride = reported(reportLoaded, 0);
    ride.laps = {&lap, 1};
    Figures figures = summaryFigures(ride);
    ASSERT_EQ(figures.groups.size(), 1u);
    EXPECT_EQ(figures.groups[0].name, "laps");
    EXPECT_EQ(
        listed(figures.groups[0].items[0]),
        "sport 2 ; recordCount 61 ; startTime 1.6310656e+09 sec since 1970; timestamp 1.63106567e+09 sec since 1970; "
        "totalElapsed 70 sec; totalTimer 65 sec; totalMovingTime 60.5 sec; startLatitude 45 deg; "
        "startLongitude -22.5 deg; endLatitude 90 deg; endLongitude 11.25 deg; avgAltitude 100 m; "
        "maxAltitude 200 m; minAltitude 50 m; totalDistance 1.23456 km; avgSpeed 36 kph; maxSpeed 54 kph; "
        "avgTemperature 20 Cel; maxTemperature 25 Cel; avgHeartRate 120 bpm; maxHeartRate 150 bpm; "
        "minHeartRate 90 bpm; avgCadence 80 rpm; maxCadence 100 rpm; avgPower 200 W; maxPower 600 W; "
        "normalizedPower 210 W; totalCalories 500 kcal; ");
}

} // namespace torvane
