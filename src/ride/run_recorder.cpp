#include "ride/run_recorder.h"

#include "model/run_state.h"
#include "ride/brake_energy.h"

namespace torvane {

namespace {

void addPoint(GraphSeries& graph, GraphLayout layout, const StepState& s)
{
    const double kph = s.velocity * 3.6;
    switch (layout) {
    case GraphLayout::process:
        addGraphPoint(graph,
                      {s.time, kph, s.distance, s.accele, runState.pedalingPower, runState.pedalingTorque, s.cadence});
        break;
    case GraphLayout::braking:
        addGraphPoint(graph, {s.time, kph, s.distance, drawnTemperature(0), drawnTemperature(1)});
        break;
    default:
        addGraphPoint(graph, {s.time, kph, s.distance, s.accele});
        break;
    }
}

} // namespace

RunRecorder beginRecording(SampleLog& log, GraphSeries* graph, GraphLayout layout)
{
    allocateSampleLog(log);
    if (graph != nullptr) {
        beginGraphSeries(*graph, layout, log.sampleCount);
    }
    return {log, graph, layout};
}

bool recordStep(RunRecorder& recorder, const StepState& state)
{
    if (recorder.row > recorder.log.sampleCount) {
        return false;
    }
    recordSample(recorder.log, state, recorder.row++);
    if (recorder.graph != nullptr) {
        addPoint(*recorder.graph, recorder.layout, state);
    }
    return true;
}

void finishRecording(RunRecorder& recorder, const StepState& state)
{
    recordSample(recorder.log, state, recorder.row);
    if (recorder.row < recorder.log.sampleCount) {
        recorder.log.sampleCount = recorder.row;
    }
}

} // namespace torvane
