#include "gps/track_brake_heat.h"

#include "gps/analysis.h"
#include "model/constants.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

struct WheelFields {
    double BrakeRecord::*temperature, BrakeRecord::*friction, BrakeRecord::*radiate, BrakeRecord::*stored;
};
constexpr WheelFields wheelFields[2] = {
    {&BrakeRecord::frontTemperature, &BrakeRecord::frontFriction, &BrakeRecord::frontRadiate,
     &BrakeRecord::frontStored},
    {&BrakeRecord::rearTemperature, &BrakeRecord::rearFriction, &BrakeRecord::rearRadiate, &BrakeRecord::rearStored},
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
double applyBrake(const GpsRecord& record, BrakeRecord& brakes, bool braking, double netPower, double share)
{
    if (!braking) {
        brakes.force = 0;
        return 0;
    }
    if (record.speed > 0)
        brakes.force = std::fabs(netPower / (record.speed * standardGravity));
    return std::fabs(netPower * share);
}

void brakeHeatStepOf(const TrackModel& track, int wheel, const GpsRecord& record, uint32_t seconds,
                     std::span<BrakeRecord, 2> step, double frictionRate, bool braking)
{
    const WheelFields& fields = wheelFields[wheel];
    const BrakeRecord& last = step[0];
    BrakeRecord& own = step[1];
    Brake brake = {.track = track,
                   .wheel = wheel,
                   .ambient = record.temperature,
                   .convection = record.speed * 0.5 + 7.0,
                   .capacity = brakeHeatCapacity(track.model, track.materials, wheel),
                   .stored = last.*fields.stored,
                   .radiated = 0,
                   .temperature = own.*fields.temperature};
    own.*fields.friction = seconds * frictionRate;
    if (!braking && brake.stored == 0)
        brake.temperature = brake.ambient;
    else
        runBrake(brake, frictionRate, seconds);
    own.*fields.radiate = brake.radiated;
    own.*fields.stored = brake.stored;
    own.*fields.temperature = brake.ambient > brake.temperature ? brake.ambient : brake.temperature;
}

BrakeRecord coldAt(double temperature)
{
    BrakeRecord cold = {};
    for (const WheelFields& fields : wheelFields)
        cold.*fields.temperature = temperature;
    return cold;
}

} // namespace

void brakeHeatStep(const TrackModel& track, std::span<const GpsRecord> records, std::span<BrakeRecord> brakes,
                   double netPower, size_t index)
{
    const GpsRecord& record = records[index];
    uint32_t seconds = secondsSince(records[index - 1], record);
    bool braking = record.power == 0 && netPower < 0;
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        double share = wheel == 0 ? track.now.frontFrictionShare : track.now.rearFrictionShare;
        double frictionRate = applyBrake(record, brakes[index], braking, netPower, share);
        brakeHeatStepOf(track, wheel, record, seconds, brakes.subspan(index - 1).first<2>(), frictionRate, braking);
    }
}

void trackBrakeHeat(TrackModel& track, std::span<GpsRecord> records, BrakeRecords& brakes)
{
    brakes.assign(records.size(), {});
    if (!track.settings.predictPower || records.empty())
        return;
    brakes[0] = coldAt(records[0].temperature);
    for (size_t i = 1; i < records.size(); ++i) {
        if (track.analysisFlags & analysisOfTheRoad)
            prepareModelForRecord(track, records[i]); // else slope, wind and air are those of the last row
        brakeHeatStep(track, records, brakes, powerAskedBy(track, records[i], speedOfStep(track, records, i)), i);
    }
}

} // namespace torvane
