// What a ride cost, whatever device wrote it: its time and way, its powers as the model predicts them and, where there
// is a meter, as they were measured, its laps, climbs and gears. Never refuses a ride for what it holds already.
#pragma once

#include "core/progress.h"
#include "fit/fit_codes.h"
#include "gps/analysis.h"
#include "gps/gear_use.h"
#include "gps/power_figures.h"
#include "gps/prepare.h"
#include "gps/ride_comparison.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace torvane {

constexpr uint32_t leastRide = 300; // s in motion; less is no ride to tell of

// A part of the ride, or all of it.
struct StretchFigures {
    double from = 0;                                                   // m since the start of the ride
    double metres = 0;                                                 // ridden
    uint32_t seconds = 0;                                              // in motion
    double climbed = 0;                                                // m; of a climb from foot to top
    std::array<std::optional<double>, figureSourceCount> power = {};   // W, mean
    std::array<std::optional<double>, figureSourceCount> cadence = {}; // rpm, mean while pedalling
};

// The prediction against the meter, over the seconds that have both.
struct MeterFigures {
    uint32_t seconds = 0;
    std::array<double, figureSourceCount> mean = {}; // W
    std::optional<CorrelationBand> correlation = {}; // none with too few means
};

struct BrakeFigures {
    double mostForce = 0;                 // kgf
    std::array<double, 2> highest = {};   // Cel, front and rear
    std::array<double, 2> kiloJoule = {}; // taken up by friction
};

struct RideAnswer {
    uint32_t start = 0;   // FIT seconds
    uint32_t elapsed = 0; // s, from first to last record
    StretchFigures whole;
    double distance = 0;     // m, what was walked or rolled slowly included
    double highestSpeed = 0; // m/s
    std::array<std::optional<PowerFigures>, figureSourceCount> power = {};
    std::array<double, figureSourceCount> foodKiloCalorie = {}; // eaten for the work
    std::optional<MeterFigures> meter = {};
    FigureSource gearSource = predictedFigure; // of the cadence by which the gears are told
    std::vector<GearUse> gears = {};
    std::vector<StretchFigures> laps = {}; // none of a ride of one lap
    std::vector<StretchFigures> climbs = {};
    std::optional<BrakeFigures> brakes = {};
    // What could be used
    uint32_t recordsRead = 0;
    uint32_t recordsUsed = 0;
    bool hasAltitude = false;
    bool meterStill = false; // all powers of the file are 0: they count as missing
};

// One ride from its file to the answer.
struct AnsweredRide {
    PrepareFindings findings = {};
    LoadedRide prepared = {}; // in order, with the power and cadence that were measured unless they were to go
    Analysis analysis = {};   // of the same records, all of them with predicted power and cadence
    Measured measured = {};
    RideAnswer answer = {};
};

// What a ride lets be chosen for its analysis: presence and readiness of the source in files[0], as it will be prepared
// and without its power and cadence. A box where it cannot be prepared.
Verdict checkRide(const ToolInputs& inputs, const PrepareOptions& options, LoadedRide& scanned);

// Reads, prepares, analyses and tells. fitOk; a code of loading or preparing; fitTooShort with less than leastRide in
// motion, where findings and answer tell as far as they go.
StatusCode answerRide(const Model& model, const ParameterBlock& settings, const std::string& path,
                      const PrepareOptions& options, AnsweredRide& ride, Progress* progress = nullptr);

// A ride whose analysis has been made already, told as that analysis has it: power and cadence that it did not predict
// were measured.
AnsweredRide answerOfAnalysis(const Model& model, const LoadedRide& loaded, const Analysis& analysis);

// Writes the analysed file of an answered ride: what was measured stays, what is missing is the prediction. The rows of
// the analysis are then those of the file. Codes of saveAnalysedFile.
StatusCode saveAnsweredFile(AnsweredRide& ride, const OutputChoice& options, const std::string& path, Flush flush);

} // namespace torvane
