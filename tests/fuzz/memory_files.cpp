// The file operations of the core without a disk: files live in a table, all in one folder. Linked in front of the
// engine it takes the place of the platform's own, so that a hostile input runs through everything above it thousands
// of times a second and reaches nothing of the machine it runs on.
#include "memory_files.h"

#include "core/files.h"

#include <algorithm>
#include <mutex>

namespace torvane {

std::map<std::string, Bytes> memoryFiles;

namespace {

std::mutex guard; // the rides of a batch are on several threads

FileResult readPart(const std::string& path, size_t start, size_t limit, std::vector<uint8_t>& bytes)
{
    std::lock_guard lock(guard);
    bytes.clear();
    auto found = memoryFiles.find(path);
    if (found == memoryFiles.end())
        return FileResult::cannotOpen;
    std::span<const uint8_t> whole = found->second;
    std::span<const uint8_t> part = whole.subspan(std::min(start, whole.size()));
    part = part.first(std::min(limit, part.size()));
    bytes.assign(part.begin(), part.end());
    return FileResult::ok;
}

} // namespace

FileResult readWholeFile(const std::string& path, std::vector<uint8_t>& bytes)
{
    return readPart(path, 0, SIZE_MAX, bytes);
}

FileResult readFileStart(const std::string& path, size_t limit, std::vector<uint8_t>& bytes)
{
    return readPart(path, 0, limit, bytes);
}

FileResult readFileFrom(const std::string& path, size_t start, std::vector<uint8_t>& bytes)
{
    return readPart(path, start, SIZE_MAX, bytes);
}

FileResult readFilePart(const std::string& path, size_t start, size_t limit, std::vector<uint8_t>& bytes)
{
    return readPart(path, start, limit, bytes);
}

FileResult readPipe(const std::string&, size_t, const std::function<bool()>&, std::vector<uint8_t>&)
{
    return FileResult::cannotOpen;
}

FileResult replaceFile(const std::string& path, const std::function<bool(const WritePiece&)>& make, Flush)
{
    if (!path.starts_with(memoryFolder) || path.size() == memoryFolder.size() ||
        path.find('/', memoryFolder.size()) != path.npos)
        return FileResult::cannotOpen;
    Bytes whole;
    auto append = [&](std::span<const uint8_t> piece) {
        whole.insert(whole.end(), piece.begin(), piece.end());
        return true;
    };
    if (!make(append))
        return FileResult::writeFailed;
    std::lock_guard lock(guard);
    memoryFiles[path] = std::move(whole);
    return FileResult::ok;
}

FileType fileType(const std::string& path)
{
    if (path == memoryFolder || path + "/" == memoryFolder || path == "/")
        return FileType::folder;
    std::lock_guard lock(guard);
    return memoryFiles.contains(path) ? FileType::file : FileType::nothing;
}

std::optional<FileIdentity> fileIdentity(const std::string& path)
{
    std::lock_guard lock(guard);
    auto found = memoryFiles.find(path);
    if (found == memoryFiles.end())
        return {};
    return FileIdentity{0, reinterpret_cast<uintptr_t>(&*found)};
}

std::optional<FileStamp> fileStamp(const std::string& path)
{
    std::lock_guard lock(guard);
    auto found = memoryFiles.find(path);
    if (found == memoryFiles.end())
        return {};
    return FileStamp{found->second.size(), 0};
}

void flushVolumeOf(const std::string&) {}

bool renameFile(const std::string& from, const std::string& to)
{
    std::lock_guard lock(guard);
    auto node = memoryFiles.extract(from);
    if (node.empty())
        return false;
    memoryFiles[to] = std::move(node.mapped());
    return true;
}

std::string absolutePath(const std::string& path)
{
    return path.empty() || path[0] == '/' ? path : std::string(memoryFolder) + path;
}

std::string programFolder()
{
    return std::string(memoryFolder);
}

} // namespace torvane
