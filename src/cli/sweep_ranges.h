// The ranges of a sweep: which entries it takes through which values.
#pragma once

#include "cli/request.h"
#include "command/command_table.h"

#include <cstddef>
#include <string>
#include <vector>

namespace torvane {

constexpr size_t mostRanges = 3;
constexpr size_t mostCombinations = 10'000'000;

// Moves the entries and the settings that are given as FROM:TO:STEP out of the request into its ranges. Names that
// nothing goes by stay: they are refused with the others. An empty text on success, else what is wrong.
std::string takeRanges(const Command& command, Request& request);

// Of all ranges together; 1 without any.
size_t combinationsOf(const Request& request);

// What the ranges are in a combination, in their order; the last one runs fastest.
std::vector<Assignment> valuesIn(const Request& request, size_t combination);

// Why a command cannot be swept; empty where it can.
std::string sweepFault(const Command& command, const Request& request);
// The same once the names of its entries are known: there is no range among them.
std::string rangesFault(const Command& command, const Request& request);

} // namespace torvane
