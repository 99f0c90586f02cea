#include "command/profile_figures.h"

#include "command/settings_command.h"
#include "report/profile_report.h"

namespace torvane {

namespace {

bool isNamedNumber(const Row& row)
{
    return row.name && isNumber(row);
}

// Of pages and what their buttons open, in the order of the tabs.
std::vector<const Form*> formsOf(Sheet sheet, uint32_t sections)
{
    std::vector<const Form*> forms;
    uint32_t section = 1;
    for (const Form* page : sheetPages(sheet)) {
        if ((sections & section) != 0) {
            forms.push_back(page);
            for (const Row& row : page->rows)
                if (row.kind == RowKind::button && row.index == 0)
                    forms.push_back(findForm(row.child));
        }
        section <<= 1;
    }
    return forms;
}

// A round-tubed frame is the measure of the others.
double valueOf(const FormState& state, const Row& row)
{
    bool isShell = std::string_view(row.name) == "shellAeroRatio";
    return isShell && state.values.shellType == shellNormal ? 1 : shownValue(state, row);
}

// What a drag factor was learned from, where it was learned.
void addCalibration(Figures& figures, const Calibration& calibration)
{
    if (!(calibration.halfInterval > 0))
        return;
    addFigure(figures.values, "dragFactorHalfInterval", "", double{calibration.halfInterval});
    addFigure(figures.values, "dragFactorTemperature", "Cel", double{calibration.temperature});
}

} // namespace

Figures sheetFigures(const Session& session, Sheet sheet, uint32_t sections)
{
    ParameterBlock block = session.working;
    fetchFigures(block, session.model.state);
    Figures figures;
    if (sheet == Sheet::profile && (sections & sectionHuman) != 0)
        addCalibration(figures, block.calibration);
    for (const Form* form : formsOf(sheet, sections)) {
        FormState state;
        openForm(state, *form, block, block, session.model, true);
        for (const Row& row : form->rows)
            if (isNamedNumber(row) && (isPresent(state, row) || form->confirm))
                addFigure(figures.values, row.name, row.unit, valueOf(state, row));
    }
    return figures;
}

std::vector<FigureInfo> sheetFigureInfos(Sheet sheet, uint32_t sections)
{
    std::vector<FigureInfo> infos;
    for (const Form* form : formsOf(sheet, sections))
        for (const Row& row : form->rows)
            if (isNamedNumber(row))
                infos.push_back({row.name, row.unit});
    return infos;
}

} // namespace torvane
