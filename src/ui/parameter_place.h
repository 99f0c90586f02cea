// Where the parameter file of the desktop program is, and the entry file with it.
#pragma once

#include <string>

namespace torvane {

struct ParameterPlace {
    std::string path; // UTF-8
    bool isNews;      // first used now, and not beside the program: to be told
};

// Beside the program; in the user's own folder where there is none beside it and none can be made.
ParameterPlace findParameterPlace();

} // namespace torvane
