#include "gps/track_brake_heat.h"

#include "gps/analysis.h"
#include "gps/smoothing.h"
#include "model/constants.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

struct WheelFields {
    RecordField temperature, friction, radiate, stored;
};
constexpr WheelFields wheelFields[2] = {
    {&GpsRecord::frontBrakeTemperature, &GpsRecord::frontFriction, &GpsRecord::frontRadiate, &GpsRecord::frontStored},
    {&GpsRecord::rearBrakeTemperature, &GpsRecord::rearFriction, &GpsRecord::rearRadiate, &GpsRecord::rearStored},
};

// Brakes come to rest within the hour. What is left of a longer step goes on as its last second did, so that a clock
// that jumps by decades costs no time.
constexpr uint32_t restAfter = 86400; // s

uint32_t secondsSince(const GpsRecord& last, const GpsRecord& record)
{
    return record.timestamp > last.timestamp ? record.timestamp - last.timestamp : 0;
}

struct Brake {
    const TrackModel& track;
    int wheel;
    double ambient;     // Cel
    double convection;  // W/m2K
    double capacity;    // J/K
    double stored;      // J
    double radiated;    // J, of this step
    double temperature; // Cel
};

double temperatureOf(const Brake& brake)
{
    return brake.stored / brake.capacity + brake.ambient;
}

// One second: the heat of the friction in, the loss out. Returns the loss in J.
double brakeSecond(Brake& brake, double frictionRate)
{
    brake.stored += frictionRate;
    brake.temperature = temperatureOf(brake);
    if (!(brake.temperature > brake.ambient))
        return 0;
    double loss = brakeLossRate(brake.track.model, brake.track.materials, brake.wheel, brake.temperature, brake.ambient,
                                brake.convection);
    double lost = brake.stored > loss ? loss : brake.stored;
    brake.stored = brake.stored > loss ? brake.stored - loss : 0;
    brake.radiated += lost;
    brake.temperature = temperatureOf(brake);
    return lost;
}

void runBrake(Brake& brake, double frictionRate, uint32_t seconds)
{
    double lost = 0;
    for (uint32_t i = 0; i < std::min(seconds, restAfter); ++i)
        lost = brakeSecond(brake, frictionRate);
    if (seconds > restAfter)
        brake.radiated += lost * (seconds - restAfter);
}

// Friction in W of one wheel, and the braking force of the row in kgf, the same for both wheels.
double applyBrake(GpsRecord& record, bool braking, double netPower, double share)
{
    if (!braking) {
        record.brakeForce = 0;
        return 0;
    }
    if (record.speed > 0)
        record.brakeForce = std::fabs(netPower / (record.speed * standardGravity));
    return std::fabs(netPower * share);
}

void brakeHeatStepOf(const TrackModel& track, int wheel, const GpsRecord& last, GpsRecord& record, double frictionRate,
                     bool braking)
{
    const WheelFields& fields = wheelFields[wheel];
    uint32_t seconds = secondsSince(last, record);
    Brake brake = {.track = track,
                   .wheel = wheel,
                   .ambient = record.temperature,
                   .convection = record.speed * 0.5 + 7.0,
                   .capacity = brakeHeatCapacity(track.model, track.materials, wheel),
                   .stored = last.*fields.stored,
                   .radiated = 0,
                   .temperature = record.*fields.temperature};
    record.*fields.friction = seconds * frictionRate;
    if (!braking && brake.stored == 0)
        brake.temperature = brake.ambient;
    else
        runBrake(brake, frictionRate, seconds);
    record.*fields.radiate = brake.radiated;
    record.*fields.stored = brake.stored;
    record.*fields.temperature = brake.ambient > brake.temperature ? brake.ambient : brake.temperature;
}

void startCold(GpsRecord& record)
{
    for (const WheelFields& fields : wheelFields) {
        record.*fields.stored = 0;
        record.*fields.temperature = record.temperature;
    }
}

} // namespace

void brakeHeatStep(const TrackModel& track, std::span<GpsRecord> records, double netPower, size_t index)
{
    const GpsRecord& last = records[index - 1];
    GpsRecord& record = records[index];
    bool braking = record.power == 0 && netPower < 0;
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        double share = wheel == 0 ? track.now.frontFrictionShare : track.now.rearFrictionShare;
        double frictionRate = applyBrake(record, braking, netPower, share);
        brakeHeatStepOf(track, wheel, last, record, frictionRate, braking);
    }
}

void trackBrakeHeat(TrackModel& track, std::span<GpsRecord> records)
{
    if (!track.settings.predictPower || records.empty())
        return;
    startCold(records[0]);
    for (size_t i = 1; i < records.size(); ++i) {
        if (track.analysisFlags & analysisOfTheRoad)
            prepareModelForRecord(track, records[i]); // else slope, wind and air are those of the last row
        brakeHeatStep(track, records, powerAskedBy(track, records[i], speedOfStep(track, records, i)), i);
    }
}

} // namespace torvane
