// The survey of the FIT tools: one walk that counts summaries and takes the span and the fields of the records.
#include "fit/fit_survey.h"

#include "fit/message_fields.h"

namespace torvane {

namespace {

struct FieldAndBit {
    uint8_t field; // of a record message
    FieldBit bit;
};

constexpr FieldAndBit remarkableFields[] = {
    {recordTimestamp, fieldTimestamp},     {recordLatitude, fieldLatitude}, {recordLongitude, fieldLongitude},
    {recordAltitude, fieldAltitude},       {recordDistance, fieldDistance}, {recordSpeed, fieldSpeed},
    {recordTemperature, fieldTemperature}, {recordCadence, fieldCadence},   {recordPower, fieldPower},
};

uint32_t remarkableBit(uint8_t field)
{
    for (const FieldAndBit& row : remarkableFields)
        if (row.field == field)
            return row.bit;
    return 0;
}

struct Survey {
    SourceFileInfo& info;
    uint32_t recordCount = 0;
    // Where the records of each local type have their time; looked up once for each definition.
    std::array<std::optional<size_t>, localTypeCount> timestampOffsets = {};
};

void surveyDefinition(const FitMessage& message, Survey& survey)
{
    survey.timestampOffsets[message.localType] = lastFieldOffset(message, recordTimestamp);
    if (message.globalMessage() != messageRecord)
        return;
    survey.info.recordDefinitionCount++;
    for (const FieldDefinition& field : message.definition->fieldList())
        survey.info.fieldsPresent |= remarkableBit(field.number);
}

void takeTimestamp(Survey& survey, uint32_t timestamp)
{
    SourceFileInfo& info = survey.info;
    if (survey.recordCount == 0) {
        info.startTimestamp = timestamp;
        info.endTimestamp = timestamp;
        return;
    }
    uint32_t step = timestamp - info.endTimestamp; // huge where time runs backwards, and then no new minimum
    if (info.recordInterval > 1 && step < info.recordInterval)
        info.recordInterval = step;
    info.endTimestamp = timestamp;
}

void surveyRecord(const FitMessage& message, Survey& survey)
{
    if (std::optional<size_t> offset = survey.timestampOffsets[message.localType])
        takeTimestamp(survey, readUint32(message.payload, *offset, message.definition->bigEndian()));
    survey.recordCount++;
}

void surveyActivity(const FitMessage& message, SourceFileInfo& info)
{
    info.activityCount++;
    info.activityTimer = lastUint32(message, activityTotalTimer).value_or(info.activityTimer);
}

void surveyMessage(const FitMessage& message, Survey& survey)
{
    if (message.isDefinition)
        return surveyDefinition(message, survey);
    switch (message.globalMessage()) {
    case messageFileId:
        survey.info.fileType = fileTypeOf(message).value_or(survey.info.fileType);
        return;
    case messageSession:
        survey.info.sessionCount++;
        return;
    case messageLap:
        survey.info.lapCount++;
        return;
    case messageRecord:
        return surveyRecord(message, survey);
    case messageActivity:
        return surveyActivity(message, survey.info);
    default:
        return;
    }
}

void surveyEnd(const LocalDefinitions& definitions, SourceFileInfo& info)
{
    for (size_t i = 0; i < definitions.size(); ++i) {
        info.messagesAtEnd[i] = definitions[i].globalMessage;
        info.localTypesDefined |= definitions[i].defined() ? 1u << i : 0;
    }
}

} // namespace

void clearSurvey(SourceFileInfo& info)
{
    SourceFileInfo cleared;
    cleared.path = info.path;
    info = cleared;
}

StatusCode surveyFitMessages(const FitImage& image, SourceFileInfo& info)
{
    bool inUse = info.inUse;
    clearSurvey(info);
    info.inUse = inUse;
    Survey survey = {info};
    FitWalk walk = startWalk(image);
    StatusCode code = walkMessages(walk, [&](const FitMessage& message) { surveyMessage(message, survey); });
    surveyEnd(walk.definitions, info);
    return code;
}

StatusCode surveyFitFile(FitImage& image, SourceFileInfo& info)
{
    if (readFitHeader(image, info.path) != fitOk)
        return fitNotSupported;
    if (StatusCode code = readFitFile(image, info.path); code != fitOk)
        return code;
    StatusCode code = surveyFitMessages(image, info);
    image.data = std::vector<uint8_t>();
    return code;
}

} // namespace torvane
