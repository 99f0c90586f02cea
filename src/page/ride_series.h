// What a page draws of a recorded ride along its way.
#pragma once

#include "gps/power_split.h"
#include "gps/ride_answer.h"
#include "page/page.h"

#include <array>
#include <vector>

namespace torvane {

// One value for each record that was ridden, none left out.
struct RideSeries {
    std::vector<RiddenRow> rows = {};
    std::vector<double> latitude = {}, longitude = {};
    std::vector<PageSeries> along = {};                // distance and time first
    std::array<double, powerSinkCount> kiloJoule = {}; // of the whole ride, where the power went
    double motorKiloJoule = 0;                         // of it
};

RideSeries rideSeriesOf(const Model& model, const AnsweredRide& ride);

} // namespace torvane
