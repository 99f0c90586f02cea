#include "core/held_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace torvane {

HeldFile::~HeldFile()
{
    if (handle >= 0)
        ::close(static_cast<int>(handle));
}

HeldFile::State HeldFile::open(const std::string& path)
{
    int file = ::open(path.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    if (file < 0)
        return State::cannotOpen;
    handle = file;
    if (::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) // some network folders cannot be held at all
        return State::held;
    return State::open;
}

bool HeldFile::read(uint64_t start, size_t limit, std::string& text) const
{
    text.resize(limit);
    ssize_t count = 0;
    do
        count = ::pread(static_cast<int>(handle), text.data(), limit, static_cast<off_t>(start));
    while (count < 0 && errno == EINTR);
    text.resize(count < 0 ? 0 : static_cast<size_t>(count));
    return count >= 0;
}

bool HeldFile::append(std::string_view text)
{
    while (!text.empty()) {
        ssize_t written = ::write(static_cast<int>(handle), text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        text.remove_prefix(static_cast<size_t>(written));
    }
    return ::fsync(static_cast<int>(handle)) == 0;
}

} // namespace torvane
