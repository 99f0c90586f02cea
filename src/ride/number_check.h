// Whether all that a run leaves for its report and tables is a number. Losses that reach the whole power, brakes that
// glow and velocities next to nothing lead to figures that are none.
#pragma once

namespace torvane {

struct SampleLog;

// Reads runState, the brakes of modelState and physiology.
bool endedInNumbers(const SampleLog& log);

} // namespace torvane
