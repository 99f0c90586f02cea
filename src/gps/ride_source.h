// A recorded ride from whatever file it comes in: FIT, GPX or TCX, each of them plain or packed by gzip. What a file
// is, its content tells; its name only counts where the content does not.
#pragma once

#include "fit/fit_image.h"

#include <string>
#include <string_view>

namespace torvane {

// The ride as an image of a FIT file. Codes of loadFitImage, and fitNotSupported for an XML document of another kind or
// a planned track that nobody rode, fitInvalid for one that is broken, fitPrepareFailed for one without a point that
// has a time, fitTooLarge beyond what a FIT file may hold or, unpacked, a gigabyte.
StatusCode loadRideSource(FitImage& image, const std::string& path);

} // namespace torvane
