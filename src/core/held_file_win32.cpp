#include "core/held_file.h"
#include "core/wide_text.h"

#include <windows.h>

namespace torvane {

namespace {

HANDLE handleOf(intptr_t number)
{
    return reinterpret_cast<HANDLE>(number);
}

} // namespace

HeldFile::~HeldFile()
{
    if (handleOf(handle) != INVALID_HANDLE_VALUE)
        CloseHandle(handleOf(handle));
}

HeldFile::State HeldFile::open(const std::string& path)
{
    HANDLE file = CreateFileW(widen(absolutePath(path)).c_str(), FILE_APPEND_DATA | GENERIC_READ, FILE_SHARE_READ,
                              nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    handle = reinterpret_cast<intptr_t>(file);
    if (file != INVALID_HANDLE_VALUE)
        return State::open;
    return GetLastError() == ERROR_SHARING_VIOLATION ? State::held : State::cannotOpen;
}

bool HeldFile::read(uint64_t start, size_t limit, std::string& text) const
{
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(start);
    place.OffsetHigh = static_cast<DWORD>(start >> 32);
    text.resize(limit);
    DWORD count = 0;
    bool read = ReadFile(handleOf(handle), text.data(), static_cast<DWORD>(limit), &count, &place) ||
                GetLastError() == ERROR_HANDLE_EOF;
    text.resize(count);
    return read;
}

bool HeldFile::append(std::string_view text)
{
    DWORD written = 0;
    return WriteFile(handleOf(handle), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
           written == text.size() && FlushFileBuffers(handleOf(handle));
}

} // namespace torvane
