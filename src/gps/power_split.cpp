#include "gps/power_split.h"

#include "core/choices.h"
#include "gps/prediction.h"
#include "model/assist.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// From the rider's stage and the motor to the road.
void setDrivetrain(TrackModel& track, double speed, double thrust, RowPowers& row)
{
    if (!(thrust > 0) || !(speed > 0))
        return;
    double ratio = track.model.gearTable[usualGear(track.model, speed)].ratio;
    double cadence = cadenceInGear(track.model, speed, ratio);
    driveStagesFromThrust(track.model, track.now, speed, thrust, radiansPerSecond(wheelRpmAt(track.model, speed)),
                          radiansPerSecond(cadence));
    double motor = track.model.state.motorLocation == motorNone ? 0 : track.now.assistPower;
    double loss = stagePower(track.now, track.settings.analysePowerBase) + motor - thrust;
    if (!std::isfinite(loss))
        return;
    row.sinks[sinkDrivetrain] = loss;
    row.motor = motor;
}

RowPowers splitOf(TrackModel& track, GpsRecord record, double speed)
{
    prepareModelForRecord(track, record);
    RowPowers row;
    PowerSplit& split = row.sinks;
    double thrust = powerAskedBy(track, record, speed);
    split[sinkAir] = track.now.airDragPower;
    split[sinkRolling] = track.now.rollingPower;
    split[sinkSlope] = track.now.slopePower;
    split[sinkAcceleration] = thrust - resistanceAtVelocity(track.model, track.now, speed).value;
    setDrivetrain(track, speed, thrust, row);
    split[sinkBrakes] = std::max(0.0, -thrust);
    return row;
}

} // namespace

std::vector<RowPowers> powerSplitOf(const Model& model, const Analysis& analysis, const FitSummary& summary)
{
    TrackModel track = startTrackModel(model, analysis.settings, summary, analysis.flags);
    std::vector<RowPowers> splits;
    splits.reserve(analysis.records.size());
    for (size_t i = 0; i < analysis.records.size(); ++i)
        splits.push_back(splitOf(track, analysis.records[i], speedOfStep(track, analysis.records, i)));
    return splits;
}

} // namespace torvane
