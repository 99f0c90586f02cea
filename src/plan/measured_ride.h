// A ride with a power meter as calibration takes it: what its device wrote, second by second, put in order first.
#pragma once

#include "core/parameter_block.h"
#include "core/progress.h"
#include "fit/fit_codes.h"
#include "gps/prepare.h"

#include <cstdint>
#include <string>
#include <vector>

namespace torvane {

// What a record holds; no number where it is missing.
struct MeasuredSecond {
    uint32_t timestamp = 0; // FIT seconds
    double latitude = 0;    // deg
    double longitude = 0;   // deg
    double altitude = 0;    // m
    double speed = 0;       // m/s
    double power = 0;       // W, where the meter sits
    double cadence = 0;     // rpm
};

struct MeasuredRide {
    std::string path;                    // as the user named it
    StatusCode code = fitOk;             // of its reading; without seconds where that is none
    std::vector<MeasuredSecond> seconds; // rising by time
    double temperature = 20;             // Cel, mean of the day
    bool isVirtual = false;              // ridden in front of a screen
    PrepareFindings findings = {};
};

// Reads and prepares a ride of any kind; its code is one of loadPrepared. The temperature is the settings' where no
// record has one.
MeasuredRide readMeasuredRide(const ParameterBlock& settings, const std::string& path, const PrepareOptions& options,
                              Progress* progress = nullptr);

} // namespace torvane
