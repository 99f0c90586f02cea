#include "cli/platform.h"

#include "core/wide_text.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace torvane {

namespace {

// The shell of Windows leaves it to each program to expand wildcards of file names. One that nothing matches stays.
void addExpanded(std::vector<std::string>& arguments, const std::wstring& pattern)
{
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW(pattern.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        arguments.push_back(narrow(pattern));
        return;
    }
    std::wstring folder = pattern.substr(0, pattern.find_last_of(L"\\/:") + 1);
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            arguments.push_back(narrow(folder + found.cFileName));
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

} // namespace

std::vector<std::string> commandLine(int, char**)
{
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; values && i < count; ++i) {
        std::wstring value = values[i];
        bool wild = value.find_first_of(L"*?") != value.npos && value.find(L'=') == value.npos;
        if (wild)
            addExpanded(arguments, value);
        else
            arguments.push_back(narrow(value));
    }
    LocalFree(values);
    return arguments;
}

void prepareStreams()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

void keepFreedMemory() {} // as the system's heap does by itself

bool isInteractive()
{
    return _isatty(_fileno(stderr));
}

} // namespace torvane
