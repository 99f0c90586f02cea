// The constant braking force that a figure of the run asks for. Leaves it in runState.force, with the run's results.
// Status: as seekTarget; statusIllegalValue for a start not above the end, or a wanted power or acceleration that is
// not negative, or a time or distance that is not positive.
#pragma once

#include "core/result_status.h"
#include "ride/sample_log.h"

namespace torvane {

ResultStatus seekBrakeForPeakPower(SampleLog& log);  // runState.power, at the road
ResultStatus seekBrakeForMeanPower(SampleLog& log);  // the same, mean over the time
ResultStatus seekBrakeForSectorTime(SampleLog& log); // runState.sectorTime; it reads as wanted afterwards
ResultStatus seekBrakeForDistance(SampleLog& log);   // runState.distance
ResultStatus seekBrakeForAccele(SampleLog& log);     // runState.accele

} // namespace torvane
