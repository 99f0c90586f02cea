// Names of FIT values: file types and sports.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace torvane {

constexpr uint8_t fileTypeActivity = 4;

// Name of a file_id type, "unknown file type" for one that has none.
const char* fileTypeName(uint8_t fileType);

struct SportCode {
    const char* label;
    uint8_t value; // FIT sport
};

// In the order of every dialog's sport list.
constexpr std::array<SportCode, 9> sportCodes = {{
    {"generic", 0},
    {"running", 1},
    {"cycling", 2},
    {"transition", 3},
    {"fitness", 4},
    {"swiming", 5},
    {"walking", 6},
    {"sedentary", 8},
    {"all", 254},
}};

// FIT sport of a row of the list, generic for an index outside of it.
constexpr uint8_t sportValue(int32_t sportIndex)
{
    bool known = sportIndex >= 0 && sportIndex < static_cast<int32_t>(sportCodes.size());
    return known ? sportCodes[static_cast<size_t>(sportIndex)].value : 0;
}

// Name of a FIT sport, empty for one that the list does not have.
const char* sportName(uint8_t sport);

} // namespace torvane
