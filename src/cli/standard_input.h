// Standard input as a stream, opened where it is read: <iostream> would give each file that includes it a variable of
// its own.
#pragma once

#include <ext/stdio_sync_filebuf.h>

#include <cstdio>
#include <istream>

namespace torvane {

struct StandardInput {
    __gnu_cxx::stdio_sync_filebuf<char> buffer = __gnu_cxx::stdio_sync_filebuf<char>(stdin);
    std::istream stream = std::istream(&buffer);
};

} // namespace torvane
