#include "gps/power_split.h"

#include "gps/prediction.h"
#include "model/assist.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"

#include <cmath>

namespace torvane {

namespace {

double drivetrainLoss(TrackModel& track, const GpsRecord& record, double thrust)
{
    if (!(thrust > 0) || !(record.speed > 0))
        return 0;
    double ratio = track.model.gearTable[usualGear(track.model, record.speed)].ratio;
    double cadence = cadenceInGear(track.model, record.speed, ratio);
    driveStagesFromThrust(track.model, track.now, record.speed, thrust,
                          radiansPerSecond(wheelRpmAt(track.model, record.speed)), radiansPerSecond(cadence));
    double loss = stagePower(track.now, track.settings.analysePowerBase) - thrust;
    return std::isfinite(loss) ? loss : 0;
}

PowerSplit splitOf(TrackModel& track, GpsRecord record)
{
    prepareModelForRecord(track, record);
    PowerSplit split = {};
    double thrust = powerAskedBy(track, record);
    split[sinkAir] = track.now.airDragPower;
    split[sinkRolling] = track.now.rollingPower;
    split[sinkSlope] = track.now.slopePower;
    split[sinkAcceleration] = thrust - resistanceAtVelocity(track.model, track.now, record.speed).value;
    split[sinkDrivetrain] = drivetrainLoss(track, record, thrust);
    return split;
}

} // namespace

std::vector<PowerSplit> powerSplitOf(const Model& model, const Analysis& analysis, const FitSummary& summary)
{
    TrackModel track = startTrackModel(model, analysis.settings, summary, analysis.flags);
    std::vector<PowerSplit> splits;
    splits.reserve(analysis.records.size());
    for (const GpsRecord& record : analysis.records)
        splits.push_back(splitOf(track, record));
    return splits;
}

} // namespace torvane
