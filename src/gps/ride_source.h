// A recorded ride from whatever file it comes in: FIT, GPX or TCX, each of them plain or packed by gzip. What a file
// is, its content tells; its name only counts where the content does not.
#pragma once

#include "fit/fit_image.h"
#include "gps/prepare_findings.h"
#include "tracks/tracks.h"

#include <string>

namespace torvane {

// What a file holds, as it stands there.
struct RideSource {
    bool isTrack = false; // GPX or TCX: the tracks; else the image
    FitImage image = {};
    Tracks tracks = {}; // ridden or planned, with or without times
    SourceFindings findings = {};
};

// Reads a file of any kind. Codes of loadRideSource but for those of a ride that has no times.
StatusCode openRideSource(const std::string& path, RideSource& source);

// The ride as an image of a FIT file; what could be read of one that is broken. Of a track file's activities those of
// the FIT sport `sport`, where there are any. Codes of loadFitImage and takeFitParts, and fitNotSupported for an XML
// document of another kind, fitPlanned for a route or a course that nobody rode, fitXmlBroken and fitDoctype for XML
// that is not read, fitWithoutPoints and fitWithoutTimes for a document that holds no ride, fitTooLarge beyond what a
// FIT file may hold or, unpacked, a gigabyte.
StatusCode loadRideSource(FitImage& image, const std::string& path, uint8_t sport, SourceFindings& findings);

} // namespace torvane
