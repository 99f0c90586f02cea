// The numbers of an answer under the names of their records' fields, in the units in which the reports print them and
// to the last digit. A command's figures are rows of a table: name, unit, where the number is, and when there is one.
#pragma once

#include <cmath>
#include <string>
#include <vector>

namespace torvane {

struct Figure {
    std::string name;
    const char* unit; // empty: a bare number
    double value;
};

using FigureList = std::vector<Figure>;

// What an answer comes to in numbers; the sessions, laps and the like of a ride are lists of the same.
struct Figures {
    struct Group {
        std::string name;
        std::vector<FigureList> items;
    };
    FigureList values = {};
    std::vector<Group> groups = {};
};

// As help tells it.
struct FigureInfo {
    std::string name;
    const char* unit;
    std::string group = {}; // whose items have it; empty: the answer itself
};

template <class Record>
struct FigureRow {
    const char* name;
    const char* unit;
    double (*value)(const Record&);
    bool (*has)(const Record&) = nullptr; // null: always
};

// What is no number is left out: there is no answer then.
inline void addFigure(FigureList& list, std::string name, const char* unit, double value)
{
    if (std::isfinite(value))
        list.push_back({std::move(name), unit, value});
}

template <class Rows, class Record>
void addFigures(FigureList& list, const Rows& rows, const Record& record)
{
    for (const FigureRow<Record>& row : rows)
        if (!row.has || row.has(record))
            addFigure(list, row.name, row.unit, row.value(record));
}

template <class Rows>
void addInfos(std::vector<FigureInfo>& infos, const Rows& rows, const char* group = "")
{
    for (const auto& row : rows)
        infos.push_back({row.name, row.unit, group});
}

} // namespace torvane
