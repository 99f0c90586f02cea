// The figures of the reports of profile and conditions: the entries of their pages, as the model has them in force.
#pragma once

#include "command/session.h"
#include "forms/form.h"
#include "report/figures.h"

#include <cstdint>

namespace torvane {

// The sections of a report are the pages of its sheet, in their order: bit 0 of the mask stands for the first page.
Figures sheetFigures(const Session& session, Sheet sheet, uint32_t sections);
std::vector<FigureInfo> sheetFigureInfos(Sheet sheet, uint32_t sections);

} // namespace torvane
