// Files by Win32 calls. Names go over as UTF-16, and in the long form, so that any script and 300 characters work.
#include "core/files.h"
#include "core/wide_text.h"

#include <windows.h>

#include <algorithm>
#include <atomic>

namespace torvane {

namespace {

// Closes on every way out.
struct OpenFile {
    explicit OpenFile(HANDLE openHandle) : handle(openHandle) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile()
    {
        close();
    }
    void close()
    {
        if (isOpen())
            CloseHandle(handle);
        handle = INVALID_HANDLE_VALUE;
    }
    bool isOpen() const
    {
        return handle != INVALID_HANDLE_VALUE;
    }
    HANDLE handle;
};

std::wstring fullPath(const std::string& path)
{
    std::wstring wide = widen(path);
    DWORD length = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    if (length == 0)
        return wide;
    std::wstring full(length, L'\0');
    full.resize(GetFullPathNameW(wide.c_str(), length, full.data(), nullptr));
    return full;
}

// The form without the limit of 260 characters.
std::wstring longPath(const std::string& path)
{
    std::wstring full = fullPath(path);
    if (full.compare(0, 4, L"\\\\?\\") == 0 || full.compare(0, 4, L"\\\\.\\") == 0)
        return full;
    if (full.compare(0, 2, L"\\\\") == 0)
        return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

bool writePiece(HANDLE file, std::span<const uint8_t> piece)
{
    constexpr size_t most = 1 << 30;
    while (!piece.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, piece.data(), static_cast<DWORD>(std::min(piece.size(), most)), &written, nullptr) ||
            written == 0)
            return false;
        piece = piece.subspan(written);
    }
    return true;
}

FileResult readUpTo(const std::string& path, size_t start, size_t limit, std::vector<uint8_t>& bytes)
{
    bytes.clear();
    if (fileType(path) != FileType::file)
        return FileResult::cannotOpen;
    OpenFile file(CreateFileW(longPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size;
    if (!file.isOpen() || !GetFileSizeEx(file.handle, &size))
        return FileResult::cannotOpen;
    size_t behindStart = static_cast<size_t>(size.QuadPart) - std::min(start, static_cast<size_t>(size.QuadPart));
    LARGE_INTEGER from;
    from.QuadPart = static_cast<LONGLONG>(start);
    if (start != 0 && !SetFilePointerEx(file.handle, from, nullptr, FILE_BEGIN))
        return FileResult::readFailed;
    bytes.resize(std::min(limit, behindStart));
    size_t used = 0;
    while (used < bytes.size()) {
        DWORD count = 0;
        DWORD wanted = static_cast<DWORD>(std::min(bytes.size() - used, static_cast<size_t>(1) << 30));
        if (!ReadFile(file.handle, bytes.data() + used, wanted, &count, nullptr))
            return FileResult::readFailed;
        if (count == 0)
            break;
        used += count;
    }
    bytes.resize(used);
    return FileResult::ok;
}

DWORD attributesOf(const std::string& path)
{
    return GetFileAttributesW(longPath(path).c_str());
}

// To ask what a path leads to, without any right to read it.
HANDLE openToAsk(const std::string& path)
{
    return CreateFileW(longPath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

FileType typeOf(DWORD attributes)
{
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return FileType::nothing;
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? FileType::folder : FileType::file;
}

// The path behind links to a file that is there.
std::wstring behindLinks(const std::string& path)
{
    OpenFile file(openToAsk(path));
    DWORD length = file.isOpen() ? GetFinalPathNameByHandleW(file.handle, nullptr, 0, 0) : 0;
    std::wstring target(length, L'\0');
    target.resize(length ? GetFinalPathNameByHandleW(file.handle, target.data(), length, 0) : 0);
    return target.empty() ? longPath(path) : target;
}

// What a new file takes over from the one that it replaces.
DWORD keptAttributes(DWORD replaced)
{
    constexpr DWORD kept =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    return replaced == INVALID_FILE_ATTRIBUTES || !(replaced & kept) ? FILE_ATTRIBUTE_NORMAL : replaced & kept;
}

HANDLE createBeside(const std::wstring& target, DWORD attributes, std::wstring& path)
{
    static std::atomic<unsigned> serial = 0;
    std::wstring stem =
        target.substr(0, target.find_last_of(L'\\') + 1) + L".torvane-" + std::to_wstring(GetCurrentProcessId()) + L"-";
    HANDLE handle = INVALID_HANDLE_VALUE;
    do {
        path = stem + std::to_wstring(++serial);
        handle = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr);
    } while (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS);
    return handle;
}

// A file beside its target under a name that nobody has. It goes with its owner, whatever ends that one, unless it has
// taken the target's place.
class Neighbour {
public:
    Neighbour(const std::wstring& target, DWORD attributes) : file(createBeside(target, attributes, path)) {}
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;
    ~Neighbour()
    {
        file.close();
        if (stands)
            DeleteFileW(path.c_str());
    }
    bool isOpen() const
    {
        return stands;
    }
    HANDLE handle() const
    {
        return file.handle;
    }
    bool takePlaceOf(const std::wstring& target)
    {
        file.close();
        stands = !MoveFileExW(path.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
        return !stands;
    }

private:
    std::wstring path;
    OpenFile file;
    bool stands = file.isOpen();
};

} // namespace

FileResult readWholeFile(const std::string& path, std::vector<uint8_t>& bytes)
{
    return readUpTo(path, 0, SIZE_MAX, bytes);
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
    return readUpTo(path, start, SIZE_MAX, bytes);
}

FileResult readPipe(const std::string&, size_t, const std::function<bool()>&, std::vector<uint8_t>&)
{
    return FileResult::cannotOpen;
}

FileResult replaceFile(const std::string& path, const std::function<bool(const WritePiece&)>& make, Flush)
{
    FileType type = fileType(path);
    DWORD attributes = attributesOf(path);
    bool locked = type == FileType::file && (attributes & FILE_ATTRIBUTE_READONLY);
    if (path.empty() || locked || (type != FileType::file && type != FileType::nothing))
        return FileResult::cannotOpen;
    std::wstring target = behindLinks(path);
    Neighbour neighbour(target, keptAttributes(attributes));
    if (!neighbour.isOpen())
        return FileResult::cannotOpen;
    bool made = make([&](std::span<const uint8_t> piece) { return writePiece(neighbour.handle(), piece); });
    bool written = made && FlushFileBuffers(neighbour.handle());
    return written && neighbour.takePlaceOf(target) ? FileResult::ok : FileResult::writeFailed;
}

void flushVolumeOf(const std::string&) {} // only an administrator may

FileType fileType(const std::string& path)
{
    if (path.empty())
        return FileType::nothing;
    OpenFile file(openToAsk(path));
    switch (file.isOpen() ? GetFileType(file.handle) : FILE_TYPE_DISK) {
    case FILE_TYPE_CHAR:
        return FileType::device;
    case FILE_TYPE_PIPE:
        return FileType::pipe;
    default:
        return typeOf(attributesOf(path));
    }
}

std::optional<FileIdentity> fileIdentity(const std::string& path)
{
    OpenFile file(openToAsk(path));
    BY_HANDLE_FILE_INFORMATION known;
    if (!file.isOpen() || !GetFileInformationByHandle(file.handle, &known))
        return {};
    return FileIdentity{known.dwVolumeSerialNumber,
                        static_cast<uint64_t>(known.nFileIndexHigh) << 32 | known.nFileIndexLow};
}

std::optional<FileStamp> fileStamp(const std::string& path)
{
    OpenFile file(openToAsk(path));
    BY_HANDLE_FILE_INFORMATION known;
    if (!file.isOpen() || !GetFileInformationByHandle(file.handle, &known))
        return {};
    constexpr int64_t tick = 100;                            // ns
    constexpr int64_t ticksTo1970 = 116'444'736'000'000'000; // since 1601
    auto joined = [](DWORD high, DWORD low) { return static_cast<uint64_t>(high) << 32 | low; };
    auto ticks =
        static_cast<int64_t>(joined(known.ftLastWriteTime.dwHighDateTime, known.ftLastWriteTime.dwLowDateTime));
    return FileStamp{joined(known.nFileSizeHigh, known.nFileSizeLow), (ticks - ticksTo1970) * tick};
}

bool renameFile(const std::string& from, const std::string& to)
{
    return MoveFileExW(longPath(from).c_str(), longPath(to).c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

std::string absolutePath(const std::string& path)
{
    return path.empty() ? path : narrow(fullPath(path));
}

std::string programFolder()
{
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    return narrow(path.substr(0, path.find_last_of(L'\\') + 1));
}

} // namespace torvane
