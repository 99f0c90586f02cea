// Whole files in and out. Paths are UTF-8 on every platform.
// A file is written to a neighbour and renamed into place: whatever happens in between, the path holds the old file or
// the new one.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace torvane {

enum class FileResult {
    ok,
    cannotOpen,  // missing, a folder, or not readable; for writing: no folder, or no right to write there
    readFailed,  // opened, but the bytes could not be had
    writeFailed, // disk full or the device failed; the old file stands
};

// What a path leads to, over links.
enum class FileType {
    nothing, // or a link to nothing
    file,
    folder,
    device,
    pipe, // a FIFO or a socket
};
FileType fileType(const std::string& path);

// Reads a file whole into bytes, whatever its size. Devices and pipes, which may never end or be read but once, cannot
// be opened by this and the next two.
FileResult readWholeFile(const std::string& path, std::vector<uint8_t>& bytes);

// Reads at most limit bytes from the start of a file.
FileResult readFileStart(const std::string& path, size_t limit, std::vector<uint8_t>& bytes);

// Reads at most limit bytes behind the first `start`; nothing where there are no more.
FileResult readFilePart(const std::string& path, size_t start, size_t limit, std::vector<uint8_t>& bytes);

// What stands behind the first `start` bytes; nothing where there are no more.
FileResult readFileFrom(const std::string& path, size_t start, std::vector<uint8_t>& bytes);

// Reads a pipe to its end, at most limit bytes. Its writer may never come: `stops` is asked now and then whether to
// give up, which is a readFailed. On Windows, where no pipe has a place among the files, none can be opened.
FileResult readPipe(const std::string& path, size_t limit, const std::function<bool()>& stops,
                    std::vector<uint8_t>& bytes);

// Takes the next piece of a file; false when it could not be written.
using WritePiece = std::function<bool(std::span<const uint8_t>)>;

// When a file that was written is safe from a failure of the power: a wait of milliseconds for the disk.
enum class Flush {
    each,   // before it takes its place
    byOwner // the caller flushes the folder once many files are there, and counts none of them before
};

// Creates or replaces a file with the pieces that `make` hands over, one behind the other: a file that need not be in
// memory as a whole. While make runs the old file still stands, and it stays when make answers false.
FileResult replaceFile(const std::string& path, const std::function<bool(const WritePiece&)>& make,
                       Flush flush = Flush::each);

// The same with pieces that are there.
inline FileResult replaceFile(const std::string& path, std::initializer_list<std::span<const uint8_t>> pieces,
                              Flush flush = Flush::each)
{
    return replaceFile(
        path, [&](const WritePiece& write) { return std::ranges::all_of(pieces, write); }, flush);
}

// What was written to the volume of a folder is on its disk. On Windows each file has been flushed before.
void flushVolumeOf(const std::string& folder);

// Anything at this path, a folder as well.
inline bool fileExists(const std::string& path)
{
    return fileType(path) != FileType::nothing;
}
inline bool folderExists(const std::string& path)
{
    return fileType(path) == FileType::folder;
}

// What a file is to its system, whatever its names are: hard links share it.
using FileIdentity = std::pair<uint64_t, uint64_t>;                // the volume, and the number on it
std::optional<FileIdentity> fileIdentity(const std::string& path); // none: nothing is there
// Whether two paths lead to one file that exists, however they are spelled.
inline bool isSameFile(const std::string& a, const std::string& b)
{
    std::optional<FileIdentity> identity = fileIdentity(a);
    return identity && identity == fileIdentity(b);
}

// Size and time of the last change: what changes with a file's content, short of reading it.
struct FileStamp {
    uint64_t size = 0;
    int64_t time = 0; // ns since 1970
    bool operator==(const FileStamp&) const = default;
};
std::optional<FileStamp> fileStamp(const std::string& path); // none: nothing is there

// Gives a file another name in its folder; false when that failed.
bool renameFile(const std::string& from, const std::string& to);

// The path made absolute against the present folder, by the platform's own rules; unchanged when that fails.
std::string absolutePath(const std::string& path);
// Folder of the running program, ending in a separator.
std::string programFolder();

} // namespace torvane
