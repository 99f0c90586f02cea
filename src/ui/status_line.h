// What the status bar says. While commands wait, their text stands there instead of the status and the progress bar,
// which would cover it; the status comes back afterwards. Window thread only.
#pragma once

#include <string_view>

namespace torvane {

void setStatusLine(std::string_view status);
void showStatusProgress(bool visible);
void setStatusProgress(int percent);
bool isProgressShown();
// Empty: none waits any more.
// What the highlighted entry of the menu does; empty: no entry. Before all else.
void setHintLine(std::string_view hint);
void setWaitingLine(std::string_view waiting);

} // namespace torvane
