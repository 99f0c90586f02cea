// Which seconds of a ride tell of its air drag, and the balance of energy over windows of about a minute of them: what
// the rider gave, less what speed and height took or gave back, went to air and tyres.
#pragma once

#include "plan/thrust_seconds.h"

#include <array>
#include <cstdint>
#include <vector>

namespace torvane {

// Wind as it would blow against somebody who rides east and north; m/s.
struct Wind {
    double east = 0, north = 0;
};

// Why a second is left out.
enum LeftOut : uint8_t {
    used,
    leftSlow,         // below 3 m/s, or standing
    leftWithoutPower, // the meter says nothing
    leftStrong,       // above 1,500 W: the meter is wrong
    leftBraking,      // and around it
    leftShort,        // in a run too short for a window
    leftOutCount
};

using SecondUse = std::vector<LeftOut>;

// By the model with this factor and wind, which tells where the brakes must have been at work.
SecondUse markSeconds(const ThrustRide& ride, double factor, const Wind& wind);

// Means over a window in W. The power that the air takes is a polynomial of the wind, for a factor of 1.
struct EnergyWindow {
    double from = 0;      // s since the start
    double seconds = 0;   //
    double metres = 0;    // since the start, of its middle
    double measured = 0;  // of the meter
    double thrust = 0;    // of that, at the road
    double stored = 0;    // in speed and height; negative where they gave
    double rolling = 0;   //
    double calm = 0;      // air without wind
    double east = 0;      // twice this for a wind of 1 m/s
    double north = 0;     //
    double eastEast = 0;  //
    double eastNorth = 0; //
    double northNorth = 0;

    double air(const Wind& wind) const
    {
        return calm + 2 * (wind.east * east + wind.north * north) + wind.east * wind.east * eastEast +
               2 * wind.east * wind.north * eastNorth + wind.north * wind.north * northNorth;
    }
    double predicted(double factor, const Wind& wind, double rollingShare = 1) const
    {
        return stored + rolling * rollingShare + factor * air(wind);
    }
};

// Windows of equal length in each run of used seconds, as near to `length` as they fit and not below half of it. The
// rest of `use` is marked as too short.
std::vector<EnergyWindow> windowsOf(const ThrustRide& ride, SecondUse& use, size_t length);

} // namespace torvane
