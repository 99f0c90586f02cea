// The prompts for file names. Each shows the system's dialog and, when confirmed, leaves the chosen path in UTF-8.
#pragma once

#include "forms/form.h"
#include "ui/win32.h"

#include <string>

namespace torvane {

// True when the user confirmed; path keeps its value otherwise. A path brought along is offered.
bool promptOpenFit(HWND owner, std::string& path);
bool promptSaveFit(HWND owner, std::string& path);
bool promptSaveCsv(HWND owner, std::string& path);
bool promptSavePicture(HWND owner, std::string& path); // ".png" or ".svg"
bool promptSavePage(HWND owner, std::string& path);
bool promptOpenProfile(HWND owner, std::string& path);
bool promptSaveProfile(HWND owner, std::string& path);

// The prompt of a form's browse button.
bool promptBrowse(HWND owner, Browse browse, std::string& path);

// Texts of a pane: filter is 1 for rich text, 2 for plain text, and takes the filter that the user chose.
bool promptSaveText(HWND owner, std::string& path, DWORD& filter);
bool promptOpenText(HWND owner, std::string& path, DWORD& filter);

} // namespace torvane
