// Messages of an activity that are made here rather than by a device: how they are laid out, and how they are written.
#pragma once

#include "fit/fit_image.h"
#include "fit/fit_walk.h"
#include "fit/message_fields.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

namespace torvane {

// A message's fields in the order of its definition.
struct FieldLayout {
    uint8_t number, width, baseType;
};
enum FitBaseType : uint8_t {
    byteEnum = 0x00,
    signed8 = 0x01,
    unsigned8 = 0x02,
    characters = 0x07,
    unsigned16 = 0x84,
    signed32 = 0x85,
    unsigned32 = 0x86,
    bits32 = 0x8C
};

// FIT's sport of a ride, and its number for files that no maker's device wrote.
constexpr uint8_t fitCycling = 2;
constexpr uint64_t fitDevelopment = 255;

constexpr FieldLayout fileIdLayout[] = {
    {fileIdType, 1, byteEnum}, {fileIdManufacturer, 2, unsigned16}, {fileIdTimeCreated, 4, unsigned32}};
constexpr FieldLayout eventLayout[] = {{timestampField, 4, unsigned32}, {0, 1, byteEnum}, {1, 1, byteEnum}};
constexpr uint8_t timerEvent = 0, timerStarts = 0, timerStops = 4; // what an event tells

// Laps and sessions: end, start, elapsed and timer time in ms, distance in cm, sport.
inline constexpr FieldLayout lapLayout[] = {{timestampField, 4, unsigned32},
                                            {summaryStartTime, 4, unsigned32},
                                            {7, 4, unsigned32},
                                            {summaryTotalTimer, 4, unsigned32},
                                            {9, 4, unsigned32},
                                            {lapSport, 1, byteEnum}};
inline constexpr FieldLayout sessionLayout[] = {{timestampField, 4, unsigned32},
                                                {summaryStartTime, 4, unsigned32},
                                                {7, 4, unsigned32},
                                                {summaryTotalTimer, 4, unsigned32},
                                                {9, 4, unsigned32},
                                                {sessionSport, 1, byteEnum}};
// Of an activity: timer time, sessions, "manual", the event "activity", "stop".
inline constexpr FieldLayout activityLayout[] = {{timestampField, 4, unsigned32},
                                                 {activityTotalTimer, 4, unsigned32},
                                                 {activitySessionCount, 2, unsigned16},
                                                 {2, 1, byteEnum},
                                                 {3, 1, byteEnum},
                                                 {4, 1, byteEnum}};

// What an activity message says in its last three fields.
constexpr uint64_t activityManual = 0, activityEvent = 26, activityStop = 1;

// A figure as a field stores it, or the mark of a missing one where it is none or beyond the field.
uint64_t stored(double value, double scale, double least, double most, uint64_t missing);
uint64_t storedDegrees(double degrees);
uint64_t storedAltitude(double metres);
uint64_t storedDistance(double metres);
uint64_t storedSpeed(double metresPerSecond);

// Header and CRC around messages that were made here.
void wrapMessages(std::vector<uint8_t>&& block, FitImage& image);

// Puts messages one behind the other; little-endian.
class MessageWriter {
public:
    std::vector<uint8_t> block;

    void define(uint8_t local, uint16_t message, std::span<const FieldLayout> layout)
    {
        constexpr uint8_t definition = 0x40;
        for (uint8_t byte : {static_cast<uint8_t>(definition | local), uint8_t{0}, uint8_t{0}})
            block.push_back(byte);
        put(message, 2);
        put(layout.size(), 1);
        for (const FieldLayout& field : layout)
            block.insert(block.end(), {field.number, field.width, field.baseType});
    }

    void message(uint8_t local, std::span<const FieldLayout> layout, std::initializer_list<uint64_t> values)
    {
        block.push_back(local);
        const FieldLayout* field = layout.data();
        for (uint64_t value : values)
            put(value, (field++)->width);
    }

    // The last field of the message before: as much of a text as it holds, and a zero behind it.
    void text(std::string_view value, size_t width)
    {
        size_t length = std::min(value.size(), width - 1);
        while (length < value.size() && length > 0 && (value[length] & 0xC0) == 0x80)
            --length; // within a character of several bytes
        block.insert(block.end(), value.begin(), value.begin() + static_cast<std::ptrdiff_t>(length));
        block.insert(block.end(), width - length, uint8_t{0});
    }

private:
    void put(uint64_t value, size_t width)
    {
        for (size_t i = 0; i < width; ++i)
            block.push_back(static_cast<uint8_t>(value >> 8 * i));
    }
};

} // namespace torvane
