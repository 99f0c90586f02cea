// Words and figures that the pages have in common.
#pragma once

#include "model/model.h"

#include <cstdint>
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
// "16 Jul 2024 Tue 07:30:00 UTC" of FIT seconds.
std::string dateText(uint32_t seconds);
// A unit as people write it: "°C" of "Cel".
std::string_view shownUnit(std::string_view unit);
// "Rider 70 kg, bicycle 8 kg, 80 kg in all."
std::string riderText(const Model& model);

} // namespace torvane
