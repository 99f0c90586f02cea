// What an analysed file says in other fields than its source: the fields that are added to records, sessions and laps,
// and those of sessions and laps that are written anew from the sums over their records.
#pragma once

#include "fit/fit_walk.h"
#include "fit/session_lap_fields.h"
#include "gps/summary_figures.h"

#include <array>
#include <cstdint>
#include <vector>

namespace torvane {

// Fields that the source lacks and the analysis supplies.
enum AddedFields : uint32_t {
    addSpeed = 0x1,
    addDistance = 0x2,
    addCadence = 0x10,
    addPower = 0x20,
    // Of a prepared ride, whose file is written by the FIT profile: base types as they are, missing values as such, and
    // sessions and laps by summary_figures.h. Else as analysed files have always been.
    writeByProfile = 0x100,
};

// The fields that one kind of message gains, and their bytes.
struct Growth {
    std::vector<FieldDefinition> fields;
    size_t bytes;
};

// By kind of message, by the profile also by definition. Others gain nothing.
class Growths {
public:
    Growths(uint32_t addedFields, const RecordFields& recordFields);

    // Takes a definition message, in front of the data messages that it defines.
    void define(const FitMessage& message);
    // Of a message that is defined.
    const Growth& of(const FitMessage& message) const;
    const Growth& ofRecords() const
    {
        return record;
    }

private:
    bool byProfile;
    RecordFields fields;
    Growth record, session, lap, others;
    std::array<Growth, localTypeCount> summaries = {}; // by the profile
};

// What the records of an analysed file hold: what they define in the source, and what is added. By the profile; no
// other writer asks.
RecordFields recordFieldsOf(const FitImage& source, uint32_t addedFields);

// Members of a sum by the fields of its summary message that are written anew.
extern const EntryFieldIndex analysedSessionFields;
extern const EntryFieldIndex analysedLapFields;

} // namespace torvane
