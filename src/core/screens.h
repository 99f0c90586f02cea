// The seam to the front end: where text, progress and questions go. Set once by the front end before any command runs;
// every call may come from the worker thread, and the front end brings it to its own.
// Nothing below the front ends knows another way out.
#pragma once

#include <string_view>

namespace torvane {

enum class Pane { upper, lower };

struct Screens {
    // Replaces the text of a pane; an empty text clears it.
    void (*setText)(Pane pane, std::string_view text);
    // Appends to a pane. A front end may gather the pieces; it hands over all of them before a command is seen to end
    // and before a setText to the same pane.
    void (*appendText)(Pane pane, std::string_view text);
    void (*setStatus)(std::string_view text);
    void (*showProgress)(bool visible);
    void (*setProgress)(int percent); // 0 to 100
    void (*showMessage)(std::string_view title, std::string_view text);
};

// Does nothing until a front end fills it in; never holds a null pointer.
extern Screens screens;

// Passes progress on to the screens when its whole percentage has changed since the last call.
void reportProgress(int percent);
// Shows the bar at 0, or hides it.
void beginProgress();
void endProgress();

// Position of a value on the way from low to high, as a whole percentage; anything that is no number, or leads out of
// 0 to 100, is held at the nearer end.
int progressPercent(double low, double high, double present);

} // namespace torvane
