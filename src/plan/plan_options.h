// What is asked of a course ahead: how it is read, what the rider gives, how fast the road may be taken, where one
// stops. Each entry with its default; the limits stand beside. Speeds are m/s here and kph where they are entered.
#pragma once

#include "core/units.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace torvane {

enum Effort : int32_t {
    effortPower,      // power, held throughout
    effortNormalised, // the normalised power of the ride
    effortTime,       // whatever power the time wants
    effortFtpShare,   // normalised power as a share of ftp
    effortAsRidden,   // along the road as in another ride
    effortCount
};
constexpr const char* effortLabels[effortCount] = {"power", "normalised", "time", "ftpShare", "asRidden"};

enum Pacing : int32_t {
    pacingEven,
    pacingThree, // a power up, on the flat, and down
    pacingPlan,  // least time
    pacingCount
};
constexpr const char* pacingLabels[pacingCount] = {"even", "three", "plan"};

struct Stop {
    double distance; // m
    double seconds;
};

struct PlanOptions {
    // The track
    double altitudeSmoothing = 60; // m, 0 to 1000
    // The effort
    int32_t effort = effortPower;                             // Effort
    int32_t pacing = pacingEven;                              // Pacing; not of asRidden
    double power = 200;                                       // W of effort power and normalised, 20 to 2000
    double time = 7200;                                       // s in motion and at stops, of effort time, 60 to 864000
    double ftpShare = 75;                                     // %, 10 to 150
    std::string asRidden = {};                                // path of a ride with power
    double steepFrom = 2.5;                                   // %, -30 to 30: above it the first of the three powers
    double downBelow = -2;                                    // %, -30 to 30: below it the last
    double steepShare = 115, flatShare = 100, downShare = 60; // %, 0 to 300, of each other
    double least = 60, most = 160;                            // % of the normalised power, 0 to 100, 100 to 300
    int32_t stretches = 12;                                   // 1 to 100
    // The road
    double windSpeed = 0;                   // m/s at the rider, 0 to 30
    double windDirection = 0;               // deg, where it comes from, 0 to 360
    std::optional<double> temperature = {}; // Cel; without, that of the conditions
    double topSpeed = 60 / kphPerMps;       // m/s, 10 to 150 kph
    double bendAcceleration = 4;            // m/s2, 0.5 to 10; less where the road's friction gives less
    double brakeDeceleration = 2;           // m/s2, 0.3 to 8
    double leastCadence = 40;               // rpm, 20 to 80: who gets below it in the lowest gear walks
    std::vector<Stop> stops = {};           // by distance
    int32_t evenStops = 0;                  // as many again, evenly over the course
    double evenStopSeconds = 0;
    // The integration
    double timeStep = 0.5;  // s
    double courseStep = 10; // m
};

// "3x10min" (evenly over the course), or stops at kilometres, "40:10min 85.5:300s"; empty for none. Replaces the stops
// of the options; false, and they stay, where the text says nothing of the kind, or more than 10 days in all.
bool takeStops(std::string_view text, PlanOptions& options);

} // namespace torvane
