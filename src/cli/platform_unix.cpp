#include "cli/platform.h"

#include <fcntl.h>
#include <malloc.h>
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

void keepFreedMemory()
{
    constexpr int largestKept = 32 << 20, mostKept = 256 << 20, takenAtOnce = 8 << 20; // bytes
    mallopt(M_MMAP_THRESHOLD, largestKept);
    mallopt(M_TRIM_THRESHOLD, mostKept);
    mallopt(M_TOP_PAD, takenAtOnce);
}

bool isInteractive()
{
    return isatty(STDERR_FILENO);
}

} // namespace torvane
