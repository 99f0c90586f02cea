#include "gps/power_split.h"

#include "gps/prediction.h"
#include "model/assist.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

double drivetrainLoss(TrackModel& track, double speed, double thrust)
{
    if (!(thrust > 0) || !(speed > 0))
        return 0;
    double ratio = track.model.gearTable[usualGear(track.model, speed)].ratio;
    double cadence = cadenceInGear(track.model, speed, ratio);
    driveStagesFromThrust(track.model, track.now, speed, thrust, radiansPerSecond(wheelRpmAt(track.model, speed)),
                          radiansPerSecond(cadence));
    double loss = stagePower(track.now, track.settings.analysePowerBase) - thrust;
    return std::isfinite(loss) ? loss : 0;
}

PowerSplit splitOf(TrackModel& track, GpsRecord record, double speed)
{
    prepareModelForRecord(track, record);
    PowerSplit split = {};
    double thrust = powerAskedBy(track, record, speed);
    split[sinkAir] = track.now.airDragPower;
    split[sinkRolling] = track.now.rollingPower;
    split[sinkSlope] = track.now.slopePower;
    split[sinkAcceleration] = thrust - resistanceAtVelocity(track.model, track.now, speed).value;
    split[sinkDrivetrain] = drivetrainLoss(track, speed, thrust);
    split[sinkBrakes] = std::max(0.0, -thrust);
    return split;
}

} // namespace

std::vector<PowerSplit> powerSplitOf(const Model& model, const Analysis& analysis, const FitSummary& summary)
{
    TrackModel track = startTrackModel(model, analysis.settings, summary, analysis.flags);
    std::vector<PowerSplit> splits;
    splits.reserve(analysis.records.size());
    for (size_t i = 0; i < analysis.records.size(); ++i)
        splits.push_back(splitOf(track, analysis.records[i], speedOfStep(track, analysis.records, i)));
    return splits;
}

} // namespace torvane
