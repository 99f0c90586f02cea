// Between the entry file and the dialogs: rows that are marked as kept and have no field in any block open with what
// the file holds, and are written there by "save as default".
#pragma once

#include "core/entry_file.h"
#include "forms/form.h"

#include <string>
#include <vector>

namespace torvane {

// Into a form just opened; a value that a row would not take is skipped.
void takeKept(FormState& state, const EntryFile& file);

// From a form that was confirmed with "save as default".
void keepEntries(const FormState& state, EntryFile& file);

// What is skipped, each in words: lines that are no entry, values that the rows would not take. A name that no form
// knows is none of it: it may be that of another version.
std::vector<std::string> skippedEntries(const EntryFile& file);

} // namespace torvane
