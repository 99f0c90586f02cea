#include "gps/prediction.h"

#include "core/parameter_block.h"
#include "core/screens.h"
#include "gps/analysis.h"
#include "gps/smoothing.h"
#include "gps/track_brake_heat.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/derived.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/run_state.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double flatCourseAltitude = 50.0; // m, of all flat courses without temperatures

void setSlope(double inclination)
{
    runState.inclination = inclination;
    updateLoadAndGrip(0);
    setLoads();
}

void setAir(double temperature, double altitude)
{
    runState.airPressureRatio = airPressureAt(temperature, altitude) / seaLevelPressure;
}

void chooseTemperature(const ParameterBlock& settings, const FitSummary& summary, uint32_t analysisFlags)
{
    bool ofRecords = (analysisFlags & analysisRecordTemperature) != 0;
    bool ofSummary = (analysisFlags & analysisAverageTemperature) != 0;
    if (!ofRecords && !ofSummary)
        runState.airTemperature = settings.averageTemperature;
    else if (!ofRecords)
        runState.airTemperature = summary.avgTemperature;
}

// The cadence in the gear that comes nearest to the usual one at a speed; no limit holds it.
double cadenceAt(double speed)
{
    const ModelState& m = modelState;
    double wanted = (speed * 60000.0) / (m.cadenceUsual * m.rearCircumference);
    return (speed * 60000.0) / (gearTable[nearestGear(wanted)].ratio * m.rearCircumference);
}

// Turns the power at the tyre contact, as the row holds it, into that of the stage asked for.
void convertToPowerBase(GpsRecord& record)
{
    double wheelSpeed = radiansPerSecond(wheelRpmAt(record.speed));
    double crankSpeed = radiansPerSecond(record.cadence);
    driveStagesFromThrust(record.speed, record.power, wheelSpeed, crankSpeed);
    double power = stagePower(runState.powerBaseIndex);
    record.power = std::isfinite(power) ? power : 0;
}

void predictPowerOf(GpsRecord& record, const ParameterBlock& settings, uint32_t analysisFlags)
{
    record.power = powerAskedBy(record, analysisFlags);
    if (record.power <= 0) {
        record.power = 0;
        record.cadence = 0; // who coasts does not pedal
        return;
    }
    convertToPowerBase(record);
    if (settings.limitPowerPrediction && record.power > settings.thresholdPower)
        record.power = settings.thresholdPower;
}

void smoothPredictions(std::span<GpsRecord> records, const ParameterBlock& settings)
{
    int window = chooseWindow(records);
    if (settings.predictCadence)
        smoothCadence(records, window);
    if (settings.predictPower)
        smoothPower(records, window);
}

} // namespace

double powerAskedBy(const GpsRecord& record, uint32_t analysisFlags)
{
    double steady = resistanceAtVelocity(record.speed).value;
    if (analysisFlags & analysisSteady)
        return steady;
    return steady + record.acceleration * record.speed * modelState.inertialWeight;
}

void prepareModelForTrack(const ParameterBlock& settings, uint32_t analysisFlags)
{
    runState.headWind = 0;
    runState.airPressureRatio = modelState.hectoPascal / seaLevelPressure; // until a row knows better
    runState.powerBaseIndex = settings.analysePowerBase;
    if ((analysisFlags & analysisFlat) == 0)
        return;
    setSlope(0);
    if ((analysisFlags & analysisRecordTemperature) == 0)
        setAir(runState.airTemperature, flatCourseAltitude);
}

void prepareModelForRecord(std::span<GpsRecord> records, const ParameterBlock& settings, uint32_t analysisFlags,
                           size_t index)
{
    GpsRecord& record = records[index];
    if (settings.analyseWindSpeed != 0)
        runState.headWind =
            std::cos((record.heading - settings.analyseWindDirection) * pi / 180) * settings.analyseWindSpeed;
    if ((analysisFlags & analysisFlat) == 0)
        setSlope(record.inclination);
    if ((analysisFlags & analysisRecordTemperature) == 0) {
        record.temperature = runState.airTemperature;
        if (analysisFlags & (analysisNoTimestamps | analysisFlat))
            return; // the air stays
    }
    setAir(record.temperature, record.altitude);
}

void predictTrack(std::span<GpsRecord> records, const ParameterBlock& settings, uint32_t analysisFlags)
{
    prepareModelForTrack(settings, analysisFlags);
    for (size_t i = 0; i < records.size(); i++) {
        prepareModelForRecord(records, settings, analysisFlags, i);
        if (settings.predictCadence)
            records[i].cadence = cadenceAt(records[i].speed);
        if (settings.predictPower)
            predictPowerOf(records[i], settings, analysisFlags);
        reportProgress(static_cast<int>(100 * i / records.size()));
    }
}

void predictAndFinish(GpsRecords& records, const ParameterBlock& settings, const FitSummary& summary,
                      uint32_t analysisFlags)
{
    chooseTemperature(settings, summary, analysisFlags);
    predictTrack(records, settings, analysisFlags);
    if (analysisFlags & analysisSmoothing)
        smoothPredictions(records, settings);
    if (settings.detectBraking)
        trackBrakeHeat(records, settings, analysisFlags);
}

} // namespace torvane
