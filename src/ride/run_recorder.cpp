#include "ride/run_recorder.h"

#include "core/units.h"
#include "ride/brake_energy.h"

#include <algorithm>

namespace torvane {

namespace {

void addPoint(const RunRecorder& recorder, const StepState& s)
{
    RideRun& ride = recorder.ride;
    GraphSeries& graph = *ride.graph;
    double kph = s.velocity * kphPerMps;
    switch (recorder.layout) {
    case GraphLayout::process:
        addGraphPoint(graph,
                      {s.time, kph, s.distance, s.accele, ride.now.pedalingPower, ride.now.pedalingTorque, s.cadence});
        break;
    case GraphLayout::braking:
        addGraphPoint(graph, {s.time, kph, s.distance, drawnTemperature(ride, 0), drawnTemperature(ride, 1)});
        break;
    default:
        addGraphPoint(graph, {s.time, kph, s.distance, s.accele});
        break;
    }
}

// The powers of the stage that drives the run.
SampleRow sampleOf(const RideRun& ride, const StepState& s)
{
    const Evaluation& now = ride.now;
    const Drive& drive = ride.found.drive;
    SampleRow row = {s.time,     s.velocity,   now.pedalingPower, now.pedalingTorque, now.pedalingForce, s.accele,
                     s.distance, s.frontTooth, s.rearTooth,       s.gearRatio,        s.cadence};
    if (drive.thrustMode == thrustByBraking) {
        row.power = drive.kiloWattLog != 0 ? now.thrustPower / 1000.0 : now.thrustPower;
        row.torque = now.thrustTorque;
        row.force = now.thrustForce;
    }
    return row;
}

} // namespace

void beginCurves(RideRun& ride, GraphLayout layout, int pointsExpected)
{
    if (ride.in.wantsGraph != 0)
        beginGraphSeries(ride.graph.emplace(), layout, pointsExpected);
}

RunRecorder beginRecording(RideRun& ride, GraphLayout layout)
{
    allocateSampleLog(ride.log);
    beginCurves(ride, layout, ride.log.sampleCount);
    return {ride, layout};
}

bool recordStep(RunRecorder& recorder, const StepState& state)
{
    RideRun& ride = recorder.ride;
    if (recorder.row > ride.log.sampleCount)
        return false;
    recordSample(ride.log, sampleOf(ride, state), recorder.row++);
    if (ride.graph)
        addPoint(recorder, state);
    return true;
}

void finishRecording(RunRecorder& recorder, const StepState& state)
{
    RideRun& ride = recorder.ride;
    recordSample(ride.log, sampleOf(ride, state), recorder.row);
    ride.log.sampleCount = std::min(ride.log.sampleCount, recorder.row);
}

} // namespace torvane
