// Message boxes over the wide interface.
#include "ui/message_box.h"

#include "core/wide_text.h"

namespace torvane {

void showMessageBox(HWND owner, std::string_view title, std::string_view text)
{
    MessageBoxW(owner, widen(text).c_str(), widen(title).c_str(), MB_OK);
}

void showBoxes(HWND owner, const Verdict& verdict)
{
    for (const Box& box : verdict.boxes)
        showMessageBox(owner, box.title, box.text);
}

} // namespace torvane
