// What an added lap, session or activity consists of: which of its fields come of which field of the record definition
// in force, and the value each one takes. Size and order of the added messages follow from these tables alone.
#pragma once

#include "core/parameter_block.h"
#include "fit/fit_walk.h"
#include "fit/running_set.h"

#include <array>
#include <span>
#include <vector>

namespace torvane {

// A field of an added message.
struct AddedField {
    uint8_t recordField; // present in the added message as often as the record definition has this one
    uint8_t number;
    uint32_t (*value)(const SessionLapEntry& entry);
};

// A message that can be added. The last field is the sport, or of an activity the number of sessions.
struct AddedMessage {
    uint16_t message;
    int32_t ParameterBlock::*option;
    std::span<const AddedField> fields;
    FieldDefinition last;
    const char* alreadyThere; // refusal of the check
};

enum AddedKind : size_t { addedLap, addedSession, addedActivity, addedKindCount };

extern const std::array<AddedMessage, addedKindCount> addedMessages;

// A field as an added definition declares it, and where its value comes from.
struct PlacedField {
    FieldDefinition definition;
    uint32_t (*value)(const SessionLapEntry& entry); // null for the last field
};

// The fields of an added message behind records of this definition, in their order.
std::vector<PlacedField> placeFields(const AddedMessage& added, const LocalDefinition& record);

// Bytes of definition and data message together.
size_t addedSize(const std::vector<PlacedField>& fields);

} // namespace torvane
