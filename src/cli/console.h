// The console program without its main(): one call is one start of the program.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace torvane {

// Arguments without the program's name, UTF-8. Returns the exit code. Starts from fresh records each time.
// Progress is shown on err only when terminal says that a person reads it.
int runConsole(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, bool terminal = false);

} // namespace torvane
