// How a report reaches its pane: lines are appended to one local text, and that is handed over in large pieces, since a
// pane costs more for each call than for each character. And names by index.
#pragma once

#include "core/screens.h"

#include <span>
#include <string>
#include <vector>

namespace torvane {

// Appends the gathered text to the pane and empties it.
void handOver(Screens& screens, Pane pane, std::string& text);

// The same, once the text has grown to a large piece (64 KB). For tables that can have 100,000 rows.
void handOverWhenLarge(Screens& screens, Pane pane, std::string& text);

// The same for a text that goes on its way while it is made. False when no more of it is wanted.
bool tellWhenLarge(const TakeText& take, std::string& text);

// What a reader has to know of an answer, or of a track, each in a line of its own. Nothing where there is nothing.
void appendNotes(std::string& text, const char* ofWhat, const std::vector<std::string>& notes);

// The name of a choice; empty for an index outside the list.
const char* nameAt(std::span<const char* const> names, int index);

} // namespace torvane
