// Rides that come through a pipe, as <(gunzip -c ride.fit.gz) gives them. A command reads its sources more than once,
// and a pipe can be read but once: its bytes are laid into a file of the system's folder for such, which goes with this
// record. On reports the ride has the pipe's name.
#pragma once

#include "cli/temporary_folder.h"
#include "command/fill.h"
#include "core/stop_request.h"

#include <list>
#include <string>

namespace torvane {

class PipedSources {
public:
    // Puts files in the place of the pipes among the sources, unless it is asked to stop before. An empty text on
    // success, else what is wrong.
    std::string take(RunFiles& files, const StopRequest& stop);

private:
    std::string layDown(const std::string& pipe, const StopRequest& stop, std::string& file);

    std::list<TemporaryFolder> folders; // one for each, since pipes may have one name
};

} // namespace torvane
