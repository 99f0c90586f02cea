// One call of the console program in this process, with what it printed.
#pragma once

#include "cli/console.h"

#include <sstream>
#include <string>
#include <vector>

namespace torvane {

struct Call {
    int code;
    std::string out, err;
};

inline bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != text.npos;
}

inline Call call(const std::vector<std::string>& arguments)
{
    std::ostringstream out, err;
    int code = runConsole(arguments, out, err);
    return {code, out.str(), err.str()};
}

} // namespace torvane
