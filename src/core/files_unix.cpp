// Files by POSIX calls.
#include "core/files.h"

#include "core/large_pages.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <tuple>
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

// Makes room behind what is used for the next piece, and more of it the more there is. False at the limit.
bool makeRoom(std::vector<uint8_t>& bytes, size_t used, size_t limit, size_t guess)
{
    constexpr size_t piece = 1 << 16;
    constexpr size_t longFile = 64 << 20; // a shorter one gains less by large pages than they leave unused
    if (used == bytes.size() && used < limit) {
        size_t size = std::min(limit, used == 0 ? guess : used + std::max(used, piece));
        bytes.reserve(size);
        if (size >= longFile)
            expectAllTouched(bytes.data() + used, size - used);
        bytes.resize(size);
    }
    return used < limit;
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
    size_t size = static_cast<size_t>(status.st_size);
    size_t guess = size - std::min(size, start) + 1;
    size_t used = 0;
    while (makeRoom(bytes, used, limit, guess)) {
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

// Waits until a pipe has bytes, or a writer that was there has gone. False where that is given up.
bool waitForBytes(int descriptor, const std::function<bool()>& stops)
{
    constexpr int interval = 50; // ms between two looks
    pollfd waited = {descriptor, POLLIN, 0};
    while (!stops()) {
        int ready = ::poll(&waited, 1, interval);
        if (ready > 0 || (ready < 0 && errno != EINTR))
            return ready > 0;
    }
    return false;
}

// A device has no old content to protect, and must not be renamed away.
FileResult writeStraight(const std::string& path, const MakePieces& make)
{
    OpenFile file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.descriptor < 0)
        return FileResult::cannotOpen;
    return writeAll(file.descriptor, make) ? FileResult::ok : FileResult::writeFailed;
}

int createBeside(const std::string& target, mode_t mode, std::string& path)
{
    static std::atomic<unsigned> serial = 0;
    std::string stem = target.substr(0, target.rfind('/') + 1) + ".torvane-" + std::to_string(::getpid()) + "-";
    int descriptor = -1;
    do {
        path = stem + std::to_string(++serial);
        descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (descriptor < 0 && (errno == EEXIST || errno == EINTR));
    return descriptor;
}

// A file beside its target under a name that nobody has. It goes with its owner, whatever ends that one, unless it has
// taken the target's place.
class Neighbour {
public:
    Neighbour(const std::string& target, mode_t mode) : file(createBeside(target, mode, path)) {}
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;
    ~Neighbour()
    {
        if (stands)
            ::unlink(path.c_str());
    }
    bool isOpen() const
    {
        return stands;
    }
    int descriptor() const
    {
        return file.descriptor;
    }
    bool takePlaceOf(const std::string& target)
    {
        stands = ::rename(path.c_str(), target.c_str()) != 0;
        return !stands;
    }

private:
    std::string path;
    OpenFile file;
    bool stands = file.descriptor >= 0;
};

// As far as the system lets them be kept. What runs with the rights of its owner must not come to run with another's.
void keepOwnerAndMode(int descriptor, const struct stat& replaced)
{
    constexpr uid_t sameUser = static_cast<uid_t>(-1);
    bool kept = ::fchown(descriptor, replaced.st_uid, replaced.st_gid) == 0;
    if (!kept)
        std::ignore = ::fchown(descriptor, sameUser, replaced.st_gid); // the group alone, or nothing
    ::fchmod(descriptor, replaced.st_mode & (kept ? 07777 : 0777));
}

// Writes the neighbour and moves it over the target. `replaced` is the state of the old file, null when there is none.
FileResult writeNeighbour(const std::string& target, const struct stat* replaced, const MakePieces& make, Flush flush)
{
    Neighbour neighbour(target, replaced ? 0600 : 0666);
    if (!neighbour.isOpen())
        return FileResult::cannotOpen;
    if (replaced)
        keepOwnerAndMode(neighbour.descriptor(), *replaced);
    bool written =
        writeAll(neighbour.descriptor(), make) && (flush == Flush::byOwner || ::fsync(neighbour.descriptor()) == 0);
    return written && neighbour.takePlaceOf(target) ? FileResult::ok : FileResult::writeFailed;
}

// The path behind links, whether they lead to a file or to none yet; empty where they lead in a circle.
std::string behindLinks(std::string path)
{
    constexpr int mostLinks = 40; // as the system follows
    for (int link = 0; link < mostLinks; ++link) {
        char target[PATH_MAX];
        ssize_t length = ::readlink(path.c_str(), target, sizeof target);
        if (length < 0)
            return path;
        std::string folder = target[0] == '/' ? std::string() : path.substr(0, path.rfind('/') + 1);
        path = folder.append(target, static_cast<size_t>(length));
    }
    return {};
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

FileResult readFilePart(const std::string& path, size_t start, size_t limit, std::vector<uint8_t>& bytes)
{
    return readUpTo(path, start, limit, bytes);
}

FileResult readFileFrom(const std::string& path, size_t start, std::vector<uint8_t>& bytes)
{
    return readUpTo(path, start, SSIZE_MAX, bytes);
}

FileResult readPipe(const std::string& path, size_t limit, const std::function<bool()>& stops,
                    std::vector<uint8_t>& bytes)
{
    constexpr size_t guess = 1 << 16;
    bytes.clear();
    OpenFile pipe(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)); // not to wait for the writer here
    if (pipe.descriptor < 0)
        return FileResult::cannotOpen;
    size_t used = 0;
    while (makeRoom(bytes, used, limit, guess)) {
        if (!waitForBytes(pipe.descriptor, stops))
            return FileResult::readFailed;
        ssize_t count = ::read(pipe.descriptor, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            return FileResult::readFailed;
        if (count == 0)
            break;
        used += static_cast<size_t>(std::max<ssize_t>(count, 0));
    }
    bytes.resize(used);
    return FileResult::ok;
}

FileResult replaceFile(const std::string& path, const MakePieces& make, Flush flush)
{
    struct stat status;
    bool found = ::stat(path.c_str(), &status) == 0;
    FileType type = found ? typeOf(status.st_mode) : FileType::nothing;
    if (type == FileType::folder || type == FileType::pipe || (found && ::access(path.c_str(), W_OK) != 0))
        return FileResult::cannotOpen;
    if (type == FileType::device)
        return writeStraight(path, make);
    std::string target = behindLinks(path);
    return target.empty() ? FileResult::cannotOpen : writeNeighbour(target, found ? &status : nullptr, make, flush);
}

void flushVolumeOf(const std::string& folder)
{
    OpenFile open(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (open.descriptor >= 0)
        ::syncfs(open.descriptor);
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

std::optional<FileStamp> fileStamp(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return {};
    constexpr int64_t second = 1'000'000'000; // ns
    return FileStamp{static_cast<uint64_t>(status.st_size), status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
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
