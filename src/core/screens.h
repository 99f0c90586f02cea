// The seam to the front end: where text, progress and questions go. Set by the front end before any command of its
// session runs; every call may come from the worker thread, and the front end brings it to its own. Nothing below the
// front ends knows another way out.
#pragma once

#include "core/stop_request.h"

#include <functional>
#include <string_view>

namespace torvane {

enum class Pane { upper, lower };

// Takes the next piece of a text; false when no more of it is wanted.
using TakeText = std::function<bool(std::string_view)>;
// A long text that is made anew whenever it is told; owns what it is made from.
using TextMaker = std::function<void(const TakeText& take)>;

// Each call does nothing until the front end fills it in.
struct Screens {
    // Replaces the text of a pane; an empty text clears it.
    std::function<void(Pane pane, std::string_view text)> setText = [](Pane, std::string_view) {};
    // Appends to a pane. A front end may gather the pieces; it hands over all of them before a command is seen to end
    // and before a setText to the same pane.
    std::function<void(Pane pane, std::string_view text)> appendText = [](Pane, std::string_view) {};
    // Likewise a long text, which is in no memory as a whole where the front end tells it only on its way out. Null: it
    // is made at once and goes by appendText.
    std::function<void(Pane pane, TextMaker maker)> appendMade = nullptr;
    std::function<void(std::string_view text)> setStatus = [](std::string_view) {};
    std::function<void(bool visible)> showProgress = [](bool) {};
    std::function<void(int percent)> setProgress = [](int) {}; // 0 to 100
    std::function<void(std::string_view title, std::string_view text)> showMessage = [](std::string_view,
                                                                                        std::string_view) {};
    // A remark beside an answer, a sentence: what was mended or is doubtful. It stands in the answer's text as well, so
    // a front end may do without it; the console writes it to standard error.
    std::function<void(std::string_view text)> tellNote = [](std::string_view) {};
    // By which the front end stops what runs; it outlives that. Null: nobody does.
    const StopRequest* stop = nullptr;
};

} // namespace torvane
