// What the console program asks of its platform at the start.
#pragma once

#include <string>
#include <vector>

namespace torvane {

// Arguments without the program's name, in UTF-8.
std::vector<std::string> commandLine(int count, char** values);
// Bytes go out as they are written, with no line end changed; a console shows them as UTF-8.
void prepareStreams();
// Memory that one ride of many has given back stays for the next: to have it from the system anew for each takes a
// tenth of the time, and more where several threads ask at once.
void keepFreedMemory();
// Standard error is read by a person.
bool isInteractive();

} // namespace torvane
