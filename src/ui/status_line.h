// What the status bar says. While commands wait, their text stands there instead of the status and the progress bar,
// which would cover it; the status comes back afterwards. Window thread only.
#pragma once

#include <string_view>

namespace torvane {

void setStatusLine(std::string_view status);
void showStatusProgress(bool visible);
void setStatusProgress(int percent);
bool isProgressShown();
// What the highlighted entry of the menu does; empty: no entry. Before all else.
void setHintLine(std::string_view hint);
// What holds only while a dialog is open or a command runs; empty: neither any more. Before the status and what waits.
void setNoticeLine(std::string_view notice);
// Empty: none waits any more.
void setWaitingLine(std::string_view waiting);

} // namespace torvane
