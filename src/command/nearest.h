// Names that a user may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvane {

// Up to three of the names that are a few letters away from the given one, or that contain it; nearest first.
std::vector<std::string> nearestNames(std::string_view name, const std::vector<std::string>& names);

// The same as the end of a message: "; did you mean a, b or c?", or nothing.
std::string suggestion(std::string_view name, const std::vector<std::string>& names);

} // namespace torvane
