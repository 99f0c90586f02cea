// The search that turns a power into a velocity: a walk whose step halves at each fall below the answer after a rise,
// under a tolerance that loosens with time, so that a stalled search ends and is then judged by its result.
// Internal to the model.
#pragma once

#include "model/resistance.h"

#include <cmath>

namespace torvane {

struct PowerSearch {
    double velocity; // m/s, present
    double step;     // m/s
    double power = 0.0;
    ResultStatus status = 0; // of the last round
    bool exhausted = false;
    double tolerance = 0.001; // W
    bool rising = false;
    int round = 0;
};

constexpr int searchRounds = 5000;
constexpr double firstVelocity = 11.0; // m/s, some 40 kph
constexpr double firstStep = 2.0;      // m/s

// Takes what holds the present velocity, and steps on. True when the search has ended.
inline bool takePower(PowerSearch& search, double wanted, const Solved& found)
{
    search.power = found.value;
    search.status = found.status;
    if (std::fabs(wanted - search.power) < search.tolerance)
        return true;
    bool below = wanted > search.power;
    search.step *= !below && search.rising ? 0.5 : 1.0;
    search.velocity += below ? search.step : -search.step;
    search.rising = below;
    if (search.round % 50 == 0)
        search.tolerance *= 1.4;
    search.exhausted = ++search.round == searchRounds;
    return search.exhausted;
}

// The velocity that an ended search has come to, which may be below 0, and what to think of it.
Solved judged(const PowerSearch& search, double wanted);

// powerAt(velocity) returns Solved.
template <class PowerAt>
void searchPower(PowerSearch& search, double wanted, PowerAt powerAt)
{
    while (!takePower(search, wanted, powerAt(search.velocity)))
        ;
}

} // namespace torvane
