// A profile that came out of a file, held to what the pages take from a user.
#pragma once

#include "model/model.h"

#include <string>

namespace torvane {

// The first figure of a block's profile or condition that is open to entry on its page and beyond its limits, in words:
// "crankLength is 0, its limits are 100 to 200 mm". Empty where all are within. The model gives a page its lists.
std::string figureBeyondLimits(const Model& model, const ParameterBlock& block);

} // namespace torvane
