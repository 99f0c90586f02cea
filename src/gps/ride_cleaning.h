// The steps by which the samples of an activity become a ride without holes: positions off the track go, missing values
// are bridged, and each step is judged: filled or left open. No new sample is made
// here; the writer asks for the values within a step.
#pragma once

#include "gps/activity.h"

namespace torvane {

struct CleaningLimits {
    uint32_t gap;     // s, longest step that may be filled
    double jumpSpeed; // m/s, faster no position follows another
};

// Clears positions that their neighbours cannot have reached, and marks where the track goes on elsewhere: positions
// that are again and again out of reach of the ones before, for half a minute or up to where both could be, are
// believed.
void dropJumps(std::span<RideSample> samples, double jumpSpeed, PrepareFindings& findings);

// Leaves steps open that are longer than the limit, that a pause touches, or across which the track shifts.
void judgeSteps(std::span<RideSample> samples, std::span<const Pause> pauses, uint32_t gapLimit,
                PrepareFindings& findings);

// Gives every field that some sample has a value in every sample, by the rule of its row. Settled values are stored
// without being known.
void completeFields(std::span<RideSample> samples, PrepareFindings& findings);

// All of these, and those of ride_motion.h, in their order. False where what is made of it could change once more when
// it is prepared again.
bool cleanRide(Activity& activity, const CleaningLimits& limits, PrepareFindings& findings);

// Metres between two positions, by the longest parallel that lies between them. Any part of an even way between the two
// is then no longer than its share of the whole, so that a way once found possible stays so when it is filled.
double metresBetween(const RideSample& a, const RideSample& b);

// The value of a field within the step from one sample to the next, after a share of its time, 0 to 1.
int32_t valueWithin(const RideSample& from, const RideSample& to, size_t field, double share);

} // namespace torvane
