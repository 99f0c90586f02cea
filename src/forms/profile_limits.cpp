#include "forms/profile_limits.h"

#include "core/text.h"
#include "forms/form.h"

namespace torvane {

namespace {

std::string beyondLimits(const FormState& state, const Row& row)
{
    std::string text =
        formatText("%s is %.10g, its limits are %.10g to %.10g", row.name, shownValue(state, row), row.least, row.most);
    return row.unit[0] == '\0' ? text : text + ' ' + row.unit;
}

std::string figureBeyondLimits(const Form& page, const Model& model, const ParameterBlock& block)
{
    FormState state;
    openForm(state, page, block, block, model, true);
    for (size_t i = 0; i < page.rows.size(); ++i)
        if (isEnabled(state, page.rows[i]) && !checkLimits(state, i, i + 1).passed)
            return beyondLimits(state, page.rows[i]);
    return {};
}

} // namespace

std::string figureBeyondLimits(const Model& model, const ParameterBlock& block)
{
    for (Sheet sheet : {Sheet::profile, Sheet::condition})
        for (const Form* page : sheetPages(sheet))
            if (std::string text = figureBeyondLimits(*page, model, block); !text.empty())
                return text;
    return {};
}

} // namespace torvane
