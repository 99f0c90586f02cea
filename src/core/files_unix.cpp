// Files by POSIX calls.
#include "core/files.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace torvane {

namespace {

// Closes on every way out.
struct OpenFile {
    explicit OpenFile(int openDescriptor) : descriptor(openDescriptor) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile()
    {
        if (descriptor >= 0)
            ::close(descriptor);
    }
    int descriptor;
};

using MakePieces = std::function<bool(const WritePiece&)>;

bool writePiece(int descriptor, std::span<const uint8_t> piece)
{
    while (!piece.empty()) {
        ssize_t written = ::write(descriptor, piece.data(), piece.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        piece = piece.subspan(static_cast<size_t>(written));
    }
    return true;
}

bool writeAll(int descriptor, const MakePieces& make)
{
    return make([=](std::span<const uint8_t> piece) { return writePiece(descriptor, piece); });
}

FileType typeOf(mode_t mode)
{
    if (S_ISREG(mode))
        return FileType::file;
    if (S_ISDIR(mode))
        return FileType::folder;
    return S_ISFIFO(mode) || S_ISSOCK(mode) ? FileType::pipe : FileType::device;
}

// Reads on from start until limit bytes are there or the file ends; the size that the file claims is only a first
// guess.
FileResult readUpTo(const std::string& path, size_t start, size_t limit, std::vector<uint8_t>& bytes)
{
    bytes.clear();
    if (fileType(path) != FileType::file) // to open a pipe would wait for its writer
        return FileResult::cannotOpen;
    OpenFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status;
    if (file.descriptor < 0 || ::fstat(file.descriptor, &status) != 0)
        return FileResult::cannotOpen;
    if (start != 0 && ::lseek(file.descriptor, static_cast<off_t>(start), SEEK_SET) < 0)
        return FileResult::readFailed;
    constexpr size_t piece = 1 << 16;
    size_t size = static_cast<size_t>(status.st_size);
    size_t guess = size - std::min(size, start) + 1;
    size_t used = 0;
    while (used < limit) {
        if (used == bytes.size())
            bytes.resize(std::min(limit, used == 0 ? guess : used + std::max(used, piece)));
        ssize_t count = ::read(file.descriptor, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return FileResult::readFailed;
        if (count == 0)
            break;
        used += static_cast<size_t>(count);
    }
    bytes.resize(used);
    return FileResult::ok;
}

// A device or a pipe has no old content to protect, and must not be renamed away.
FileResult writeStraight(const std::string& path, const MakePieces& make)
{
    OpenFile file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.descriptor < 0)
        return FileResult::cannotOpen;
    return writeAll(file.descriptor, make) ? FileResult::ok : FileResult::writeFailed;
}

// Makes a file beside the target under a name that nobody has; its descriptor, below 0 when that failed.
int createNeighbour(const std::string& target, mode_t mode, std::string& neighbour)
{
    static std::atomic<unsigned> serial = 0;
    std::string stem = target.substr(0, target.rfind('/') + 1) + ".torvane-" + std::to_string(::getpid()) + "-";
    int descriptor = -1;
    do {
        neighbour = stem + std::to_string(++serial);
        descriptor = ::open(neighbour.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (descriptor < 0 && (errno == EEXIST || errno == EINTR));
    return descriptor;
}

// Writes the neighbour and moves it over the target; the neighbour goes again when anything fails. `replaced` is the
// state of the old file, null when there is none.
FileResult writeNeighbour(const std::string& target, const struct stat* replaced, const MakePieces& make)
{
    mode_t mode = replaced ? replaced->st_mode & 07777 : 0666;
    std::string neighbour;
    OpenFile file(createNeighbour(target, mode, neighbour));
    if (file.descriptor < 0)
        return FileResult::cannotOpen;
    // What the process's mask took off a mode that was there before. A file system without modes may refuse.
    if (replaced)
        ::fchmod(file.descriptor, mode);
    if (writeAll(file.descriptor, make) && ::fsync(file.descriptor) == 0 &&
        ::rename(neighbour.c_str(), target.c_str()) == 0)
        return FileResult::ok;
    ::unlink(neighbour.c_str());
    return FileResult::writeFailed;
}

} // namespace

FileResult readWholeFile(const std::string& path, std::vector<uint8_t>& bytes)
{
    return readUpTo(path, 0, SSIZE_MAX, bytes);
}

FileResult readFileStart(const std::string& path, size_t limit, std::vector<uint8_t>& bytes)
{
    return readUpTo(path, 0, limit, bytes);
}

FileResult readFileFrom(const std::string& path, size_t start, std::vector<uint8_t>& bytes)
{
    return readUpTo(path, start, SSIZE_MAX, bytes);
}

FileResult replaceFile(const std::string& path, const MakePieces& make)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return path.empty() ? FileResult::cannotOpen : writeNeighbour(path, nullptr, make);
    if (S_ISDIR(status.st_mode) || ::access(path.c_str(), W_OK) != 0)
        return FileResult::cannotOpen;
    if (!S_ISREG(status.st_mode))
        return writeStraight(path, make);
    // Through a link to the file that it names, which keeps the link.
    char* resolved = ::realpath(path.c_str(), nullptr);
    if (!resolved)
        return FileResult::cannotOpen;
    std::string target = resolved;
    std::free(resolved);
    return writeNeighbour(target, &status, make);
}

FileType fileType(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 ? typeOf(status.st_mode) : FileType::nothing;
}

std::optional<FileIdentity> fileIdentity(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return FileIdentity{status.st_dev, status.st_ino};
}

bool renameFile(const std::string& from, const std::string& to)
{
    return ::rename(from.c_str(), to.c_str()) == 0;
}

std::string absolutePath(const std::string& path)
{
    if (path.empty() || path[0] == '/')
        return path;
    char* folder = ::getcwd(nullptr, 0);
    if (!folder)
        return path;
    std::string absolute = std::string(folder) + "/" + path;
    std::free(folder);
    return absolute;
}

std::string programFolder()
{
    char path[PATH_MAX];
    ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    std::string program(path, length > 0 ? static_cast<size_t>(length) : 0);
    return program.substr(0, program.rfind('/') + 1);
}

} // namespace torvane
