#include "cli/platform.h"

#include <fcntl.h>
#include <unistd.h>

namespace torvane {

std::vector<std::string> commandLine(int count, char** values)
{
    return {values + (count > 0), values + count};
}

// A file that is opened later must not get the number of a stream that was closed: what is printed would go into it.
void prepareStreams()
{
    int number = 0;
    while (number >= 0 && number <= STDERR_FILENO)
        number = ::open("/dev/null", O_RDONLY); // so that to print there still fails
    ::close(number);
}

bool isInteractive()
{
    return isatty(STDERR_FILENO);
}

} // namespace torvane
