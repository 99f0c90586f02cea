// What a command is to do with a ride, from what the file holds and what the user set.
#include "gps/analysis.h"

#include "gps/analysed_fields.h"

namespace torvane {

std::string fitOutputFileName;

namespace {

constexpr uint8_t definedBit = 0x01;      // the field, or the first of the two that share a flag set
constexpr uint8_t bothDefined = 0x11;     // latitude and longitude, or distance and speed
constexpr uint8_t temperatureRecords = 1; // values of temperatureFlags
constexpr uint8_t temperatureAverage = 2;

uint32_t positionFlag()
{
    return (fieldPresence.positionFlags & bothDefined) == bothDefined ? analysisPosition : 0;
}

uint32_t motionFlag()
{
    switch (fieldPresence.motionFlags & bothDefined) {
    case 0:
        return analysisMotionFromPosition;
    case definedBit:
        return analysisSpeedFromDistance;
    case bothDefined:
        return fieldPresence.timestampFlags == 0 ? analysisNoTimestamps : 0;
    default:
        return 0;
    }
}

bool hasAltitude()
{
    return (fieldPresence.altitudeFlags & definedBit) != 0;
}

uint32_t temperatureFlag()
{
    if (fieldPresence.temperatureFlags == temperatureRecords)
        return analysisRecordTemperature;
    return fieldPresence.temperatureFlags == temperatureAverage ? analysisAverageTemperature : 0;
}

uint32_t predictionFlags()
{
    const ParameterBlock& block = workingBlock;
    uint32_t flags = 0;
    if ((fieldPresence.cadenceFlags & definedBit) == 0 && block.predictCadence)
        flags |= analysisPredictCadence;
    if ((fieldPresence.powerFlags & definedBit) == 0 && block.predictPower)
        flags |= analysisPredictPower | static_cast<uint32_t>(block.analysePowerBase) << analysisPowerBaseShift;
    return flags;
}

} // namespace

uint32_t buildAnalysisFlags()
{
    uint32_t flags = workingBlock.analyseSmoothing ? analysisSmoothing : 0;
    flags |= positionFlag() | motionFlag() | temperatureFlag() | predictionFlags();
    if (!hasAltitude() || workingBlock.flatCourse)
        flags |= analysisFlat;
    return flags;
}

uint32_t expressAnalysisFlags()
{
    return (workingBlock.expressSmoothing ? analysisSmoothing : 0) | positionFlag();
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

void applyAnalysisRules(ParameterBlock& block)
{
    if (!hasAltitude())
        block.flatCourse = 1;
    if (fieldPresence.temperatureFlags == temperatureAverage)
        block.analyseUnrealAccele =
            fitSummary.avgTemperature; // this slot, not averageTemperature: it has always been so
    if (fieldPresence.cadenceFlags & definedBit)
        block.predictCadence = 0;
    if (fieldPresence.powerFlags & definedBit)
        block.predictPower = 0;
}

} // namespace torvane
