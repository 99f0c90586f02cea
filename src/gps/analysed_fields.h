// What an analysed file says in other fields than its source: the fields that are added to records, sessions and laps,
// and those of sessions and laps that are written anew from the sums over their records.
#pragma once

#include "fit/fit_walk.h"
#include "fit/session_lap_fields.h"

#include <cstdint>
#include <vector>

namespace torvane {

// Fields that the source lacks and the analysis supplies.
enum AddedFields : uint32_t {
    addSpeed = 0x1,
    addDistance = 0x2,
    addCadence = 0x10,
    addPower = 0x20,
};

// The fields that one kind of message gains, and their bytes.
struct Growth {
    std::vector<FieldDefinition> fields;
    size_t bytes;
};

// By kind of message; others gain nothing.
struct Growths {
    Growth record, session, lap, others;

    const Growth& of(uint16_t message) const
    {
        switch (message) {
        case messageRecord:
            return record;
        case messageSession:
            return session;
        case messageLap:
            return lap;
        }
        return others;
    }
};

Growths growthsOf(uint32_t addedFields);

// Members of a sum by the fields of its summary message that are written anew.
extern const EntryFieldIndex analysedSessionFields;
extern const EntryFieldIndex analysedLapFields;

} // namespace torvane
