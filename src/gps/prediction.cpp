#include "gps/prediction.h"

#include "core/parameter_block.h"
#include "gps/analysis.h"
#include "gps/smoothing.h"
#include "gps/track_brake_heat.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/derived.h"
#include "model/gear_table.h"
#include "model/resistance.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double flatCourseAltitude = 50.0; // m, of all flat courses without temperatures

void setSlope(TrackModel& track, double inclination)
{
    track.now.inclination = inclination;
    updateLoadAndGrip(track.model, track.now, 0);
    setLoads(track.model, track.now);
}

void setAirAt(TrackModel& track, double temperature, double altitude)
{
    setAir(track.now, airPressureAt(temperature, altitude), temperature);
}

// The rows hold the file's signed byte without its sign, and 127 where there is none. That is how it is shown; over a
// winter's road the air of 253 Cel would carry nobody.
double roadTemperatureOf(const TrackModel& track, const GpsRecord& record)
{
    constexpr double missing = 127;
    if (record.temperature == missing)
        return track.airTemperature;
    return record.temperature > missing ? record.temperature - 256 : record.temperature;
}

double airTemperatureOf(const ParameterBlock& settings, const FitSummary& summary, uint32_t analysisFlags)
{
    bool ofSummary = (analysisFlags & analysisAverageTemperature) != 0;
    return ofSummary ? summary.avgTemperature : settings.averageTemperature;
}

// The cadence in the gear that comes nearest to the usual one at a speed; no limit holds it.
double cadenceAt(const Model& model, double speed)
{
    return cadenceInGear(model, speed, model.gearTable[usualGear(model, speed)].ratio);
}

// What the losses between road and pedals go with. A second in which the pedals are set going, or come to rest, counts
// so few turns that the torque of its power would take all of that power, and more.
double crankCadenceOf(const TrackModel& track, const GpsRecord& record)
{
    constexpr double leastTurning = 20; // rpm
    bool barelyTurns = record.cadence > 0 && record.cadence < leastTurning;
    return track.now.physics == Physics::ofTheRoad && barelyTurns ? cadenceAt(track.model, record.speed)
                                                                  : record.cadence;
}

// Turns the power at the tyre contact, as the row holds it, into that of the stage asked for.
void convertToPowerBase(TrackModel& track, GpsRecord& record, double speed)
{
    double wheelSpeed = radiansPerSecond(wheelRpmAt(track.model, speed));
    double crankSpeed = radiansPerSecond(crankCadenceOf(track, record));
    driveStagesFromThrust(track.model, track.now, speed, record.power, wheelSpeed, crankSpeed);
    double power = stagePower(track.now, track.settings.analysePowerBase);
    record.power = std::isfinite(power) ? power : 0;
}

// W below which the road's rider rests: nobody pedals for so little, and the noise of the heights of who coasts would
// be taken for it.
double restsBelow(const TrackModel& track)
{
    return track.now.physics == Physics::ofTheRoad ? 10 : 0;
}

void predictPowerOf(TrackModel& track, GpsRecord& record, double speed)
{
    record.power = powerAskedBy(track, record, speed);
    if (record.power <= restsBelow(track)) {
        record.power = 0;
        record.cadence = 0; // who coasts does not pedal
        return;
    }
    convertToPowerBase(track, record, speed);
    if (track.settings.limitPowerPrediction && record.power > track.settings.thresholdPower)
        record.power = track.settings.thresholdPower;
}

// Of the road by a plain mean, which keeps the work: a trimmed one takes off what stands beside seconds of rest.
void smoothPowers(std::span<GpsRecord> records, int window, uint32_t analysisFlags)
{
    if (analysisFlags & analysisOfTheRoad)
        averageField(records, &GpsRecord::power, window);
    else
        smoothPower(records, window);
}

void smoothPredictions(std::span<GpsRecord> records, const ParameterBlock& settings, uint32_t analysisFlags)
{
    int window = chooseWindow(records);
    if (settings.predictCadence)
        smoothCadence(records, window);
    if (settings.predictPower)
        smoothPowers(records, window, analysisFlags);
}

} // namespace

double speedOfStep(const TrackModel& track, std::span<const GpsRecord> records, size_t i)
{
    bool first = i == 0 || records[i].sector == 0 || records[i - 1].sector != records[i].sector;
    if (first || (track.analysisFlags & analysisOfTheRoad) == 0)
        return records[i].speed;
    return (records[i - 1].speed + records[i].speed) / 2;
}

double powerAskedBy(TrackModel& track, const GpsRecord& record, double speed)
{
    double steady = resistanceAtVelocity(track.model, track.now, speed).value;
    if (track.analysisFlags & analysisSteady)
        return steady;
    return steady + record.acceleration * speed * track.model.state.inertialWeight;
}

TrackModel startTrackModel(const Model& model, const ParameterBlock& settings, const FitSummary& summary,
                           uint32_t analysisFlags)
{
    TrackModel track = {model, settings, analysisFlags, brakeMaterialsOf(settings),
                        airTemperatureOf(settings, summary, analysisFlags)};
    track.now.physics = analysisFlags & analysisOfTheRoad ? Physics::ofTheRoad : Physics::classic;
    setAir(track.now, model.state.hectoPascal, model.state.temperature); // until a row knows better
    if ((analysisFlags & analysisFlat) == 0)
        return track;
    setSlope(track, 0);
    if ((analysisFlags & analysisRecordTemperature) == 0)
        setAirAt(track, track.airTemperature, flatCourseAltitude);
    return track;
}

void prepareModelForRecord(TrackModel& track, GpsRecord& record)
{
    const ParameterBlock& settings = track.settings;
    if (settings.analyseWindSpeed != 0)
        track.now.headWind =
            std::cos((record.heading - settings.analyseWindDirection) * pi / 180) * settings.analyseWindSpeed;
    if ((track.analysisFlags & analysisFlat) == 0)
        setSlope(track, record.inclination);
    if ((track.analysisFlags & analysisRecordTemperature) == 0) {
        record.temperature = track.airTemperature;
        if (track.analysisFlags & (analysisNoTimestamps | analysisFlat))
            return; // the air stays
    } else if (track.analysisFlags & analysisOfTheRoad) {
        record.temperature = roadTemperatureOf(track, record);
    }
    setAirAt(track, record.temperature, record.altitude);
}

void predictTrack(TrackModel& track, std::span<GpsRecord> records, Progress* progress)
{
    size_t nextPercent = 0; // row from which the next whole percent is done
    for (size_t i = 0; i < records.size(); ++i) {
        prepareModelForRecord(track, records[i]);
        bool unknown = track.settings.predictPower && std::isnan(records[i].cadence); // but a drivetrain needs one
        if (track.settings.predictCadence || unknown)
            records[i].cadence = cadenceAt(track.model, records[i].speed);
        if (track.settings.predictPower)
            predictPowerOf(track, records[i], speedOfStep(track, records, i));
        if (i >= nextPercent) {
            size_t percent = 100 * i / records.size();
            reportProgress(progress, static_cast<int>(percent));
            nextPercent = ((percent + 1) * records.size() + 99) / 100;
        }
    }
}

void predictAndFinish(const Model& model, GpsRecords& records, const ParameterBlock& settings,
                      const FitSummary& summary, uint32_t analysisFlags, Progress* progress)
{
    TrackModel track = startTrackModel(model, settings, summary, analysisFlags);
    predictTrack(track, records, progress);
    if (analysisFlags & analysisSmoothing)
        smoothPredictions(records, settings, analysisFlags);
    if (settings.detectBraking)
        trackBrakeHeat(track, records);
}

} // namespace torvane
