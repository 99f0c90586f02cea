// What a course or its plan answers beside the codes of the ride that it was read from, and the sentence for each.
#pragma once

#include "fit/fit_codes.h"

namespace torvane {

constexpr StatusCode planWithoutAltitude = 0x20001; // too few points have one
constexpr StatusCode planWithoutPlaces = 0x20002;   // neither positions nor distances
constexpr StatusCode planTooFewPoints = 0x20003;
constexpr StatusCode planTooShort = 0x20004;        // less than leastCourse
constexpr StatusCode planTooLong = 0x20005;         // more than mostCourse
constexpr StatusCode planLeaps = 0x20006;           // two points in a row are farther apart than any road's
constexpr StatusCode planTooSteep = 0x20007;        // steeper, over a long way, than any road
constexpr StatusCode planWithoutPower = 0x20008;    // the ride to ride as has no power along the course
constexpr StatusCode planTimeOutOfReach = 0x20009;  // no power within the limits needs the time that is wanted
constexpr StatusCode planNeverArrives = 0x2000A;    // the wind, or what is asked, brings the rider to a stand
constexpr StatusCode planPowerOutOfReach = 0x2000B; // no power within the limits gives the normalised power
constexpr StatusCode planTooSlow = 0x2000C;         // takes longer than mostRiding

// One sentence without a full stop; also for the codes of reading a ride. Null for fitOk.
const char* planFault(StatusCode code);

} // namespace torvane
