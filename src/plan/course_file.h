// FIT files of a predicted ride: the course that a bike computer leads along, and the activity that it would have
// recorded.
#pragma once

#include "fit/fit_image.h"
#include "plan/planned_seconds.h"

namespace torvane {

// File type 6: course, lap, a record each second, a course point for each mark. Needs at least one second.
void makeCourseFile(const PlannedFile& planned, FitImage& image);

// File type 4: the same records with lap, session and activity.
void makePlannedActivity(const PlannedFile& planned, FitImage& image);

} // namespace torvane
