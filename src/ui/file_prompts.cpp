// The system's open and save dialogs.
#include "ui/file_prompts.h"

#include "command/recent_files.h"
#include "core/file_kind.h"
#include "core/wide_text.h"
#include "ui/main_window.h"
#include "ui/path_guard.h"

#include <cwchar>
#include <string_view>

namespace torvane {

namespace {

struct Prompt {
    const wchar_t* filter; // pairs of label and pattern, each closed by a 0
    const wchar_t* title;  // null: the system's own
    const wchar_t* extension;
    DWORD flags;
    bool saves;
    std::string_view use; // by which its last folder is kept
};

constexpr wchar_t fitFilter[] = L"fit file(*.fit)\0*.fit\0all files (*.*)\0*.*\0";
constexpr wchar_t rideFilter[] = L"ride (*.fit, *.gpx, *.tcx)\0*.fit;*.gpx;*.tcx;*.gz\0all files (*.*)\0*.*\0";
constexpr wchar_t courseFilter[] = L"course(*.fit *.gpx)\0*.fit;*.gpx\0all files (*.*)\0*.*\0";
constexpr wchar_t csvFilter[] = L"csv file(*.csv)\0*.csv\0all files (*.*)\0*.*\0";
constexpr wchar_t pictureFilter[] = L"picture (*.png)\0*.png\0scalable picture (*.svg)\0*.svg\0";
constexpr wchar_t pageFilter[] = L"page (*.html)\0*.html\0";
constexpr wchar_t profileFilter[] = L"profile file (*.pro)\0*.pro\0";
constexpr wchar_t textFilter[] = L"rich text format (*.rtf)\0 *.rtf\0plane text (*.txt)\0 *.txt\0";

constexpr DWORD openFlags = OFN_HIDEREADONLY | OFN_FILEMUSTEXIST;
constexpr DWORD saveFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT;

constexpr Prompt openFit = {fitFilter, L"open file selected", nullptr, openFlags, false, "Fit"};
constexpr Prompt openRide = {rideFilter, L"open file selected", nullptr, openFlags, false, "Ride"};
// The default extension has always been "tcx", whatever is saved.
constexpr Prompt saveFit = {fitFilter, L"save file as ...", L"tcx", saveFlags, true, "SavedFit"};
constexpr Prompt saveCsv = {csvFilter, L"save file as ...", L"tcx", saveFlags, true, "Table"};
constexpr Prompt savePicture = {pictureFilter, nullptr, L"png", saveFlags | OFN_PATHMUSTEXIST, true, "Picture"};
constexpr Prompt savePage = {pageFilter, nullptr, L"html", saveFlags | OFN_PATHMUSTEXIST, true, "Page"};
constexpr Prompt saveCourse = {courseFilter, L"save file as ...", L"fit", saveFlags, true, "Course"};
constexpr Prompt openProfile = {profileFilter, nullptr, L"pro", openFlags, false, "Profile"};
constexpr Prompt saveProfile = {profileFilter, nullptr, L"pro", saveFlags, true, "Profile"};
constexpr Prompt openText = {textFilter, nullptr, L"rtf", OFN_HIDEREADONLY | OFN_PATHMUSTEXIST, false, "Text"};
constexpr Prompt saveText = {textFilter, nullptr, L"rtf", saveFlags | OFN_PATHMUSTEXIST, true, "Text"};

bool run(HWND owner, const Prompt& prompt, std::string& path, DWORD* filter)
{
    wchar_t buffer[promptCapacity] = {};
    std::wstring offered = widen(path);
    if (offered.size() < promptCapacity)
        wcscpy(buffer, offered.c_str());
    EntryFile& kept = mainWindow.session.kept;
    std::wstring folder = widen(keptFolder(kept, prompt.use));
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = prompt.filter;
    dialog.nFilterIndex = filter != nullptr && *filter != 0 ? *filter : 1;
    dialog.lpstrFile = buffer;
    dialog.nMaxFile = promptCapacity;
    dialog.lpstrInitialDir = path.empty() && !folder.empty() ? folder.c_str() : nullptr;
    dialog.lpstrTitle = prompt.title;
    dialog.lpstrDefExt = prompt.extension;
    dialog.Flags = prompt.flags | OFN_NOCHANGEDIR;
    PathGuard guard;
    if (!(prompt.saves ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog)))
        return false;
    path = narrow(buffer);
    keepFolderOf(kept, prompt.use, path);
    if (filter != nullptr)
        *filter = dialog.nFilterIndex;
    return true;
}

} // namespace

bool promptOpenFit(HWND owner, std::string& path)
{
    return run(owner, openFit, path, nullptr);
}

bool promptSaveFit(HWND owner, std::string& path)
{
    return run(owner, saveFit, path, nullptr);
}

bool promptSaveCsv(HWND owner, std::string& path)
{
    return run(owner, saveCsv, path, nullptr);
}

bool promptSavePicture(HWND owner, std::string& path)
{
    constexpr DWORD scalable = 2; // filter
    DWORD filter = 0;
    if (!run(owner, savePicture, path, &filter))
        return false;
    if (filter != scalable || !path.ends_with(".png"))
        return true;
    path.replace(path.size() - 4, 4, ".svg"); // the default extension was put behind the name
    return fileKind(path) == FileKind::nothing || run(owner, savePicture, path, &filter);
}

bool promptSavePage(HWND owner, std::string& path)
{
    return run(owner, savePage, path, nullptr);
}

bool promptOpenProfile(HWND owner, std::string& path)
{
    return run(owner, openProfile, path, nullptr);
}

bool promptSaveProfile(HWND owner, std::string& path)
{
    return run(owner, saveProfile, path, nullptr);
}

bool promptBrowse(HWND owner, Browse browse, std::string& path)
{
    switch (browse) {
    case Browse::openFit:
        return promptOpenFit(owner, path);
    case Browse::openRide:
        return run(owner, openRide, path, nullptr);
    case Browse::saveFit:
        return promptSaveFit(owner, path);
    case Browse::saveCsv:
        return promptSaveCsv(owner, path);
    case Browse::saveProfile:
        return promptSaveProfile(owner, path);
    case Browse::saveCourse:
        return run(owner, saveCourse, path, nullptr);
    case Browse::none:
        break;
    }
    return false;
}

bool promptSaveText(HWND owner, std::string& path, DWORD& filter)
{
    return run(owner, saveText, path, &filter);
}

bool promptOpenText(HWND owner, std::string& path, DWORD& filter)
{
    return run(owner, openText, path, &filter);
}

} // namespace torvane
