// Activities made message by message, prepared, and read again.
#pragma once

#include "fit/fit_builder.h"
#include "fit/fit_walk.h"

#include "gps/prepare.h"

#include <map>
#include <string>
#include <vector>

namespace torvane {

// Local types of a Recording.
enum RecordingType { localFileId = 0, localRecord = 1, localEvent = 2, localSession = 3, localOther = 4 };

struct Recording : FitBuilder {
    explicit Recording(std::vector<Field> recordFields, bool bigEndian = false)
    {
        define(localFileId, 0, {{0, 1, 0x00}, {1, 2, 0x84}}, bigEndian).message(localFileId, {4, 0x1234});
        define(localEvent, 21, {{253, 4, 0x86}, {0, 1, 0x00}, {1, 1, 0x00}}, bigEndian);
        define(localRecord, 20, std::move(recordFields), bigEndian);
    }
    Recording& record(const std::vector<int64_t>& values)
    {
        message(localRecord, values);
        return *this;
    }
    Recording& timer(int64_t time, int type)
    {
        message(localEvent, {time, 0, type});
        return *this;
    }
};

// Usual fields of records.
constexpr FitBuilder::Field timeField = {253, 4, 0x86}, latitudeField = {0, 4, 0x85}, longitudeField = {1, 4, 0x85},
                            distanceField = {5, 4, 0x86}, altitudeField = {2, 2, 0x84}, speedField = {6, 2, 0x84},
                            heartRateField = {3, 1, 0x02}, cadenceField = {4, 1, 0x02}, powerField = {7, 2, 0x84},
                            temperatureField = {13, 1, 0x01};

// A data message as it was written: numbers of up to four bytes, without a sign.
struct ReadMessage {
    int global = 0;
    std::map<int, uint32_t> fields;
};

// Every data message of an image.
inline std::vector<ReadMessage> readMessages(const FitImage& image)
{
    std::vector<ReadMessage> messages;
    walkMessages(image, [&](const FitMessage& message) {
        if (message.isDefinition)
            return;
        ReadMessage& read = messages.emplace_back();
        read.global = message.globalMessage();
        forEachField(message, [&](const FieldDefinition& field, size_t offset) {
            read.fields[field.number] =
                readNumber(message.payload, offset, field.size, message.definition->bigEndian());
        });
    });
    return messages;
}

inline FitImage withHeader(FitImage source)
{
    source.headerBytes = {14, 0x10, 0, 0, 0, 0, 0, 0, '.', 'F', 'I', 'T'};
    return source;
}

struct Prepared {
    StatusCode code;
    PrepareFindings findings;
    FitImage image;
    std::vector<ReadMessage> messages;

    explicit Prepared(const Bytes& data, const PrepareOptions& options = {})
        : Prepared(withHeader(imageOf(data)), {}, options)
    {
    }
    Prepared(const FitImage& source, const SourceFindings& found, const PrepareOptions& options = {})
    {
        findings.source = found;
        code = prepareActivity(source, options, image, findings);
        if (code == 0)
            messages = readMessages(image);
    }
    // Values of one field of the records, -1 where it is not defined.
    std::vector<int64_t> records(int field) const
    {
        return values(20, field);
    }
    std::vector<int64_t> values(int global, int field) const
    {
        std::vector<int64_t> found;
        for (const ReadMessage& message : messages)
            if (message.global == global)
                found.push_back(message.fields.contains(field) ? int64_t{message.fields.at(field)} : -1);
        return found;
    }
};

} // namespace torvane
