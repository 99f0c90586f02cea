// The curves of a recorded ride: which there are by what its file holds, and what is missing in a row.
#include "core/parameter_block.h"
#include "figures.h"
#include "plot/curves.h"
#include "report/ride_curves.h"

#include <gtest/gtest.h>

#include <cmath>

namespace torvane {
namespace {

GpsRecord recordOf(uint32_t sector, uint32_t time, double distance, double heartRate)
{
    GpsRecord record = {};
    record.sector = sector;
    record.timestamp = time;
    record.distance = distance;
    record.heartRate = heartRate;
    record.speed = 10;
    record.power = 200;
    record.latitude = distance > 0 ? 47 : 0;
    return record;
}

TEST(RideCurves, HoldWhatTheRideHas)
{
    FieldPresence presence = {};
    presence.timestampFlags = presence.positionFlags = presence.heartRateFlags = presentInRecords;
    FitInventory inventory = {};
    FitSummary summary = {};
    ParameterBlock settings = defaultBlock();
    settings.detectBraking = 0;
    ReportedRide ride = {"x.fit", reportAnalysed, inventory, summary, presence, settings};
    GpsRecords records = {recordOf(0, 940, 0, 99), recordOf(1, 1000, 0, 0), recordOf(1, 1060, 600, 140),
                          recordOf(1, 1120, 1500, 255)};
    MeasuredRow measured[] = {{1060, 180, 90}};
    GraphSeries graph = rideCurves(ride, {nullptr, records, measured}, predictedPower, true);
    EXPECT_EQ(graph.seriesNames,
              (std::vector<std::string>{"distance(km)", "time(min)", "velocity(kph)", "predicted power(W)",
                                        "measured power(W)", "heart rate(bpm)"}));
    ASSERT_EQ(graph.pointCount(), 3) << "the excluded row is none";
    EXPECT_EQ(graph.alongs, 2);
    expectFigures({graph.value(1, 0), graph.value(1, 1), graph.value(1, 3), graph.value(1, 4)}, {0.6, 1, 200, 180});
    EXPECT_DOUBLE_EQ(graph.value(2, 2), 36);
    for (auto [point, series] : {std::pair{0, 4}, {0, 5}, {2, 5}})
        EXPECT_TRUE(std::isnan(graph.value(point, series))) << graph.value(point, series) << " of series " << series;
    EXPECT_TRUE(std::isnan(graph.latitude[0])) << graph.latitude[0];
    EXPECT_EQ(graph.latitude[1], 47);
    EXPECT_EQ(curvesAbout(graph).curves, (std::vector<int>{2, 3, 4}));

    records[2].power = 300;
    EXPECT_EQ(graph.value(1, 3), 300) << "told from the rows";
    keepValues(graph);
    records[2].power = 0;
    expectFigures({graph.value(1, 3), graph.value(1, 4)}, {300, 180});

    presence = {};
    presence.powerFlags = presentInRecords;
    settings.detectBraking = 1;
    graph = rideCurves(ride, {nullptr, records}, 0, true);
    EXPECT_EQ(graph.seriesNames, (std::vector<std::string>{"distance(km)", "velocity(kph)", "measured power(W)"}));
    EXPECT_EQ(graph.alongs, 1);
    EXPECT_TRUE(graph.latitude.empty());
}

} // namespace
} // namespace torvane
