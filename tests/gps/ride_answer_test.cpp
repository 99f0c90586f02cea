// The figures of a ride's answer, from rows whose figures can be had by hand.
#include "gps/climbs.h"
#include "gps/gear_use.h"
#include "gps/power_figures.h"
#include "gps/ride_laps.h"

#include "figures.h"
#include "model/gear_table.h"

#include <cmath>
#include <tuple>
#include <vector>

namespace torvane {

namespace {

// A row a second with 10 m each; powers of half a minute each.
std::vector<RiddenRow> rowsWithPowers(const std::vector<double>& halfMinutes, uint32_t start = 1000)
{
    std::vector<RiddenRow> rows;
    for (double watts : halfMinutes)
        for (int i = 0; i < 30; ++i) {
            RiddenRow row = {.timestamp = ++start, .seconds = 1, .metres = 10};
            row.power[predictedFigure] = watts;
            row.cadence[predictedFigure] = watts / 4;
            rows.push_back(row);
        }
    return rows;
}

// Stretches of so many metres, each with its slope in %, a row every 10 m.
std::vector<RiddenRow> rowsOverHills(const std::vector<std::pair<int, double>>& stretches)
{
    std::vector<RiddenRow> rows(1);
    for (auto [metres, slope] : stretches)
        for (int i = 0; i < metres / 10; ++i) {
            RiddenRow row = {.timestamp = rows.back().timestamp + 2, .seconds = 2, .metres = 10};
            row.distance = rows.back().distance + 10;
            row.height = rows.back().height + slope / 10;
            rows.push_back(row);
        }
    return rows;
}

} // namespace

TEST(PowerFigures, TellMeansBestMeansAndWork)
{
    std::vector<RiddenRow> rows = rowsWithPowers({100, 300, 0, 200});
    PowerFigures figures = *powerFiguresOf(rows, predictedFigure);
    expectFigures({figures.seconds, figures.mean, figures.kiloJoule, *figures.best[0], *figures.best[1]},
                  {120, 150, 18, 300, 200}, 1e-9);
    EXPECT_FALSE(figures.best[2]);
    EXPECT_GE(*figures.normalised, figures.mean);
    EXPECT_FALSE(powerFiguresOf(rows, measuredFigure));
    EXPECT_NEAR(*powerFiguresOf(rowsWithPowers({200, 200, 200}), predictedFigure)->normalised, 200, 1e-9);

    // A stop of five minutes counts with 0 W for the highest means, and not at all for the others.
    std::vector<RiddenRow> later = rowsWithPowers({300}, 1420);
    later[0].seconds = 0;
    rows.insert(rows.end(), later.begin(), later.end());
    figures = *powerFiguresOf(rows, predictedFigure);
    expectFigures({figures.seconds, figures.mean, *figures.best[2]}, {149, 26700 / 149.0, 18000 / 300.0}, 1e-9);
    rows[5].power[predictedFigure] = noFigure; // a meter that gave nothing
    expectFigures({powerFiguresOf(rows, predictedFigure)->seconds, *meansOf(rows, predictedFigure).power()},
                  {148, 26600 / 148.0}, 1e-9);
}

TEST(Climbs, BeginAtTheirFootAndEndAtTheirTop)
{
    struct Case {
        std::vector<std::pair<int, double>> road;
        std::vector<std::pair<double, double>> climbs; // foot and top, m
        double climbed;
    };
    const Case cases[] = {
        {{{1000, 0}, {1000, 5}, {2000, -3}}, {{1000, 2000}}, 50},
        {{{1000, 5}, {200, -2}, {1000, 5}}, {{0, 2200}}, 100}, // a dip of 4 m within a climb
        {{{300, 4}, {100, -2}, {300, 4}}, {{0, 700}}, 22},     // a dip that the height does not count either
        {{{1000, 5}, {400, -4}, {1000, 5}}, {{0, 1000}, {1400, 2400}}, 100}, // a descent of 16 m between two
        {{{1000, 5}, {800, 0}, {1000, 5}}, {{0, 1000}, {1800, 2800}}, 100},  // a plain between two
        {{{5000, 1.5}, {300, 5}}, {}, 90},                                   // never steep, then too low
        {{{500, 0.5}, {500, -0.5}, {500, 0.5}}, {}, 0},                      // ups and downs below 3 m
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.road));
        std::vector<RiddenRow> rows = rowsOverHills(c.road);
        std::vector<Climb> found = findClimbs(rows);
        ASSERT_EQ(found.size(), c.climbs.size());
        for (size_t i = 0; i < found.size(); ++i)
            expectFigures({rows[found[i].foot].distance, rows[found[i].top].distance},
                          {c.climbs[i].first, c.climbs[i].second}, 1e-9);
        EXPECT_NEAR(climbedHeight(rows), c.climbed, 1e-9);
    }
}

TEST(GearUse, CountsPedallingByTheNearestGear)
{
    ParameterBlock block = defaultBlock();
    Model model = modelOf(block);
    int gear = 5;
    std::vector<RiddenRow> rows = rowsWithPowers({200, 0});
    for (size_t i = 0; i < 30; ++i) {
        rows[i].speed = 8;
        rows[i].cadence[measuredFigure] = cadenceInGear(model, 8, model.gearTable[gear].ratio);
    }
    std::vector<GearUse> uses = gearUseOf(model, rows, measuredFigure);
    ASSERT_EQ(uses.size(), 1u);
    expectFigures({uses[0].row, uses[0].seconds}, {gear, 30});
}

TEST(RideLaps, HoldTheStepsThatEndInThem)
{
    std::vector<RiddenRow> rows = rowsWithPowers({100, 200});
    RiddenRows lap = rowsOf({1010, 1030}, rows);
    expectFigures({lap.size(), *meansOf(lap, predictedFigure).power()}, {20, 100}, 1e-9);
    EXPECT_TRUE(rowsOf({2000, 3000}, rows).empty());
    EXPECT_EQ(meansOf(rowsWithPowers({100, 0, 200}), predictedFigure).cadence(), 37.5) << "where the pedals turn";
}

} // namespace torvane
