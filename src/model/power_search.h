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
};

constexpr int searchRounds = 5000;

// powerAt(velocity) returns Solved.
template <class PowerAt>
void searchPower(PowerSearch& search, double wanted, PowerAt powerAt)
{
    double tolerance = 0.001; // W
    bool rising = false;
    for (int round = 0; round < searchRounds; ++round) {
        Solved found = powerAt(search.velocity);
        search.power = found.value;
        search.status = found.status;
        if (std::fabs(wanted - search.power) < tolerance)
            return;
        if (wanted > search.power) {
            rising = true;
            search.velocity += search.step;
        } else {
            if (rising) {
                search.step *= 0.5;
                rising = false;
            }
            search.velocity -= search.step;
        }
        if (round % 50 == 0)
            tolerance *= 1.4;
    }
    search.exhausted = true;
}

} // namespace torvane
