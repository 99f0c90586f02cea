// From NAME=VALUE to the rows of a form. Only what is named is typed; all else keeps its value to the last bit.
#pragma once

#include "forms/form.h"

#include <string>
#include <vector>

namespace torvane {

struct Assignment {
    std::string name, value;
};

enum class RefusalKind {
    unknownEntry, // there is no entry of that name
    ofPage,       // asked of a command, it is an entry of a page
    ofCommand,    // asked of the pages, it is an entry of a command
    badValue,     // no number, or none of the choices
    beyondLimits, // of an entry that another choice hides; those in view the form itself refuses
    missing,      // the dialog cannot be confirmed without more
};

struct Refusal {
    RefusalKind kind;
    std::string entry;
    std::string text;
    std::string given = {};   // the value as it was given
    const Row* row = nullptr; // with beyondLimits
};

// What became of assignments; each text is one line.
struct EntryFaults {
    std::vector<Refusal> refusals;  // the form must not be confirmed
    std::vector<std::string> notes; // accepted, but without effect
    // What a form refused when it was confirmed, where that was one entry; and whether by the entry's limits.
    const Row* refused = nullptr;
    bool beyondLimits = false;
    std::string given = {}; // what the refused entry holds: a number in its unit, a path
};
void keepRefused(EntryFaults& faults, const FormState& state);
// "ridePower takes 0 to 3000 W, not 3001", where the form refused one entry by its limits; "source is /no/ride.fit"
// where it refused one for another reason; empty where no one entry is to blame.
std::string lessonOf(const EntryFaults& faults);

// Sets the named rows of an open form: choices first, in the order of the rows, then what is typed. Names that the
// form does not have are left alone. Returns the assignments whose row another choice hides; their values are looked at
// all the same.
std::vector<Assignment> setEntries(FormState& state, const std::vector<Assignment>& assignments, EntryFaults& faults);

// Whether some row of the form goes by this name.
bool hasEntry(const Form& form, std::string_view name);
// Names of all rows that the console can set.
void collectNames(const Form& form, std::vector<std::string>& names);

// Index of a choice from its label, a part of it that no other label has, or its number; -1 for none of these.
int choiceOf(const std::vector<std::string>& labels, std::string_view value);

} // namespace torvane
