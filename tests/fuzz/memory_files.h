// What the file operations without a disk work on.
#pragma once

#include "rides/fit_builder.h"

#include <map>
#include <string>
#include <string_view>

namespace torvane {

constexpr std::string_view memoryFolder = "/memory/"; // the present folder and the only one beside the root

extern std::map<std::string, Bytes> memoryFiles; // by whole path

inline std::string inMemory(std::string_view name)
{
    return std::string(memoryFolder) + std::string(name);
}

} // namespace torvane
