#include "fit/fit_types.h"

#include <algorithm>

namespace torvane {

const char* fileTypeName(uint8_t fileType)
{
    struct FileType {
        uint8_t value;
        const char* name;
    };
    constexpr FileType fileTypes[] = {
        {1, "device file"},
        {2, "settings file"},
        {3, "sport file"},
        {4, "activity file"},
        {5, "workout file"},
        {6, "course file"},
        {7, "schedule file"},
        {9, "weight file"},
        {10, "totals file"},
        {11, "goals file"},
        {14, "blood pressure file"},
        {15, "monitoring file"},
        {20, "activity summary file"},
        {28, "monitoring file"},
        {32, "monitoring file"},
        {34, "segment file"},
        {35, "segment file"},
        {40, "configuration file"},
    };
    for (const FileType& known : fileTypes)
        if (known.value == fileType)
            return known.name;
    return "unknown file type";
}

const char* sportName(uint8_t sport)
{
    const auto* known = std::ranges::find(sportValues, sport);
    return known == std::end(sportValues) ? "" : sportNames[known - sportValues];
}

} // namespace torvane
