// What each entry of the forms means, in one line: help, manual, man page, completion, the library and the window's
// hints tell it from here.
#pragma once

#include "forms/form.h"

#include <span>
#include <string>
#include <string_view>

namespace torvane {

struct EntryMeaning {
    int form;         // id of the form that it is for; 0: of any form without one of its own
    const char* name; // of the entry, without its numbers: "chainring" stands for "chainring[0]" to "chainring[2]"
    const char* text;
};

std::span<const EntryMeaning> entryMeanings();
// Of a row with a name; empty where the table has none.
const char* meaningOf(const Form& form, std::string_view entry);
// "chainring" of "chainring[0]", "source" of "source2".
std::string_view entryStem(std::string_view entry);

// A choice that decides whether an entry counts, and its values with which it does; the labels, of a check "on" or
// "off".
struct Deciding {
    const Row* choice;
    std::vector<std::string> values;
};
// When an entry counts, by each choice of its form alone, the others as they are. What takes two choices is not told.
struct Counting {
    bool now = true; // true: each of the choices has to be so; false: one of them is enough
    std::vector<Deciding> by = {};
};
Counting countingOf(const FormState& state, std::string_view entry);

} // namespace torvane
