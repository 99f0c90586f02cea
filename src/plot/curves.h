// The series of a graph by short names, and which of them a chart shows.
#pragma once

#include "ride/graph_series.h"

#include <string>
#include <string_view>
#include <vector>

namespace torvane {

// "front brake Cel" is frontBrake in Cel, "velocity(kph)" velocity in kph; figures in a name are left out.
std::string curveName(std::string_view series);
std::string curveUnit(std::string_view series); // empty: none

// Series by their places: one along, the others upwards.
struct CurveChoice {
    int x = 0;
    std::vector<int> curves = {};
};

// What the graph is about: of a braking velocity and brakes, of the band of power and velocity the powers.
CurveChoice curvesAbout(const GraphSeries& series);

// Changes a choice by names as curveName gives them, separated by commas; an empty list leaves it as it is. Case does
// not matter. Empty on success, else what is wrong, with the names that there are.
std::string chooseCurves(const GraphSeries& series, std::string_view curves, std::string_view x, CurveChoice& choice);

} // namespace torvane
