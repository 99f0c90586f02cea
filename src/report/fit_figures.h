// The figures of recorded rides: what their summary tells, and how two of them compare.
#pragma once

#include "gps/prepare_findings.h"
#include "gps/ride_comparison.h"
#include "report/figures.h"
#include "report/fit_report.h"

namespace torvane {

// Sessions and laps are groups of their own.
Figures summaryFigures(const ReportedRide& ride);
std::vector<FigureInfo> summaryFigureInfos();

// The sectors are a group of their own.
Figures comparisonFigures(const RideComparison& comparison);
std::vector<FigureInfo> comparisonFigureInfos();

// Counts that are 0 are left out, as the report leaves them out.
void addPreparationFigures(Figures& figures, const PrepareFindings& findings);
std::vector<FigureInfo> preparationFigureInfos();

} // namespace torvane
