#include "cli/platform.h"

#include <unistd.h>

namespace torvane {

std::vector<std::string> commandLine(int count, char** values)
{
    return {values + (count > 0), values + count};
}

void prepareStreams() {}

bool isInteractive()
{
    return isatty(STDOUT_FILENO) && isatty(STDERR_FILENO);
}

} // namespace torvane
