#include "ui/parameter_place.h"

#include "core/files.h"
#include "core/parameter_file.h"
#include "core/text.h"
#include "core/wide_text.h"
#include "ui/win32.h"

namespace torvane {

namespace {

// With the stroke behind it; made where it is not there. Empty where the system names none.
std::wstring ownFolder()
{
    std::wstring folder(GetEnvironmentVariableW(L"APPDATA", nullptr, 0), L'\0');
    folder.resize(GetEnvironmentVariableW(L"APPDATA", folder.data(), static_cast<DWORD>(folder.size())));
    if (folder.empty())
        return folder;
    folder += L"\\Torvane";
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder + L"\\";
}

} // namespace

ParameterPlace findParameterPlace()
{
    std::string beside = parameterFilePath();
    ParameterBlock defaults;
    setDefaults(defaults);
    if (fileExists(beside) || writeParameters(beside, defaults))
        return {beside, false};
    std::wstring folder = ownFolder();
    if (folder.empty())
        return {beside, false};
    std::string own = narrow(folder).append(fileName(beside));
    return {own, !fileExists(own)};
}

} // namespace torvane
