// What simulations hand on: sample log and graph series.
#include "ride/ride_fixture.h"
#include "ride/run_recorder.h"

namespace torvane {

TEST(GraphSeries, complaints)
{
    // Kind, series, complaint.
    constexpr int cases[][3] = {
        {0, 1, 0}, {0, 2, 1}, {1, 2, 0}, {1, 3, 1}, {2, 3, 0}, {2, 2, 1}, {3, 3, 0}, {3, 64, 0}, {3, 2, 1},  {4, 3, 1},
        {5, 2, 0}, {5, 1, 2}, {6, 2, 0}, {6, 1, 1}, {7, 1, 2}, {8, 1, 2}, {8, 5, 0}, {9, 2, 4},  {-1, 2, 4},
    };
    for (auto [kind, series, complaint] : cases) {
        GraphSeries graph;
        graph.graphKind = kind;
        graph.seriesNames.resize(static_cast<size_t>(series));
        EXPECT_EQ(checkGraphSeries(graph), complaint) << kind << " with " << series;
    }
}

using RecordTest = RideTest;

TEST_F(RecordTest, aRecorderEndsTheRunWhenItsRowsAreUsedUp)
{
    block.expressGraph = 1;
    prepare(rideInclinationAndVelocity, 0).log.sampleCount = 3;
    RunRecorder recorder = beginRecording(*ride, GraphLayout::rolling);
    StepState s;
    int recorded = 0;
    for (; recorded < 10 && recordStep(recorder, s); ++recorded)
        s.time += 1.0;
    EXPECT_EQ(recorded, 4);
    EXPECT_EQ(ride->graph->pointCount(), 4);
}

} // namespace torvane
