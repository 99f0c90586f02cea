#include "report/report_text.h"

#include "core/text.h"

namespace torvane {

namespace {

constexpr size_t largePiece = 64 * 1024;

} // namespace

void handOver(Screens& screens, Pane pane, std::string& text)
{
    if (!text.empty()) {
        screens.appendText(pane, text);
        text.clear();
    }
}

void handOverWhenLarge(Screens& screens, Pane pane, std::string& text)
{
    if (text.size() >= largePiece)
        handOver(screens, pane, text);
}

bool tellWhenLarge(const TakeText& take, std::string& text)
{
    if (text.size() < largePiece)
        return true;
    bool wanted = take(text);
    text.clear();
    return wanted;
}

void appendNotes(std::string& text, const char* ofWhat, const std::vector<std::string>& notes)
{
    if (!notes.empty())
        appendFormat(text, "\n to be known of this %s\n\n", ofWhat);
    for (const std::string& note : notes)
        appendFormat(text, "\t%s\n", note.c_str());
}

const char* nameAt(std::span<const char* const> names, int index)
{
    return index >= 0 && static_cast<size_t>(index) < names.size() ? names[static_cast<size_t>(index)] : "";
}

} // namespace torvane
