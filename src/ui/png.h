// A bitmap as a PNG file, by the system's own codec.
#pragma once

#include "ui/win32.h"

#include <cstdint>
#include <vector>

namespace torvane {

// The bytes of the file; none where the system cannot make them. The bitmap must not be selected into a device.
std::vector<uint8_t> pngOf(HBITMAP bitmap);

} // namespace torvane
