// Names of FIT values: file types and sports.
#pragma once

#include "core/fit_choices.h"

#include <cstdint>
#include <iterator>

namespace torvane {

constexpr uint8_t fileTypeActivity = 4, fileTypeCourse = 6;

// Name of a file_id type, "unknown file type" for one that has none.
const char* fileTypeName(uint8_t fileType);

// FIT sports in the order of sportNames.
constexpr uint8_t sportValues[] = {0, 1, 2, 3, 4, 5, 6, 8, 254};
static_assert(std::size(sportValues) == sportCount);

// FIT sport of a row of the list, generic for an index outside of it.
constexpr uint8_t sportValue(int32_t sportIndex)
{
    bool known = sportIndex >= 0 && sportIndex < sportCount;
    return known ? sportValues[sportIndex] : 0;
}

// FIT sports in the order of rideSportNames.
constexpr uint8_t rideSportValues[] = {2, 1, 5, 11, 17};
static_assert(std::size(rideSportValues) == rideSportCount);

// Name of a FIT sport, empty for one that the list does not have.
const char* sportName(uint8_t sport);

} // namespace torvane
