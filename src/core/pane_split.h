// Two panes one above the other in a window: where they meet.
#pragma once

#include <algorithm>

namespace torvane {

constexpr int firstUpperHeight = 150; // pixels of an ordinary display, until the user moves it

// Height of the upper pane that is wanted so high, in a room: both panes keep a least height as long as there is room
// for both, and nothing is negative.
constexpr int upperPaneHeight(int wanted, int room, int least)
{
    return std::clamp(wanted, std::min(least, std::max(room, 0) / 2), std::max(room - least, std::max(room, 0) / 2));
}

} // namespace torvane
