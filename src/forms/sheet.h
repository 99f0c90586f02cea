// The property sheets, by what they set.
#pragma once

#include <cstdint>

namespace torvane {

enum class Sheet : uint8_t { none, profile, condition, preference };

} // namespace torvane
