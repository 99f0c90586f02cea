// The road that a row of places tells: even steps, smoothed heights, headings and bends.
#pragma once

#include "plan/track_places.h"

#include <span>
#include <vector>

namespace torvane {

// Points each course.step along the places, with raw height and position; places need heights, two of them at least.
void stepAlong(std::span<const TrackPlace> places, Course& course);

// Smooths the heights over a length in m, more where they are noisy, and takes the slopes.
void shapeHeights(Course& course, double smoothing);

// Headings and bends of positions smoothed over 30 m. None without positions.
void shapeBends(Course& course);

} // namespace torvane
