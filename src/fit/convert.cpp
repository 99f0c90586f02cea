// The convert tool: another header form, another sport, and speeds in m/s for files that hold them in kph.
// The data block keeps its size, so there is nothing to plan.
#include "core/units.h"
#include "fit/fit_types.h"
#include "fit/tool_support.h"

namespace torvane {

namespace {

enum class SpeedKind { unsigned16, unsigned32, signed16, firstByte };

struct SpeedField {
    uint16_t message;
    uint8_t field;
    SpeedKind kind; // as the field is read, whatever size it declares
};

// Average, maximum, their enhanced forms, and of records the speed of one second and the vertical speed.
constexpr SpeedField speedFields[] = {
    {messageSession, 14, SpeedKind::unsigned16},  {messageSession, 15, SpeedKind::unsigned16},
    {messageLap, 13, SpeedKind::unsigned16},      {messageLap, 14, SpeedKind::unsigned16},
    {messageRecord, 6, SpeedKind::unsigned16},    {messageSession, 124, SpeedKind::unsigned32},
    {messageSession, 125, SpeedKind::unsigned32}, {messageLap, 110, SpeedKind::unsigned32},
    {messageLap, 111, SpeedKind::unsigned32},     {messageRecord, 73, SpeedKind::unsigned32},
    {messageRecord, 17, SpeedKind::firstByte},    {messageRecord, 32, SpeedKind::signed16},
};

const SpeedField* findSpeedField(uint16_t message, uint8_t field)
{
    for (const SpeedField& row : speedFields)
        if (row.message == message && row.field == field)
            return &row;
    return nullptr;
}

// The field's other bytes become 0.
void convertFirstByte(std::span<uint8_t> field)
{
    if (!field.empty())
        writeField(field, static_cast<uint8_t>(field[0] / kphPerMps), false);
}

void convertSpeed(const FitMessage& message, size_t offset, std::span<uint8_t> field, SpeedKind kind)
{
    bool bigEndian = message.definition->bigEndian();
    uint16_t value = readUint16(message.payload, offset, bigEndian);
    switch (kind) {
    case SpeedKind::unsigned16:
        return writeUint16FromDouble(field, value / kphPerMps, bigEndian);
    case SpeedKind::signed16:
        return writeUint16FromDouble(field, static_cast<int16_t>(value) / kphPerMps, bigEndian);
    case SpeedKind::unsigned32:
        return writeUint32FromDouble(field, readUint32(message.payload, offset, bigEndian) / kphPerMps, bigEndian);
    case SpeedKind::firstByte:
        return convertFirstByte(field);
    }
}

void convertSpeeds(const FitMessage& message, std::span<uint8_t> copy)
{
    forEachCopiedField(message, copy, [&](const FieldDefinition& field, size_t offset, std::span<uint8_t> bytes) {
        if (const SpeedField* speed = findSpeedField(message.globalMessage(), field.number))
            convertSpeed(message, offset, bytes, speed->kind);
    });
}

} // namespace

Verdict checkConvert(ToolInputs& inputs, ParameterBlock& options)
{
    return checkSameSizeTool(inputs, options.convertOutput);
}

ToolOutcome runConvert(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress)
{
    return rewriteSameSize(inputs, options.convertOutput, progress,
                           [&](const FitMessage& message, std::span<uint8_t> copy) {
                               if (message.isDefinition)
                                   return;
                               markManufacturer(message, copy);
                               applySport(message, copy, options.convertOutput);
                               if (options.convertSpeedUnit != 0)
                                   convertSpeeds(message, copy);
                           });
}

} // namespace torvane
