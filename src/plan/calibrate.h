// What rides with a power meter teach of a rider's air drag: one factor on what the model states, with its interval,
// and how much better it predicts. Rolling cannot be told from it on an ordinary ride: it stays as the profile has it,
// and what is not known of it widens the interval.
#pragma once

#include "core/ride_choices.h"
#include "plan/calibration_checks.h"
#include "plan/held_out.h"

#include <optional>
#include <span>
#include <vector>

namespace torvane {

struct CalibrationOptions {
    Stage meter = stagePedaling; // where the power is measured; not the thrust
};

// What came of one of the rides.
struct CalibratedRide {
    CalibrationFault fault = CalibrationFault::none;
    StatusCode code = fitOk; // of an unreadable one
    LeftOutSeconds seconds = {};
    size_t windows = 0;
    bool foundWind = false;
    Wind wind = {};
    double temperature = 0; // Cel
    double drift = 0;       // m of altitude between end and start
    uint32_t doubts = 0;    // CalibrationDoubt
    double factor = 0;      // of this ride alone, with the standard error of what it tells
    double error = 0;
};

// A window of the fit, for graph and table: W at the road.
struct CalibrationRow {
    size_t ride;
    double seconds, metres; // since the start of the ride
    double measured, before, after;
};

struct CalibrationAnswer {
    std::vector<CalibratedRide> rides; // in the order given
    size_t ridesUsed = 0;
    // What follows stands where a ride was used.
    double factor = 1;
    double error = 0;               // standard error
    double lowest = 1, highest = 1; // of the 95 percent interval
    double dragArea = 0;            // m2 at 40 kph
    double factorBefore = 1;        // of the profile
    double rollingEffect = 0;       // on the factor, of 20 percent more rolling
    double residual = 0;            // W, spread of the windows
    double heightShare = 0; // by how much more than the profile's weight the climbs took, as a share; 0 without hills
    double temperature = 0; // Cel, mean of the days
    uint32_t day = 0;       // FIT seconds, start of the last ride
    uint32_t doubts = 0;    // CalibrationDoubt, of all rides
    HeldOut heldOut = {};
    std::vector<CalibrationRow> rows;
};

// A ride that cannot be used is told and left out.
CalibrationAnswer calibrateRides(const Model& model, std::span<const MeasuredRide> rides,
                                 const CalibrationOptions& options);

// What a profile keeps of it; all 0 where the factor is beyond what a profile takes.
Calibration calibrationOf(const CalibrationAnswer& answer);

// The torso angle in degrees for which the model's drag without a factor is that of this factor at the model's angle,
// at 40 kph. None where no angle has it.
std::optional<double> angleOfFactor(const Model& model, double factor);

// Factors that angles from 0 to 90 degrees come to.
struct AngleReach {
    double least, most;
};
AngleReach angleReach(const Model& model);

} // namespace torvane
