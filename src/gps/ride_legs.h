// The parts of an activity by its sessions and laps: which of them belong to the sport that is asked for, where
// sessions and laps have to stand, and those that a broken file lacks.
#pragma once

#include "gps/activity.h"

namespace torvane {

// Between sessions the timer stood. Where they are of several sports, leaves the records and messages of those of one
// sport; e-bikes count as bicycles. fitOk; fitSessionSportsDiffer where none of several is of this sport.
StatusCode takeLegsOf(Activity& activity, uint8_t sport, PrepareFindings& findings);

// Puts sessions and laps behind the records that they sum up, by their own times; one that stands within seconds of
// that stays. So the figures of each can be made anew from what stands in front of it.
void placeSummaries(Activity& activity, PrepareFindings& findings);

// Where the file is broken and has no session: a lap for what lies behind the last one, and a session. One activity
// message for all sessions, unless the device's own still holds. Of completed samples.
void completeSummaries(Activity& activity, uint8_t sport, PrepareFindings& findings);

// mm/s, the mean of the sessions by their timers; 0 unknown.
double deviceSpeedOf(const Activity& activity);

} // namespace torvane
