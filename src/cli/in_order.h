// Pieces of work on several threads, whose results are wanted in their order.
#pragma once

#include <cstddef>
#include <functional>

namespace torvane {

// The calls of one piece of work after the other; a piece goes by its number.
struct OrderedWork {
    std::function<void(size_t piece)> run;   // on some thread; must not throw
    std::function<void(size_t piece)> take;  // on the caller's thread, in order, each once it has run
    std::function<void(size_t ended)> ended; // on the caller's thread: how many have run so far
    std::function<bool()> isGivenUp;         // on any thread: whether no more may be begun
    // On any thread: whether no more may be begun before some are taken.
    std::function<bool()> isFull = [] { return false; };
};

// Runs the pieces 0 to count - 1 on so many threads, or as many as the system gives; without one, on the caller's. They
// are begun in order, so that those which were not begun are the last ones. Returns when all that were begun are taken.
void runInOrder(size_t count, size_t threads, const OrderedWork& work);

} // namespace torvane
