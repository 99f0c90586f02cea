// A ride of a track file as an activity, in the form in which a device would have written it: the one way from GPX and
// TCX to all that is done with rides. Nothing is mended here; that is the preparing tool's work.
#pragma once

#include "fit/fit_image.h"
#include "tracks/tracks.h"

namespace torvane {

// What of the tracks could not go over.
struct ImportFindings {
    size_t pointsWithoutTime = 0; // or with a time before 1990, where FIT begins to count
    size_t legsOfOtherSports = 0; // left out: beside rides, whatever is none
};

// Makes records, laps, a session and what belongs to them out of the legs of a ride; where none is called a ride, of
// all. Points are taken at the nearest whole second. Where recording stopped and went on, the timer does.
// fitOk; fitPrepareFailed without a point that has its time; fitTooLarge.
StatusCode importTracks(const Tracks& tracks, FitImage& image, ImportFindings& findings);

} // namespace torvane
