// A calibration in words.
#pragma once

#include "core/screens.h"
#include "plan/calibrate.h"

#include <span>
#include <string>
#include <vector>

namespace torvane {

// Replaces the lower pane. Of an answer without a ride the notes alone.
void reportCalibration(Screens& screens, const CalibrationAnswer& answer, std::span<const MeasuredRide> rides,
                       const std::vector<std::string>& notes);

} // namespace torvane
