// Which field number of a session or lap message belongs to which member of a SessionLapEntry.
// Reading takes the member's own width, whatever size a definition declares.
#pragma once

#include "fit/fit_passes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace torvane {

// A member of SessionLapEntry by offset and width in bytes.
struct EntryMember {
    uint8_t offset;
    uint8_t width;
};

struct EntryField {
    uint8_t number;
    EntryMember member;
};

static_assert(sizeof(SessionLapEntry) < 256);

// For tables of EntryField.
#define TORVANE_ENTRY_FIELD(number, name)                                                                              \
    EntryField({number, {offsetof(SessionLapEntry, name), sizeof(SessionLapEntry::name)}})

// Members by field number: a width of 0 where the table has no such field.
using EntryFieldIndex = std::array<EntryMember, 256>;

template <size_t N>
constexpr EntryFieldIndex indexEntryFields(const EntryField (&fields)[N])
{
    EntryFieldIndex index = {};
    for (const EntryField& field : fields)
        index[field.number] = field.member;
    return index;
}

inline void storeMember(SessionLapEntry& entry, EntryMember member, uint32_t value)
{
    char* place = reinterpret_cast<char*>(&entry) + member.offset;
    uint16_t value16 = static_cast<uint16_t>(value);
    uint8_t value8 = static_cast<uint8_t>(value);
    if (member.width == 4)
        std::memcpy(place, &value, sizeof value);
    else if (member.width == 2)
        std::memcpy(place, &value16, sizeof value16);
    else
        std::memcpy(place, &value8, sizeof value8);
}

inline uint32_t loadMember(const SessionLapEntry& entry, EntryMember member)
{
    const char* place = reinterpret_cast<const char*>(&entry) + member.offset;
    uint32_t value32 = 0;
    uint16_t value16 = 0;
    uint8_t value8 = 0;
    if (member.width == 4)
        std::memcpy(&value32, place, sizeof value32);
    else if (member.width == 2)
        std::memcpy(&value16, place, sizeof value16);
    else
        std::memcpy(&value8, place, sizeof value8);
    return value32 | value16 | value8;
}

} // namespace torvane
