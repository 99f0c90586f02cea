// The one record of everything a user can set, and the record of the model in force.
// ParameterBlock is the image of the parameter file, ModelState the body of a profile file: fixed layout,
// little-endian, words that no operation reads are named reserved and stay 0. Knows nothing of limits (forms) or of
// physics (model).
#pragma once

#include "core/calibration.h"
#include "core/choices.h"
#include "core/ride_choices.h"

#include <cstddef>
#include <cstdint>

namespace torvane {

// Order of ParameterBlock::pageChanged.
enum Page : int {
    pageHuman,
    pageEquip,
    pageShift,
    pageWheel,
    pageTyre,
    pageBrake,
    pageLoss,
    pageAssist,
    pageCourse,
    pagePeloton,
    pagePhysiology,
    pageProcessInterval,
    pageSpecificHeat,
    pageEmittance,
    pageGraph,
    pageInitialValues,
    pageGpsData,
    pageCount
};

// Order of ParameterBlock::gpsSaveFlag.
enum GpsDialog : int {
    gpsExpress,
    gpsAnalyse,
    gpsCreate,
    gpsCombine,
    gpsConvert,
    gpsAdd,
    gpsDivide,
    gpsExclude,
    gpsOneStroke,
    gpsTimestamp,
    gpsDialogCount
};

// What every tool that writes a FIT file lets the user choose about it.
struct OutputChoice {
    int32_t convertEnabled; // write another header form than the source's
    int32_t fitFormat;      // HeaderForm; this and the sport are in fit_choices.h
    int32_t sportEnabled;   // write another sport
    int32_t sportIndex;     // Sport
};

struct ParameterBlock {
    // Session
    int32_t reserved000[3];
    int32_t screenWidth;  // pixels, taken when the window is first centred
    int32_t screenHeight; // pixels
    Calibration calibration;
    int32_t windowRect[4]; // left, top, right, bottom in screen pixels
    int32_t reserved034[4];
    int32_t windowWidth;
    int32_t windowHeight;
    int32_t useCalibration; // preference: calculators, simulations and analyses take the drag factor as well
    int32_t reserved050;
    int32_t pageChanged[pageCount];          // "save as default" of each page, in the order of Page
    int32_t theorySaveFlag[calculatorCount]; // by theoryCalculator
    int32_t rideSaveFlag[rideModeCount];     // by rideMode
    int32_t reserved0BC;
    int32_t gpsSaveFlag[gpsDialogCount]; // in the order of GpsDialog
    int32_t theoryCalculator;            // TheoryCalculator; this and the choices of the rides are in ride_choices.h
    int32_t theoryTarget;
    int32_t rideMode; // RideMode
    int32_t rideTarget;
    char profileFileName[264]; // without folder, UTF-8

#include "core/profile_and_condition_fields.inc"

    // Preferences; the page "GPS data" stands further down
    int32_t useFtp;
    double energyEfficiency;          // of muscle
    int32_t accelerationIntervalMode; // IntervalMode
    int32_t decelerationIntervalMode;
    double accelerationInterval;             // s
    double decelerationInterval;             // s
    double specificHeat[brakeMaterialCount]; // J/gK
    double emittance[brakeMaterialCount];
    int32_t expressGraph;
    int32_t bandGraphPowerVelocity;
    int32_t bandGraphCornering;
    int32_t initialValueMode; // InitialValueMode: what dialogs open with

    // Theory calculators; arrays by theoryCalculator
    double theoryCadence[calculatorCount];     // rpm, follows cadenceUsual
    double theoryPower[calculatorCount];       // W
    double theoryTorque[calculatorCount];      // Nm
    double theoryForce[calculatorCount];       // kgf
    double theoryCadenceMax[calculatorCount];  // rpm, follows cadencePoweredMax
    double theoryMaxPower[calculatorCount];    // W
    double theoryVelocity[calculatorCount];    // m/s
    double theoryInclination[calculatorCount]; // %
    int32_t torqueOrForce;                     // TorqueOrForce
    int32_t useMissionProfile;
    int32_t frontTooth;
    int32_t rearTooth;

