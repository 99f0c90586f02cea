// The answer of a check that may have something to say before a command runs: message boxes as data, so that a check
// can be called, and tested, without a screen. Shows nothing itself.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace torvane {

struct Box {
    std::string title, text;
};

// Answer of a validation, a check or a commit: boxes to show in turn, and whether the form may close.
struct Verdict {
    bool passed = true;
    std::vector<Box> boxes;
    size_t file = 0; // of a check of files that did not pass: which one of them it refused
};

} // namespace torvane
