// Screens that keep what they are told, for tests of what commands and reports show. One at a time; the screens are
// put back at its end.
#pragma once

#include "core/screens.h"

#include <string>
#include <utility>
#include <vector>

namespace torvane {

struct CapturedScreens {
    CapturedScreens() : before(theScreens)
    {
        current = this;
        theScreens.setText = [](Pane pane, std::string_view text) { current->paneOf(pane) = text; };
        theScreens.appendText = [](Pane pane, std::string_view text) {
            current->paneOf(pane) += text;
            current->pieces.emplace_back(text.size());
        };
        theScreens.setStatus = [](std::string_view text) { current->status = text; };
        theScreens.setProgress = [](int percent) { current->progress.push_back(percent); };
        theScreens.showMessage = [](std::string_view title, std::string_view text) {
            current->messages.emplace_back(title, text);
        };
    }
    ~CapturedScreens()
    {
        theScreens = before;
        current = nullptr;
    }
    CapturedScreens(const CapturedScreens&) = delete;
    CapturedScreens& operator=(const CapturedScreens&) = delete;

    std::string& paneOf(Pane pane)
    {
        return pane == Pane::upper ? upper : lower;
    }

    std::string upper, lower, status;
    std::vector<size_t> pieces; // size of each append
    std::vector<int> progress;
    std::vector<std::pair<std::string, std::string>> messages;

private:
    Screens before;
    static inline CapturedScreens* current = nullptr;
};

} // namespace torvane
