// The entries of the profile, condition and preference pages by name, as if the sheets had been filled in and accepted.
#pragma once

#include "command/entries.h"
#include "command/session.h"
#include "forms/sheet.h"

#include <string>
#include <vector>

namespace torvane {

// The sheets in the order in which they are applied: what a preference enables on
// another page is known there.
constexpr Sheet settingsSheets[] = {Sheet::preference, Sheet::profile, Sheet::condition};

// Sets, checks and stores into the working block; the sheets touched are finished as by their commands. The first fault
// ends it: its box or refusal is added, and false comes back. With save the pages touched become defaults.
bool applySettings(Session& session, const std::vector<Assignment>& settings, bool save, EntryFaults& faults,
                   std::vector<Box>& boxes);

// Names of all entries of all pages, the figures behind a wheel's prediction included.
std::vector<std::string> settingNames();

} // namespace torvane
