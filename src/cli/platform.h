// What the console program asks of its platform at the start.
#pragma once

#include <string>
#include <vector>

namespace torvane {

// Arguments without the program's name, in UTF-8.
std::vector<std::string> commandLine(int count, char** values);
// Bytes go out as they are written, with no line end changed; a console shows them as UTF-8.
void prepareStreams();
// Standard error is read by a person.
bool isInteractive();

} // namespace torvane
