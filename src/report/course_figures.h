// The figures, rows and curves of a planned course.
#pragma once

#include "core/row_writer.h"
#include "plan/course_answer.h"
#include "report/figures.h"
#include "ride/graph_series.h"

namespace torvane {

// Splits, climbs, descents, stretches and what-ifs are groups.
Figures courseFigures(const Model& model, const AnsweredCourse& answered);
std::vector<FigureInfo> courseFigureInfos();

// A row each second.
void writeCourseRows(RowWriter& rows, const std::vector<PlannedSecond>& seconds);

// Over the distance.
GraphSeries courseCurves(const std::vector<PlannedSecond>& seconds);

} // namespace torvane
