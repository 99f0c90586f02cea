#include "plan/plan_codes.h"

#include "gps/prepare.h"

namespace torvane {

namespace {

struct Fault {
    StatusCode code;
    const char* sentence;
};
constexpr Fault faults[] = {
    {planWithoutAltitude, "most points of the track have no altitude, so nobody knows where the road climbs"},
    {planWithoutPlaces, "the points of the track have neither positions nor distances"},
    {planTooFewPoints, "a course takes three points or more"},
    {planTooShort, "the course is shorter than 100 m"},
    {planTooLong, "the course is longer than 2000 km"},
    {planLeaps, "two points of the track that follow one another lie more than 20 km apart"},
    {planTooSteep, "the track is steeper, over hundreds of metres, than any road: its altitudes are wrong"},
    {planWithoutPower, "the ride to ride as has no power along most of this course"},
    {planTimeOutOfReach, "no power of a rider needs the time that is wanted"},
    {planNeverArrives, "the ride does not come to its end"},
    {planPowerOutOfReach, "on this course no power of a rider comes to the normalised power that is wanted"},
    {planTooSlow, "the ride takes more than 20 days in motion; it wants more power, lower gears or a shorter course"},
};

} // namespace

const char* planFault(StatusCode code)
{
    for (const Fault& fault : faults)
        if (fault.code == code)
            return fault.sentence;
    return preparingFault(code);
}

} // namespace torvane
