// The text of a pane until it is printed: what is there, and between it long parts that are made only on their way out.
#pragma once

#include "core/screens.h"

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace torvane {

class PaneText {
public:
    // In place of all that was there.
    void set(std::string_view text)
    {
        parts.clear();
        append(text);
    }
    void append(std::string_view text);
    void append(TextMaker maker)
    {
        parts.emplace_back(std::move(maker));
    }
    void clear()
    {
        parts.clear();
    }
    bool isEmpty() const
    {
        return parts.empty();
    }
    // Ends the last line where it is open.
    void endLine();
    // Piece by piece, until `take` wants no more.
    void tell(const TakeText& take) const;
    // As a whole.
    std::string text() const;
    // Of what is there, bytes.
    size_t size() const;

private:
    std::vector<std::variant<std::string, TextMaker>> parts = {};
};

} // namespace torvane
