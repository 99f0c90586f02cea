#include "model/run_state.h"

namespace torvane {

RunState runState;

} // namespace torvane
