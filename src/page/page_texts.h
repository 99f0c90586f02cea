// Words and figures that the pages have in common.
#pragma once

#include "model/model.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvane {

// What, and how much.
using PageFigures = std::vector<std::pair<std::string, std::string>>;

// "01:02:03" of seconds, rounded.
std::string timeText(double seconds);
// "-2:31 min" of a change of time, with its sign.
std::string changeText(double seconds);
// Of the file at a path, without its ending.
std::string nameWithoutEnding(std::string_view path);
// "Rider 70 kg, bicycle 8 kg, 80 kg in all."
std::string riderText(const Model& model);

} // namespace torvane
