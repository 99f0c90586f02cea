// What rides with a power meter teach of a rider's air drag: one factor on what the model states, with its interval,
// and how much better it predicts. Rolling cannot be told from it on an ordinary ride: it stays as the profile has it,
// and what is not known of it widens the interval.
#pragma once

#include "core/progress.h"
#include "core/ride_choices.h"
#include "plan/calibration_checks.h"
#include "plan/held_out.h"

#include <optional>
#include <span>
#include <vector>

namespace torvane {

struct CalibrationOptions {
    int32_t meter = stagePedaling; // Stage where the power is measured; not the thrust
    int32_t asAngle = 0;           // what is saved is a torso angle instead of the factor
};
constexpr int meterPlaceCount = stageThrust;
constexpr double normalReach = 1.96; // standard errors of the 95 percent interval

// What calibration answers beside the codes of reading.
constexpr StatusCode calibrateNothingUsed = 0x20101; // no ride could be used
constexpr StatusCode calibrateBeyond = 0x20102;      // the factor is beyond what a profile takes, and was not saved
constexpr StatusCode calibrateNoAngle = 0x20103;     // no torso angle gives this drag
constexpr StatusCode calibrateNotWritten = 0x20104;  // the profile file
constexpr StatusCode calibrateUncertain = 0x20105;   // the interval is too wide for a profile to keep the factor

// What came of one of the rides.
struct CalibratedRide {
    CalibrationFault fault = CalibrationFault::none;
    uint32_t start = 0; // FIT seconds
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
    double lowest, highest; // after, by the ends of the interval
};

struct CalibrationAnswer {
    std::vector<CalibratedRide> rides; // in the order given
    size_t ridesUsed = 0;
    // What follows stands where a ride was used.
    double factor = 1;
    double error = 0;               // standard error
    double lowest = 1, highest = 1; // of the 95 percent interval
    double dragArea = 0;            // m2 at 40 kph
    std::optional<double> angle;    // deg, of the torso, that gives the same drag there without a factor
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
                                 const CalibrationOptions& options, Progress* progress = nullptr);

// What a profile keeps of it; all 0 where the factor is beyond what a profile takes, or too uncertain.
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
