// Rides that come through a pipe, as <(gunzip -c ride.fit.gz) gives them. A command reads its sources more than once,
// and a pipe can be read but once: its bytes are laid into a file of the system's folder for such, which goes with this
// record. On reports the ride has the pipe's name.
#pragma once

#include "cli/command_files.h"

#include <string>
#include <vector>

namespace torvane {

class PipedSources {
public:
    PipedSources() = default;
    PipedSources(const PipedSources&) = delete;
    PipedSources& operator=(const PipedSources&) = delete;
    ~PipedSources();

    // Puts files in the place of the pipes among the sources. An empty text on success, else what is wrong.
    std::string take(RunFiles& files);

private:
    std::string layDown(const std::string& pipe, std::string& file);

    std::vector<std::string> folders; // one for each, since pipes may have one name
};

} // namespace torvane
