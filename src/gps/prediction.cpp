#include "gps/prediction.h"

#include "core/parameter_block.h"
#include "gps/analysis.h"
#include "gps/smoothing.h"
#include "gps/track_brake_heat.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/derived.h"
#include "model/gear_walk.h"
#include "model/resistance.h"
#include "model/road_points.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace torvane {

namespace {

constexpr double flatCourseAltitude = 50.0; // m, of all flat courses without temperatures

void setSlope(TrackModel& track, double inclination)
{
    track.now.inclination = inclination;
    updateLoadAndGrip(track.model, track.now, 0);
    setLoads(track.model, track.now);
}

// A quarter of the rows of a usual ride, and most of some, have the air of the row before.
void setAirAt(TrackModel& track, double temperature, double altitude)
{
    if (temperature == track.lastTemperature && altitude == track.lastAltitude)
        return;
    track.lastTemperature = temperature;
    track.lastAltitude = altitude;
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

bool isFlat(const TrackModel& track)
{
    return (track.analysisFlags & analysisFlat) != 0;
}

// A row has the temperature of the air unless it has its own.
void setTemperature(const TrackModel& track, GpsRecord& record)
{
    if ((track.analysisFlags & analysisRecordTemperature) == 0)
        record.temperature = track.airTemperature;
    else if (track.analysisFlags & analysisOfTheRoad)
        record.temperature = roadTemperatureOf(track, record);
}

void setWind(TrackModel& track, const GpsRecord& record)
{
    const ParameterBlock& settings = track.settings;
    if (settings.analyseWindSpeed != 0)
        track.now.headWind =
            std::cos((record.heading - settings.analyseWindDirection) * pi / 180) * settings.analyseWindSpeed;
}

void setAirOf(TrackModel& track, const GpsRecord& record)
{
    bool airStays = (track.analysisFlags & analysisRecordTemperature) == 0 &&
                    (track.analysisFlags & (analysisNoTimestamps | analysisFlat)) != 0;
    if (!airStays)
        setAirAt(track, record.temperature, record.altitude);
}

double airTemperatureOf(const ParameterBlock& settings, const FitSummary& summary, uint32_t analysisFlags)
{
    bool ofSummary = (analysisFlags & analysisAverageTemperature) != 0;
    return ofSummary ? summary.avgTemperature : settings.averageTemperature;
}

// The cadence in the gear that comes nearest to the usual one at a speed; no limit holds it.
double cadenceAt(TrackModel& track, double speed)
{
    double ratio = nearestRatio(track.model, usualRatio(track.model, speed), track.gearPlace);
    return cadenceInGear(track.model, speed, ratio);
}

// What the losses between road and pedals go with. A second in which the pedals are set going, or come to rest, counts
// so few turns that the torque of its power would take all of that power, and more.
double crankCadenceOf(TrackModel& track, const GpsRecord& record)
{
    constexpr double leastTurning = 20; // rpm
    bool barelyTurns = record.cadence > 0 && record.cadence < leastTurning;
    return track.now.physics == Physics::ofTheRoad && barelyTurns ? cadenceAt(track, record.speed) : record.cadence;
}

// Turns the powers at the tyre contact into those of the stage asked for.
void takeStages(TrackModel& track, std::span<const GpsRecord> rows, RoadPoints& points)
{
    const Model& model = track.model;
    int stage = track.settings.analysePowerBase;
    for (size_t i = 0; i < rows.size(); ++i)
        points.cadence[i] = crankCadenceOf(track, rows[i]);
    if (model.state.motorLocation <= motorNone)
        return takeStagePowers(model, stage, points);
    for (size_t i = 0; i < rows.size(); ++i) {
        driveStagesFromThrust(model, track.now, points.velocity[i], points.thrustPower[i],
                              radiansPerSecond(wheelRpmAt(model, points.velocity[i])),
                              radiansPerSecond(points.cadence[i]));
        points.stagePower[i] = stagePower(track.now, stage);
    }
}

// W below which the road's rider rests: nobody pedals for so little, and the noise of the heights of who coasts would
// be taken for it.
double restsBelow(const TrackModel& track)
{
    return track.now.physics == Physics::ofTheRoad ? 10 : 0;
}

void setPower(const TrackModel& track, GpsRecord& record, double thrust, double power)
{
    if (thrust <= restsBelow(track)) {
        record.power = 0;
        record.cadence = 0; // who coasts does not pedal
        return;
    }
    record.power = std::isfinite(power) ? power : 0;
    if (track.settings.limitPowerPrediction && record.power > track.settings.thresholdPower)
        record.power = track.settings.thresholdPower;
}

double withAcceleration(const TrackModel& track, const GpsRecord& record, double speed, double steady)
{
    if (track.analysisFlags & analysisSteady)
        return steady;
    return steady + record.acceleration * speed * track.model.state.inertialWeight;
}

// The air of a few rows: a power for each, of which a loop so short has several under way.
void takeAir(TrackModel& track, std::span<const GpsRecord> rows, RoadPoints& points)
{
    for (size_t i = 0; i < rows.size(); ++i) {
        setAirOf(track, rows[i]);
        points.airRatio[i] = track.now.airRatio;
    }
}

// The powers of a few rows, of whose roads the points hold wind, slope and speed.
void predictPowers(TrackModel& track, std::span<GpsRecord> rows, RoadPoints& points)
{
    takeAir(track, rows, points);
    takeSlopes(points);
    takeLoads(track.model, points);
    takeThrustPowers(track.model, track.now.physics, points);
    for (size_t i = 0; i < rows.size(); ++i)
        points.thrustPower[i] = withAcceleration(track, rows[i], points.velocity[i], points.thrustPower[i]);
    takeStages(track, rows, points);
    for (size_t i = 0; i < rows.size(); ++i)
        setPower(track, rows[i], points.thrustPower[i], points.stagePower[i]);
}

// Cadence of a row, and the road that its power is for; the power itself is left to those of a few.
void predictRow(TrackModel& track, std::span<GpsRecord> records, size_t i, RoadPoints& points, size_t point)
{
    GpsRecord& record = records[i];
    bool power = track.settings.predictPower != 0;
    setTemperature(track, record);
    if (track.settings.predictCadence || (power && std::isnan(record.cadence))) // a drivetrain needs one
        record.cadence = cadenceAt(track, record.speed);
    if (!power)
        return;
    setWind(track, record);
    if (!isFlat(track))
        track.now.inclination = record.inclination;
    points.headWind[point] = track.now.headWind;
    points.inclination[point] = track.now.inclination;
    points.velocity[point] = speedOfStep(track, records, i);
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
    return withAcceleration(track, record, speed, resistanceAtVelocity(track.model, track.now, speed).value);
}

TrackModel startTrackModel(const Model& model, const ParameterBlock& settings, const FitSummary& summary,
                           uint32_t analysisFlags)
{
    TrackModel track = {model, settings, analysisFlags, brakeMaterialsOf(settings),
                        airTemperatureOf(settings, summary, analysisFlags)};
    track.now.physics = analysisFlags & analysisOfTheRoad ? Physics::ofTheRoad : Physics::classic;
    setAir(track.now, model.state.hectoPascal, model.state.temperature); // until a row knows better
    if (!isFlat(track))
        return track;
    setSlope(track, 0);
    if ((analysisFlags & analysisRecordTemperature) == 0)
        setAirAt(track, track.airTemperature, flatCourseAltitude);
    return track;
}

void prepareModelForRecord(TrackModel& track, GpsRecord& record)
{
    if (!isFlat(track))
        setSlope(track, record.inclination);
    setTemperature(track, record);
    setWind(track, record);
    setAirOf(track, record);
}

TrackPass predictTrack(TrackModel& track, std::span<GpsRecord> records, Progress* progress)
{
    size_t done = 0, nextPercent = 0; // row from which the next whole percent is done
    return [=, &track, points = RoadPoints()](size_t ready) mutable {
        for (; done < ready; done += points.count) {
            points.count = std::min(RoadPoints::room, ready - done);
            for (size_t point = 0; point < points.count; ++point)
                predictRow(track, records, done + point, points, point);
            if (track.settings.predictPower)
                predictPowers(track, records.subspan(done, points.count), points);
            if (done >= nextPercent) {
                size_t percent = 100 * done / records.size();
                reportProgress(progress, static_cast<int>(percent));
                nextPercent = ((percent + 1) * records.size() + 99) / 100;
            }
        }
        setSlope(track, track.now.inclination); // weights and grip of the last row
        return done;
    };
}

void predictAndFinish(const Model& model, GpsRecords& records, const ParameterBlock& settings,
                      const FitSummary& summary, uint32_t analysisFlags, Progress* progress, BrakeRecords* brakes)
{
    TrackModel track = startTrackModel(model, settings, summary, analysisFlags);
    bool smoothing = (analysisFlags & analysisSmoothing) != 0, ofTheRoad = (analysisFlags & analysisOfTheRoad) != 0;
    int window = smoothing ? chooseWindow(records) : 0;
    std::vector<TrackPass> passes = {predictTrack(track, records, progress)};
    if (smoothing && settings.predictCadence)
        passes.push_back(smoothCadence(records, window));
    if (smoothing && settings.predictPower && !ofTheRoad)
        passes.push_back(smoothPower(records, window));
    runPasses(records.size(), passes);
    // Powers of the road by a plain mean, which keeps the work: a trimmed one takes off what stands beside seconds of
    // rest.
    if (smoothing && settings.predictPower && ofTheRoad)
        averageField(records, &GpsRecord::power, window);
    if (settings.detectBraking && brakes)
        trackBrakeHeat(track, records, *brakes);
}

} // namespace torvane
