#include "core/large_pages.h"

namespace torvane {

// Large pages need a right here that no user has.
void expectAllTouched(void*, size_t) {}

// Large memory is not kept here.
void giveBackFreed() {}

} // namespace torvane
