// One call of the console program in this process, with what it printed, and files for it.
#pragma once

#include "captured_screens.h"
#include "cli/console.h"
#include "fit/fit_builder.h"

#include <sstream>
#include <string>
#include <vector>

namespace torvane {

struct Call {
    int code;
    std::string out, err;
};

inline std::string textOf(const std::string& path)
{
    Bytes bytes = bytesOf(path);
    return {bytes.begin(), bytes.end()};
}

inline Call call(const std::vector<std::string>& arguments)
{
    std::ostringstream out, err;
    int code = runConsole(arguments, out, err);
    return {code, out.str(), err.str()};
}

inline Call call(std::vector<std::string> front, const std::vector<std::string>& rest)
{
    front.insert(front.end(), rest.begin(), rest.end());
    return call(front);
}

// A ride of positions, altitude, distance and speed, without cadence and power.
inline Bytes plainRide(int records = 60, int64_t start = 1'000'000'000)
{
    FitBuilder fit;
    fit.define(0, 0, {{0, 1, 0}, {1, 2, 0x84}}).message(0, {4, 1});
    fit.define(1, 20, {{253, 4, 0x86}, {0, 4, 0x85}, {1, 4, 0x85}, {2, 2, 0x84}, {5, 4, 0x86}, {6, 2, 0x84}});
    for (int i = 0; i < records; ++i)
        fit.message(1, {start + i, 500'000'000 + 900 * i, 100'000'000, 2'600, 800 * i, 8'000});
    fit.define(2, 18, {{253, 4, 0x86}, {2, 4, 0x86}, {5, 1, 0}, {7, 4, 0x86}, {9, 4, 0x86}});
    fit.message(2, {1'000'000'059, 1'000'000'000, 2, 59'000, 47'200});
    return fit.file();
}

struct ConsoleTest : testing::Test {
    TestFolder folder;
    const std::string& in = folder.path;

    // The path of a file with these bytes.
    std::string put(const std::string& name, const Bytes& bytes) const
    {
        writeBytes(in + name, bytes);
        return in + name;
    }
};

} // namespace torvane
