#include "cli/pane_text.h"

namespace torvane {

void PaneText::append(std::string_view text)
{
    if (text.empty())
        return;
    if (parts.empty() || !std::holds_alternative<std::string>(parts.back()))
        parts.emplace_back(std::string());
    std::get<std::string>(parts.back()) += text;
}

void PaneText::endLine()
{
    const std::string* last = parts.empty() ? nullptr : std::get_if<std::string>(&parts.back());
    if (last && last->back() != '\n')
        append("\n");
}

void PaneText::tell(const TakeText& take) const
{
    bool wanted = true;
    TakeText pass = [&](std::string_view piece) { return wanted = wanted && take(piece); };
    for (const auto& part : parts) {
        if (!wanted)
            return;
        if (const std::string* text = std::get_if<std::string>(&part))
            pass(*text);
        else
            std::get<TextMaker>(part)(pass);
    }
}

std::string PaneText::text() const
{
    std::string whole;
    tell([&](std::string_view piece) {
        whole += piece;
        return true;
    });
    return whole;
}

size_t PaneText::size() const
{
    size_t bytes = 0;
    for (const auto& part : parts)
        if (const std::string* text = std::get_if<std::string>(&part))
            bytes += text->size();
    return bytes;
}

} // namespace torvane
