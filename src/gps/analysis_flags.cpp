// What a command is to do with a ride, from what the file holds and what the user set.
#include "gps/analysis.h"

#include "gps/analysed_fields.h"

namespace torvane {

namespace {

uint32_t positionFlag(const FieldPresence& presence)
{
    return (presence.positionFlags & eitherInRecords) == eitherInRecords ? analysisPosition : 0;
}

uint32_t motionFlag(const FieldPresence& presence)
{
    switch (presence.motionFlags & eitherInRecords) {
    case absentFromRecords:
        return analysisMotionFromPosition;
    case presentInRecords:
        return analysisSpeedFromDistance;
    case eitherInRecords:
        return presence.timestampFlags == 0 ? analysisNoTimestamps : 0;
    default:
        return 0;
    }
}

bool hasAltitude(const FieldPresence& presence)
{
    return (presence.altitudeFlags & presentInRecords) != 0;
}

uint32_t temperatureFlag(const FieldPresence& presence, Physics physics)
{
    if (presence.temperatureFlags == presentInRecords)
        return analysisRecordTemperature;
    if (physics == Physics::ofTheRoad && (presence.temperatureFlags & presentInRecords) != 0)
        return analysisRecordTemperature; // beside an average as well
    return presence.temperatureFlags == presentAverage ? analysisAverageTemperature : 0;
}

// No acceleration without timestamps and distances.
uint32_t steadyFlag(const FieldPresence& presence)
{
    return ((presence.timestampFlags | presence.motionFlags) & presentInRecords) == 0 ? analysisSteady : 0;
}

uint32_t predictionFlags(const ParameterBlock& block, const FieldPresence& presence)
{
    uint32_t flags = 0;
    if ((presence.cadenceFlags & presentInRecords) == 0 && block.predictCadence)
        flags |= analysisPredictCadence;
    if ((presence.powerFlags & presentInRecords) == 0 && block.predictPower)
        flags |= analysisPredictPower | static_cast<uint32_t>(block.analysePowerBase) << analysisPowerBaseShift;
    return flags;
}

} // namespace

uint32_t buildAnalysisFlags(const ParameterBlock& settings, const FieldPresence& presence, Physics physics)
{
    uint32_t flags = settings.analyseSmoothing ? analysisSmoothing : 0;
    if (physics == Physics::ofTheRoad)
        flags |= analysisOfTheRoad;
    flags |= positionFlag(presence) | motionFlag(presence) | temperatureFlag(presence, physics) | steadyFlag(presence);
    flags |= predictionFlags(settings, presence);
    if (!hasAltitude(presence) || settings.flatCourse)
        flags |= analysisFlat;
    return flags;
}

uint32_t expressAnalysisFlags(const ParameterBlock& settings, const FieldPresence& presence)
{
    return (settings.expressSmoothing ? analysisSmoothing : 0) | positionFlag(presence);
}

uint32_t addedFieldsOf(uint32_t analysisFlags)
{
    uint32_t added = 0;
    if (analysisFlags & (analysisMotionFromPosition | analysisSpeedFromDistance))
        added |= addSpeed;
    if (analysisFlags & analysisMotionFromPosition)
        added |= addDistance;
    if (analysisFlags & analysisPredictCadence)
        added |= addCadence;
    if (analysisFlags & analysisPredictPower)
        added |= addPower;
    if (analysisFlags & analysisPrepared)
        added |= writeByProfile;
    return added;
}

void applyAnalysisRules(ParameterBlock& block, const LoadedRide& ride, Physics physics)
{
    if (!hasAltitude(ride.presence))
        block.flatCourse = 1;
    if (physics == Physics::classic && ride.presence.temperatureFlags == presentAverage)
        block.analyseUnrealAccele =
            ride.summary.avgTemperature; // this slot, not averageTemperature: it has always been so
    if (ride.presence.cadenceFlags & presentInRecords)
        block.predictCadence = 0;
    if (ride.presence.powerFlags & presentInRecords)
        block.predictPower = 0;
}

} // namespace torvane
