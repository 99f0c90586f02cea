// Which rides a batch works on: files and folders that the call names, and lists of them.
#pragma once

#include "cli/request.h"

#include <string>
#include <vector>

namespace torvane {

struct BatchSource {
    std::string path;        // absolute
    std::string folder = {}; // below that of --into, where a folder was looked through: "2026/05/"; else empty
};

struct BatchSources {
    std::vector<BatchSource> rides;
    std::vector<std::string> notes; // folders that were left out or could not be read
    bool complete = true;           // each could be
};

// In the order of the call, the files of --files-from behind its others; those of a folder by name. `into` is left out
// where a folder that is looked through holds it. Links lead to rides, and to no folder below the one that is named. An
// empty text on success.
std::string findSources(const Request& request, const std::string& into, BatchSources& sources);

} // namespace torvane
