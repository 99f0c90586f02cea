// Screens that keep what they are told, for tests of what commands and reports show; a failed look into it shows both.
#pragma once

#include "core/screens.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace torvane {

inline testing::AssertionResult contains(const std::string& text, const std::string& part)
{
    return testing::AssertionResult(text.find(part) != text.npos) << "'" << part << "' in " << text;
}

struct CapturedScreens {
    CapturedScreens()
    {
        screens.setText = [this](Pane pane, std::string_view text) { paneOf(pane) = text; };
        screens.appendText = [this](Pane pane, std::string_view text) {
            paneOf(pane) += text;
            pieces.emplace_back(text.size());
        };
        screens.setStatus = [this](std::string_view text) { status = text; };
        screens.setProgress = [this](int percent) { progress.push_back(percent); };
        screens.showMessage = [this](std::string_view title, std::string_view text) {
            messages.emplace_back(title, text);
        };
    }
    CapturedScreens(const CapturedScreens&) = delete;
    CapturedScreens& operator=(const CapturedScreens&) = delete;

    std::string& paneOf(Pane pane)
    {
        return pane == Pane::upper ? upper : lower;
    }

    Screens screens;
    std::string upper, lower, status;
    std::vector<size_t> pieces; // size of each append
    std::vector<int> progress;
    std::vector<std::pair<std::string, std::string>> messages;
};

} // namespace torvane
