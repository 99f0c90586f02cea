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

void chooseTemperature(uint32_t analysisFlags)
{
    bool ofRecords = (analysisFlags & analysisRecordTemperature) != 0;
    bool ofSummary = (analysisFlags & analysisAverageTemperature) != 0;
    if (!ofRecords && !ofSummary)
        runState.airTemperature = workingBlock.averageTemperature;
    else if (!ofRecords)
        runState.airTemperature = fitSummary.avgTemperature;
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

void predictPowerOf(GpsRecord& record)
{
    record.power = knowsAcceleration() ? netPowerOf(record) : steadyPowerOf(record);
    if (record.power <= 0) {
        record.power = 0;
        record.cadence = 0; // who coasts does not pedal
        return;
    }
    convertToPowerBase(record);
    if (workingBlock.limitPowerPrediction && record.power > workingBlock.thresholdPower)
        record.power = workingBlock.thresholdPower;
}

void smoothPredictions(std::span<GpsRecord> records)
{
    int window = chooseWindow(records);
    if (workingBlock.predictCadence)
        smoothCadence(records, window);
    if (workingBlock.predictPower)
        smoothPower(records, window);
}

} // namespace

bool knowsAcceleration()
{
    return ((fieldPresence.timestampFlags | fieldPresence.motionFlags) & 1) != 0;
}

double steadyPowerOf(const GpsRecord& record)
{
    return resistanceAtVelocity(record.speed).value;
}

double netPowerOf(const GpsRecord& record)
{
    return steadyPowerOf(record) + record.acceleration * record.speed * modelState.inertialWeight;
}

void prepareModelForTrack(uint32_t analysisFlags)
{
    runState.headWind = 0;
    runState.airPressureRatio = modelState.hectoPascal / seaLevelPressure; // until a row knows better
    runState.powerBaseIndex = workingBlock.analysePowerBase;
    if ((analysisFlags & analysisFlat) == 0)
        return;
    setSlope(0);
    if ((analysisFlags & analysisRecordTemperature) == 0)
        setAir(runState.airTemperature, flatCourseAltitude);
}

void prepareModelForRecord(std::span<GpsRecord> records, uint32_t analysisFlags, size_t index)
{
    GpsRecord& record = records[index];
    const ParameterBlock& block = workingBlock;
    if (block.analyseWindSpeed != 0)
        runState.headWind = std::cos((record.heading - block.analyseWindDirection) * pi / 180) * block.analyseWindSpeed;
    if ((analysisFlags & analysisFlat) == 0)
        setSlope(record.inclination);
    if ((analysisFlags & analysisRecordTemperature) == 0) {
        record.temperature = runState.airTemperature;
        if (analysisFlags & (analysisNoTimestamps | analysisFlat))
            return; // the air stays
    }
    setAir(record.temperature, record.altitude);
}

void predictTrack(std::span<GpsRecord> records, uint32_t analysisFlags)
{
    prepareModelForTrack(analysisFlags);
    for (size_t i = 0; i < records.size(); i++) {
        prepareModelForRecord(records, analysisFlags, i);
        if (workingBlock.predictCadence)
            records[i].cadence = cadenceAt(records[i].speed);
        if (workingBlock.predictPower)
            predictPowerOf(records[i]);
        reportProgress(static_cast<int>(100 * i / records.size()));
    }
}

void predictAndFinish(GpsRecords& records, uint32_t analysisFlags)
{
    chooseTemperature(analysisFlags);
    predictTrack(records, analysisFlags);
    if (analysisFlags & analysisSmoothing)
        smoothPredictions(records);
    if (workingBlock.detectBraking)
        trackBrakeHeat(records);
}

} // namespace torvane
