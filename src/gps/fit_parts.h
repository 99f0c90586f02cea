// FIT files as devices leave them when something went wrong, and several of them in one: what can be read of them, as
// one image that walks to its end.
#pragma once

#include "fit/fit_image.h"
#include "gps/prepare_findings.h"

#include <cstdint>
#include <vector>

namespace torvane {

// Of the bytes of a whole file. A sound file that stands alone is taken as it is. Several, one behind the other, become
// one in the order of their times; where one of them is an activity, the others are left out. Of a file that is cut
// off, was never closed or has a wrong checksum all messages count up to the first that cannot be read.
// fitNotSupported without a signature; fitWrongCrc or fitInvalid where no record can be read.
StatusCode takeFitParts(FitImage& image, std::vector<uint8_t>&& bytes, SourceFindings& findings);

} // namespace torvane
