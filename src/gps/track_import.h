// A ride of a track file as an activity, in the form in which a device would have written it: the one way from GPX and
// TCX to all that is done with rides. Nothing is mended here; that is the preparing tool's work.
#pragma once

#include "fit/fit_image.h"
#include "gps/prepare_findings.h"
#include "tracks/tracks.h"

namespace torvane {

// Makes records, laps, a session and what belongs to them out of the legs of one FIT sport; where none is called so,
// out of all. A leg that names no sport may be of any. Points are taken at the nearest whole second. Where recording
// stopped and went on, the timer does. Counts what of the tracks could not go over. fitOk; fitWithoutTimes without a
// point that has its time; fitTooLarge.
StatusCode importTracks(const Tracks& tracks, uint8_t sport, FitImage& image, SourceFindings& findings);

} // namespace torvane
