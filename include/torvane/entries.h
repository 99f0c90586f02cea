// Entries by name: what a user of the programs types or chooses in a dialog.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace torvane::library {

// A figure, a choice by its label (or a part of it that no other label has), or "on" and "off". A number is in the unit
// that the entry's description names.
struct Entry {
    Entry(std::string entryName, std::string entryValue);
    Entry(std::string entryName, const char* entryValue);
    Entry(std::string entryName, double entryValue); // to the last digit; 1 and 0 are on and off

    std::string name;
    std::string value;
};

using Entries = std::vector<Entry>;

enum class EntryKind {
    number,
    whole,  // a number without decimals
    choice, // one of `choices`
    onOff,
    text, // any words that the entry's meaning tells of; empty by itself
};

// An entry, as it could be given now.
struct EntryInfo {
    std::string name = {};
    EntryKind kind = EntryKind::number;
    std::string unit = {};            // "kph", "%"; empty: a bare number, or none
    std::optional<double> least = {}; // of a number; both ends are legal
    std::optional<double> most = {};  // none: no limit
    std::vector<std::string> choices = {};
    double value = 0;         // that holds where it is not given: a number in its unit, the index of a choice, 1 for on
    std::string when = {};    // of entries that share their name: which this one is, in words
    std::string meaning = {}; // what it is, in a line
};

} // namespace torvane::library
