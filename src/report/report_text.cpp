#include "report/report_text.h"

namespace torvane {

void handOver(Screens& screens, Pane pane, std::string& text)
{
    if (!text.empty()) {
        screens.appendText(pane, text);
        text.clear();
    }
}

void handOverWhenLarge(Screens& screens, Pane pane, std::string& text)
{
    constexpr size_t largePiece = 64 * 1024;
    if (text.size() >= largePiece)
        handOver(screens, pane, text);
}

const char* nameAt(std::span<const char* const> names, int index)
{
    return index >= 0 && static_cast<size_t>(index) < names.size() ? names[static_cast<size_t>(index)] : "";
}

} // namespace torvane
