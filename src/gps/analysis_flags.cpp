// What a command is to do with a ride, from what the file holds and what the user set.
#include "gps/analysis.h"

#include "gps/analysed_fields.h"

namespace torvane {

namespace {

constexpr uint8_t definedBit = 0x01;      // the field, or the first of the two that share a flag set
constexpr uint8_t bothDefined = 0x11;     // latitude and longitude, or distance and speed
constexpr uint8_t temperatureRecords = 1; // values of temperatureFlags
constexpr uint8_t temperatureAverage = 2;

uint32_t positionFlag(const FieldPresence& presence)
{
    return (presence.positionFlags & bothDefined) == bothDefined ? analysisPosition : 0;
}

uint32_t motionFlag(const FieldPresence& presence)
{
    switch (presence.motionFlags & bothDefined) {
    case 0:
        return analysisMotionFromPosition;
    case definedBit:
        return analysisSpeedFromDistance;
    case bothDefined:
        return presence.timestampFlags == 0 ? analysisNoTimestamps : 0;
    default:
        return 0;
    }
}

bool hasAltitude(const FieldPresence& presence)
{
    return (presence.altitudeFlags & definedBit) != 0;
}

uint32_t temperatureFlag(const FieldPresence& presence)
{
    if (presence.temperatureFlags == temperatureRecords)
        return analysisRecordTemperature;
    return presence.temperatureFlags == temperatureAverage ? analysisAverageTemperature : 0;
}

// No acceleration without timestamps and distances.
uint32_t steadyFlag(const FieldPresence& presence)
{
    return ((presence.timestampFlags | presence.motionFlags) & definedBit) == 0 ? analysisSteady : 0;
}

uint32_t predictionFlags(const ParameterBlock& block, const FieldPresence& presence)
{
    uint32_t flags = 0;
    if ((presence.cadenceFlags & definedBit) == 0 && block.predictCadence)
        flags |= analysisPredictCadence;
    if ((presence.powerFlags & definedBit) == 0 && block.predictPower)
        flags |= analysisPredictPower | static_cast<uint32_t>(block.analysePowerBase) << analysisPowerBaseShift;
    return flags;
}

} // namespace

uint32_t buildAnalysisFlags(const ParameterBlock& settings, const FieldPresence& presence)
{
    uint32_t flags = settings.analyseSmoothing ? analysisSmoothing : 0;
    flags |= positionFlag(presence) | motionFlag(presence) | temperatureFlag(presence) | steadyFlag(presence);
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
    return added;
}

void applyAnalysisRules(ParameterBlock& block, const LoadedRide& ride)
{
    if (!hasAltitude(ride.presence))
        block.flatCourse = 1;
    if (ride.presence.temperatureFlags == temperatureAverage)
        block.analyseUnrealAccele =
            ride.summary.avgTemperature; // this slot, not averageTemperature: it has always been so
    if (ride.presence.cadenceFlags & definedBit)
        block.predictCadence = 0;
    if (ride.presence.powerFlags & definedBit)
        block.predictPower = 0;
}

} // namespace torvane