    // Ride simulations; arrays by rideMode
    double rideVelocity[rideModeCount];             // m/s
    double ridePower[rideModeCount];                // W
    double rideForce[rideModeCount];                // kgf
    double rideStartVelocity[rideModeCount];        // m/s
    double rideEndVelocity[rideModeCount];          // m/s
    double rideLegTime[rideModeCount];              // s
    double rideAccele[rideModeCount];               // m/s2
    double rideGravity[rideModeCount];              // G
    double rideDistance[rideModeCount];             // m
    double rideInclination[rideModeCount];          // %
    double brakingInclination[brakingPatternCount]; // %
    int32_t ridePowerBase[rideModeCount];           // Stage
    double intervalDistance;                        // m
    double totalDistance;                           // m
    int32_t startGearMode[gearedStartCount];        // StartGearMode
    int32_t startGearIndex[gearedStartCount];       // row of the gear table
    double initialKickTime;                         // s
    int32_t inclinationLimit;                       // InclinationLimit
    int32_t reserved83C;
    double corneringRadius;                      // m
    double safetyMargin;                         // ratio of friction
    int32_t intensionCase;                       // IntensionCase
    int32_t intensionFirst[intensionCaseCount];  // min, km
    int32_t intensionSecond[intensionCaseCount]; // s, m
    int32_t reserved864;

    // Preferences, page "GPS data"
    double thresholdSpeed; // kph
    int32_t detectBraking;
    int32_t limitPowerPrediction;
    double thresholdPower; // W

    // Recorded rides and FIT tools
    int32_t expressSmoothing;
    int32_t reserved884;
    double expressUnrealInclination; // %
    double expressUnrealAccele;      // m/s2
    int32_t flatCourse;
    int32_t analyseSmoothing;
    double analyseUnrealInclination; // %
    double analyseUnrealAccele;      // m/s2
    double analyseWindSpeed;         // m/s
    double averageTemperature;       // Cel
    int32_t analyseWindDirection;    // deg
    int32_t predictCadence;
    int32_t predictPower;
    int32_t analysePowerBase;  // Stage
    int32_t reserved8D0;       // kept with the analyse section, no reader
    int32_t expressFieldsData; // at one stroke
    OutputChoice createOutput; // create a FIT file analysed, at one stroke
    OutputChoice combineOutput;
    OutputChoice convertOutput;
    int32_t convertSpeedUnit; // write speeds in m/s that stand in kph
    int32_t addLap;
    int32_t addSession;
    int32_t addActivity;
    OutputChoice addOutput;
    OutputChoice divideOutput;
    int32_t excludeLap;
    int32_t excludeSession;
    int32_t excludeActivity;
    OutputChoice excludeOutput;
    OutputChoice timestampOutput;
    int32_t timestampTruncate;
    int32_t timestampOffset; // s
    int32_t reserved96C;
};

struct ModelState {
#include "core/profile_and_condition_fields.inc"

    int32_t currentFrontTooth; // of the last run, as the weight, grip and heat below; no operation reads them
    int32_t currentRearTooth;
    int32_t gearCount;       // rows in the gear table
    double tyresWeight;      // g
    double frontWeightRatio; // share of the weight on the front wheel
    double rearWeightRatio;
    double effectiveRolling;  // rolling coefficient in force
    double effectiveFriction; // friction coefficient in force
    double frontFrictionShare;
    double rearFrictionShare;
    double frontCircumference;           // mm, rolling
    double rearCircumference;            // mm, rolling
    double brakeSurfaceArea[wheelCount]; // m2, heat radiating area of rim or rotor
    double brakeHeat[wheelCount];        // J
    double brakeRadiated[wheelCount];    // J
    double brakeTemperature[wheelCount]; // Cel
};

// Writes every default into a block and clears all else, its flags included.
void setDefaults(ParameterBlock& block);
ParameterBlock defaultBlock();

// Each commit copies the sections whose "save as default" flag stands in working to saved, and clears those flags.
// commitProfile copies profileFileName always, and the calibration with the page of the rider; the brake entries move
// for the selected brake types alone.
void commitProfile(ParameterBlock& saved, ParameterBlock& working);
void commitCondition(ParameterBlock& saved, ParameterBlock& working);
void commitTheory(ParameterBlock& saved, ParameterBlock& working);
void commitRide(ParameterBlock& saved, ParameterBlock& working);
void commitGps(ParameterBlock& saved, ParameterBlock& working);
void commitPreference(ParameterBlock& saved, ParameterBlock& working);

// Puts the profile (condition) of a block into the state of a model. applyProfile and fetchProfile also let the theory
// cadences of the block follow the rider's.
void applyProfile(ModelState& state, ParameterBlock& working);
void applyCondition(ModelState& state, const ParameterBlock& working);
// The whole block into the state, the brake entries of both types included: at the start of the program.
void startModel(ModelState& state, ParameterBlock& working);
// The mirror of applyProfile, after a profile file was read into the state.
void fetchProfile(ParameterBlock& block, const ModelState& state);
// Profile and condition of a model into a block, as its pages would show them.
void fetchFigures(ParameterBlock& block, const ModelState& state);

} // namespace torvane
