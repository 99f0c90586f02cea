// What simulations hand on: sample log and graph series.
#include "ride/ride_fixture.h"
#include "ride/run_recorder.h"

namespace torvane {

TEST(GraphSeries, complaints)
{
    struct Case {
        int kind;
        size_t series;
        int complaint;
    };
    constexpr Case cases[] = {
        {0, 1, 0}, {0, 2, 1}, {1, 2, 0}, {1, 3, 1}, {2, 3, 0}, {2, 2, 1}, {3, 3, 0}, {3, 64, 0}, {3, 2, 1},  {4, 3, 1},
        {5, 2, 0}, {5, 1, 2}, {6, 2, 0}, {6, 1, 1}, {7, 1, 2}, {8, 1, 2}, {8, 5, 0}, {9, 2, 4},  {-1, 2, 4},
    };
    for (const Case& c : cases) {
        GraphSeries graph;
        graph.graphKind = c.kind;
        graph.seriesNames.resize(c.series);
        EXPECT_EQ(checkGraphSeries(graph), c.complaint) << c.kind << " with " << c.series;
    }
}

using RecordTest = RideTest;

TEST_F(RecordTest, aRowShowsTheStageThatDrives)
{
    runState.pedalingPower = 300.0;
    runState.thrustPower = -12000.0;
    runState.thrustTorque = -7.0;
    SampleLog log;
    log.sampleCount = 2;
    allocateSampleLog(log);
    recordSample(log, {}, 0);
    runState.thrustMode = 1;
    recordSample(log, {}, 1);
    runState.kiloWattLog = 1;
    recordSample(log, {}, 2);
    recordSample(log, {}, 3); // there is no such row
    EXPECT_EQ(log.rows[0].power, 300.0);
    EXPECT_EQ(log.rows[1].power, -12000.0);
    EXPECT_EQ(log.rows[2].power, -12.0);
    EXPECT_EQ(log.rows[2].torque, -7.0);
    EXPECT_EQ(log.rows.size(), 3u);
}

TEST_F(RecordTest, aRecorderEndsTheRunWhenItsRowsAreUsedUp)
{
    SampleLog log;
    log.sampleCount = 3;
    GraphSeries graph;
    RunRecorder recorder = beginRecording(log, &graph, GraphLayout::rolling);
    StepState s;
    int recorded = 0;
    while (recorded < 10 && recordStep(recorder, s)) {
        ++recorded;
        s.time += 1.0;
    }
    EXPECT_EQ(recorded, 4);
    EXPECT_EQ(graph.pointCount(), 4);
}

TEST_F(RecordTest, unusedRowsAreCutAndTheLastIsShownWhenTimeHasPassed)
{
    SampleLog log;
    log.sampleCount = 10;
    RunRecorder recorder = beginRecording(log, nullptr, GraphLayout::process);
    StepState s;
    recordStep(recorder, s);
    s.time = 0.5;
    recordStep(recorder, s);
    s.time = 0.7;
    finishRecording(recorder, s);
    EXPECT_EQ(log.sampleCount, 2);
    EXPECT_EQ(log.rows[2].time, 0.7);
    EXPECT_EQ(shownRows(log), 3);
    log.rows[2].time = 0.0;
    EXPECT_EQ(shownRows(log), 2);
}

} // namespace torvane
