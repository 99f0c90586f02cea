// The figures of an answered ride.
#pragma once

#include "gps/ride_answer.h"
#include "report/figures.h"

namespace torvane {

// Laps and climbs are groups; so are the gears.
Figures answerFigures(const Model& model, const RideAnswer& answer);
std::vector<FigureInfo> answerFigureInfos();

} // namespace torvane
