// Memory in large pages, where the system has them, and none that lies idle: a page that is touched for the first time
// costs it more than many a row of a track costs us.
#pragma once

#include <cstddef>

namespace torvane {

// Says of memory that nobody has touched yet that all of it will be. Changes nothing but the time that this takes.
void expectAllTouched(void* memory, size_t bytes);

// Gives back to the system what was freed and is kept for later: behind a step whose large memory no later one uses.
void giveBackFreed();

} // namespace torvane
