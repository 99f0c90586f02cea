// A list of figures as one text, for tests that hold all of them.
#pragma once

#include "core/text.h"
#include "report/figures.h"

namespace torvane {

inline std::string listed(const FigureList& list)
{
    std::string text;
    for (const Figure& figure : list)
        text += formatText("%s %.9g %s; ", figure.name.c_str(), figure.value, figure.unit);
    return text;
}

} // namespace torvane
