// The analysis of a recorded ride, as its commands see it: what is to be done (flags), the track made clean, the model
// run along it, the statistics rebuilt. Made from settings and a loaded ride; writes to neither, no text and no file.
#pragma once

#include "core/parameter_block.h"
#include "fit/fit_image.h"
#include "gps/gps_record.h"
#include "gps/loaded_ride.h"
#include "model/model.h"

#include <cstdint>

namespace torvane {

// analysisFlags: what a command is to do, given what the file holds.
constexpr uint32_t analysisSmoothing = 1u << 0;
constexpr uint32_t analysisPosition = 1u << 4;            // latitude and longitude are there: headings
constexpr uint32_t analysisMotionFromPosition = 1u << 5;  // neither distance nor speed is there
constexpr uint32_t analysisSpeedFromDistance = 1u << 6;   // distance is there, speed is not
constexpr uint32_t analysisNoTimestamps = 1u << 7;        // acceleration from speed over distance
constexpr uint32_t analysisFlat = 1u << 8;                // no altitude, or none wanted
constexpr uint32_t analysisRecordTemperature = 1u << 9;   // records hold temperatures, the summary no average
constexpr uint32_t analysisAverageTemperature = 1u << 10; // the summary alone holds one
constexpr uint32_t analysisPowerBaseShift = 12;           // two bits: power stage of the prediction
constexpr uint32_t analysisPredictCadence = 1u << 16;
constexpr uint32_t analysisPredictPower = 1u << 17;
constexpr uint32_t analysisSteady = 1u << 18;        // no acceleration can be known
constexpr uint32_t analysisPrepared = 1u << 20;      // written by the FIT profile
constexpr uint32_t analysisMissing = 1u << 21;       // markers of cadence and power are missing values
constexpr uint32_t analysisMeasuredSpeed = 1u << 22; // each row has the speed that was measured there
constexpr uint32_t analysisNoHeadings = 1u << 23;    // nobody reads them
constexpr uint32_t analysisOfTheRoad = 1u << 19;     // Physics::ofTheRoad, also where the track is made clean

// Flags of the commands that predict, and of the one that only expresses the source data.
uint32_t buildAnalysisFlags(const ParameterBlock& settings, const FieldPresence& presence,
                            Physics physics = Physics::classic);
uint32_t expressAnalysisFlags(const ParameterBlock& settings, const FieldPresence& presence);

// AddedFields (analysed_writer.h) of an analysis; its bits are those that reportFields calls predicted, too.
uint32_t addedFieldsOf(uint32_t analysisFlags);

// What a file decides for the settings of an analysis: no altitude makes the course flat, a
// cadence or power that the file has is not predicted.
void applyAnalysisRules(ParameterBlock& block, const LoadedRide& ride, Physics physics = Physics::classic);

// Which of the user's two pairs of limits holds: unreal inclination and unreal acceleration.
enum class TrackLimits { express, analyse };

// Fills the rows from the image, excludes what is slower than the threshold speed and refines the track.
// 0, fitInvalid, or fitNoSector when no row is left.
StatusCode prepareTrack(const FitImage& image, GpsRecords& records, const ParameterBlock& settings,
                        uint32_t analysisFlags, TrackLimits limits);

// Predicts cadence and power of every row, smooths both, and follows the heat of the brakes where that is wanted
// and has a place. Does not fail.
void predictAndFinish(const Model& model, GpsRecords& records, const ParameterBlock& settings,
                      const FitSummary& summary, uint32_t analysisFlags, Progress* progress = nullptr,
                      BrakeRecords* brakes = nullptr);

// A ride's inventory and summary, told anew from the kept rows. A mean over nothing is 0.
struct AnalysedStats {
    FitInventory inventory;
    FitSummary summary;
};
AnalysedStats analysedStats(const GpsRecords& records, const LoadedRide& ride, const BrakeRecords& brakes = {});

struct Analysis {
    bool tellsHeadings = true;    // set before: else rows have none, unless the wind asks for them; a third of the work
    ParameterBlock settings = {}; // with what the file decides
    uint32_t flags = 0;
    GpsRecords records = {};
    BrakeRecords brakes = {}; // where they are followed
    AnalysedStats stats = {};
};

// All steps of an analysis, with and without prediction. Read the ride's image and move its progress; a file that has
// changed since its load is taken as it is. 0, fitInvalid, or fitNoSector when no row is left.
// The physics of the road also take each row's own temperature where there is one, smooth without a bias, and leave the
// limits of the settings as they are. Of a prepared ride a cadence or power that its meter does not give in a row is no
// number, means are over what is there, and what the settings predict is filled in there alone.
StatusCode analyseRide(const Model& model, const ParameterBlock& settings, const LoadedRide& ride, Analysis& analysis,
                       Physics physics = Physics::classic);
StatusCode expressRide(const ParameterBlock& settings, const LoadedRide& ride, Analysis& analysis);

} // namespace torvane
