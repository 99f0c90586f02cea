// Search by repeated runs: for a reference factor that a run gives as its result, the power or force is stepped until
// the result meets what was asked for. Allocates nothing and prints nothing; only the progress bar moves.
#pragma once

#include "core/progress.h"
#include "ride/ride_records.h"

#include <cmath>
#include <limits>

namespace torvane {

constexpr int seekRounds = 5000;

// A walk whose step shrinks each time when it turns down after having gone up.
struct Stepper {
    double value;
    double step;
    double shrink;
    bool rising = false;

    void lower()
    {
        if (rising) {
            step *= shrink;
            rising = false;
        }
        value -= step;
    }
    void raise()
    {
        rising = true;
        value += step;
    }
};

enum class Settled { met, beyond, never };

// Walks until |miss| is below the tolerance; a miss above 0 asks for a higher value, any other for a lower one. It
// depends on nothing but the value. beyond: the value passed `most`. never: 5,000 rounds, or a miss that is no number.
template <class Miss>
Settled settle(Progress* progress, Stepper& stepper, double tolerance, double most, Miss miss)
{
    double firstError = 0.0;
    for (int round = 0; round < seekRounds; ++round) {
        if (stepper.value > most)
            return Settled::beyond;
        double missed = miss(stepper.value);
        double error = std::fabs(missed);
        firstError = round == 0 ? error : firstError;
        reportProgress(progress, progressPercent(firstError, tolerance, error));
        if (error < tolerance || !std::isfinite(error))
            return error < tolerance ? Settled::met : Settled::never;
        double tried = stepper.value;
        missed > 0.0 ? stepper.raise() : stepper.lower();
        if (stepper.value == tried)
            return Settled::never; // the step is used up, and all rounds to come would repeat this one
    }
    return Settled::never;
}

template <class Miss>
Settled settle(Progress* progress, Stepper& stepper, double tolerance, Miss miss)
{
    return settle(progress, stepper, tolerance, std::numeric_limits<double>::infinity(), miss);
}

// Which results ask for a lower variable.
enum class HighSide { aboveWanted, belowWanted };

struct Seek {
    double* variable; // power or force of ride.found, at its first value
    double* result;   // of ride.found, as the run leaves it
    double wanted;
    double step;
    double tolerance;
    HighSide highSide;
    double least = -std::numeric_limits<double>::infinity();    // the variable never goes below
    double peakLimit = std::numeric_limits<double>::infinity(); // W of pedaling power; a higher peak ends the seek
};

// Runs until the result is within the tolerance, which loosens with the rounds. Leaves the variable and all that its
// last run left. A round whose run failed never counts as met; where it was refused, so that there is no result, its
// status tells the side. Where the seek fails, the result reads as wanted again: titles quote it, and the last try is
// no answer. Status: statusNotConverged after 5,000 rounds, or when variable or result is no number;
// statusTooLargePower beyond peakLimit; else the tolerance class of the velocity reached, and statusLooseTolerance
// where the tolerance had grown so far that the result is more than 1 percent from wanted.
ResultStatus seekTarget(RideRun& ride, const Seek& seek, ResultStatus (*run)(RideRun&));

} // namespace torvane
