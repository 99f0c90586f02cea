// The figures of the calculators.
#pragma once

#include "model/theory.h"
#include "report/figures.h"

namespace torvane {

// Of the calculation; behind it those of the road, whose names begin with "road".
void addTheoryFigures(Figures& figures, const Theory& theory);
void addRoadFigures(Figures& figures, const Theory& theory);
std::vector<FigureInfo> theoryFigureInfos(int calculator);

} // namespace torvane
