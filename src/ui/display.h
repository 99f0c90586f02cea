// Lengths in units of the display: a program that says nothing of resolutions is told 96 dots an inch and scaled by the
// system, but where the system leaves that alone its texts grow and its lengths must follow.
#pragma once

namespace torvane {

// Dots an inch, 96 on an ordinary display.
int displayDots();

// A length that is given for an ordinary display, in pixels of this one.
int scaled(int pixels);

// The other way: what a length of this display is on an ordinary one.
int unscaled(int pixels);

} // namespace torvane
