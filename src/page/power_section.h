// What a page tells of powers: where they go, how they are spread, and the best of them.
#pragma once

#include "gps/ride_answer.h"
#include "model/power_sinks.h"
#include "page/energy_bar.h"

#include <span>

namespace torvane {

// Ids of the series of a split; "slope" is that of the road.
constexpr std::array<const char*, powerSinkCount> powerSinkIds = {"air",          "rolling",    "hill",
                                                                  "acceleration", "drivetrain", "brakes"};
constexpr std::array<const char*, powerSinkCount> powerSinkLabels = {"Air",          "Rolling",    "Slope",
                                                                     "Acceleration", "Drivetrain", "Brakes"};

// A chart over distance of the page's series of a split; a bar of where the energy of the whole went, and its table
// with that title: the sinks in kJ, then what else comes to the work.
void addSplitSection(HtmlPage& page, const std::string& title, const std::array<double, powerSinkCount>& kiloJoule,
                     const std::vector<EnergyPart>& besides);
// Likewise of a recorded ride, whose predicted power is smooth; the motor gives a share in kJ.
void addSplitSection(HtmlPage& page, const std::array<double, powerSinkCount>& kiloJoule, double motor,
                     const RideAnswer& answer);

// Histogram with training levels, and the best mean powers.
void addPowerSection(HtmlPage& page, const Model& model, std::span<const RiddenRow> rows, const RideAnswer& answer);

} // namespace torvane
