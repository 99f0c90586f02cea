// The order of time in an activity: records that a clock put elsewhere go, and stops and starts of the timer become
// pauses.
#pragma once

#include "gps/activity.h"

#include <vector>

namespace torvane {

// Leaves the most samples whose timestamps rise from one to the next, of several such choices the one that keeps the
// earlier ones: the smaller side of a leap goes, and of equal timestamps all but the first. Timer events between
// samples that go are dropped with them.
void keepRisingTimes(Activity& activity, PrepareFindings& findings);

// Leaves the samples for which `keeps` holds, by their index; messages stay between the same ones as before, but timer
// events between samples that go are dropped.
void keepSamples(Activity& activity, const std::vector<bool>& keeps);

// Leaves the other messages for which `keeps` holds, by their index.
void keepOthers(Activity& activity, const std::vector<bool>& keeps);

// From stop to start, ordered.
std::vector<Pause> pausesOf(const std::vector<TimerEvent>& timer);

// Sorts pauses, and makes one of those that meet.
void orderPauses(std::vector<Pause>& pauses);

} // namespace torvane
