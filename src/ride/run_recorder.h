// What a logged run does beside its physics: fills the sample log, the curves and the power bins, and moves the
// progress bar. A dry run has no recorder.
#pragma once

#include "ride/power_bins.h"
#include "ride/ride_records.h"

namespace torvane {

struct RunRecorder {
    RideRun& ride; // its log and, where they are wanted, its curves
    GraphLayout layout;
    PowerBins bins = {}; // of a run that is pedaled
    int row = 0;         // the next row
};

// Begins the curves when they are wanted.
void beginCurves(RideRun& ride, GraphLayout layout, int pointsExpected);

// Takes the rows that the dry run counted, and begins the curves that the inputs want.
RunRecorder beginRecording(RideRun& ride, GraphLayout layout);

// Writes the present state as the next row and point. False when there is no row left: the run is to end.
bool recordStep(RunRecorder& recorder, const StepState& state);

// Writes the last row, which no point of the curves shows, and lowers sampleCount to the rows used before it.
void finishRecording(RunRecorder& recorder, const StepState& state);

} // namespace torvane
