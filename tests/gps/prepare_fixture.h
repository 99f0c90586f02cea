// Activities made message by message, prepared, and read again without the program's own reading code.
#pragma once

#include "fit/fit_builder.h"

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

inline uint32_t readNumber(const Bytes& data, size_t at, int size, bool big)
{
    uint32_t value = 0;
    for (int i = 0; i < size && i < 4; ++i)
        value |= static_cast<uint32_t>(data[at + static_cast<size_t>(big ? size - 1 - i : i)]) << 8 * i;
    return value;
}

// Every data message of a block.
inline std::vector<ReadMessage> readBlock(const Bytes& data)
{
    struct Layout {
        int global = 0;
        bool big = false;
        std::vector<std::pair<int, int>> fields; // number and size
        size_t developerSize = 0;
    };
    Layout layouts[16];
    std::vector<ReadMessage> messages;
    size_t at = 0;
    while (at < data.size()) {
        uint8_t header = data[at++];
        Layout& layout = layouts[header & 15];
        if ((header & 0x40) == 0) {
            ReadMessage& message = messages.emplace_back();
            message.global = layout.global;
            for (auto [number, size] : layout.fields) {
                message.fields[number] = readNumber(data, at, size, layout.big);
                at += static_cast<size_t>(size);
            }
            at += layout.developerSize;
            continue;
        }
        layout = {static_cast<int>(readNumber(data, at + 2, 2, data[at + 1] != 0)), data[at + 1] != 0, {}, 0};
        size_t count = data[at + 4];
        for (at += 5; count-- > 0; at += 3)
            layout.fields.emplace_back(data[at], data[at + 1]);
        if ((header & 0x20) != 0)
            for (count = data[at++]; count-- > 0; at += 3)
                layout.developerSize += data[at + 1];
    }
    return messages;
}

inline FitImage imageOfFile(const Bytes& data)
{
    FitImage image;
    image.data = data;
    image.headerBytes = {14, 0x10, 0, 0, 0, 0, 0, 0, '.', 'F', 'I', 'T'};
    return image;
}

struct Prepared {
    StatusCode code;
    PrepareFindings findings;
    FitImage image;
    std::vector<ReadMessage> messages;

    explicit Prepared(const Bytes& data, const PrepareOptions& options = {})
    {
        code = prepareActivity(imageOfFile(data), options, image, findings);
        if (code == 0)
            messages = readBlock(image.data);
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

inline std::vector<int64_t> seconds(int64_t first, int64_t last)
{
    std::vector<int64_t> list;
    for (int64_t second = first; second <= last; ++second)
        list.push_back(second);
    return list;
}

} // namespace torvane
