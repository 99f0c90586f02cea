// Where the energy of a ride went.
#pragma once

#include "page/page.h"

#include <span>

namespace torvane {

struct EnergyPart {
    const char* name;
    double kiloJoule; // negative: it was given
};

// A bar of what was spent, and a table of all with this title.
void addEnergy(HtmlPage& page, const std::string& title, std::span<const EnergyPart> parts);

} // namespace torvane
