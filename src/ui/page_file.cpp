#include "ui/page_file.h"

#include "core/files.h"
#include "core/shown_text.h"
#include "core/wide_text.h"
#include "ui/file_prompts.h"
#include "ui/main_window.h"
#include "ui/message_box.h"

#include <shellapi.h>

#include <cstdint>
#include <span>
#include <string>

namespace torvane {

void showPage(HWND owner)
{
    // The prompt lets other commands run meanwhile, and their answers have pages of their own.
    std::string page = mainWindow.session.page;
    std::string path;
    if (page.empty() || !promptSavePage(owner, path))
        return;
    std::span<const uint8_t> bytes(reinterpret_cast<const uint8_t*>(page.data()), page.size());
    if (replaceFile(path, {bytes}) != FileResult::ok)
        return showMessageBox(owner, "error", "failed to write a file '" + shownText(path) + "'");
    ShellExecuteW(owner, L"open", widen(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

} // namespace torvane
