#include "ride/sample_log.h"

#include "model/run_state.h"

#include <cstddef>

namespace torvane {

namespace {

void takePedaling(SampleRow& row)
{
    row.power = runState.pedalingPower;
    row.torque = runState.pedalingTorque;
    row.force = runState.pedalingForce;
}

void takeThrust(SampleRow& row)
{
    row.power = runState.kiloWattLog != 0 ? runState.thrustPower / 1000.0 : runState.thrustPower;
    row.torque = runState.thrustTorque;
    row.force = runState.thrustForce;
}

} // namespace

void allocateSampleLog(SampleLog& log)
{
    log.rows.assign(static_cast<size_t>(log.sampleCount) + 1, SampleRow{});
}

void recordSample(SampleLog& log, const StepState& state, int row)
{
    if (row < 0 || static_cast<size_t>(row) >= log.rows.size()) {
        return;
    }
    SampleRow& sample = log.rows[static_cast<size_t>(row)];
    sample.time = state.time;
    sample.velocity = state.velocity;
    sample.accele = state.accele;
    sample.distance = state.distance;
    sample.frontTooth = state.frontTooth;
    sample.rearTooth = state.rearTooth;
    sample.gearRatio = state.gearRatio;
    sample.cadence = state.cadence;
    if (runState.thrustMode == 0) {
        takePedaling(sample);
    } else {
        takeThrust(sample);
    }
}

int shownRows(const SampleLog& log)
{
    size_t last = static_cast<size_t>(log.sampleCount);
    bool written = last < log.rows.size() && log.rows[last].time != 0.0;
    return written ? log.sampleCount + 1 : log.sampleCount;
}

} // namespace torvane
