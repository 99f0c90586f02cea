// Work that falls into pieces which need nothing of each other.
#pragma once

#include <cstddef>
#include <functional>

namespace torvane {

// Runs the pieces 0 to count - 1 on the caller's thread and so many more that there are `threads`, or as many as the
// system gives. The work must not throw. Returns when all have run.
void inParallel(size_t count, size_t threads, const std::function<void(size_t piece)>& run);

} // namespace torvane
