#include "plot/graph.h"

#include "plot/geometry.h"
#include "plot/picture.h"
#include "plot/text_width.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <utility>

namespace torvane {

namespace {

constexpr GraphKind axesAlone = {2, false, false, false, false, false, false, false};
constexpr int kindWithFixedX = 3; // its combo boxes choose the two Y series
constexpr int kindWithSecondList = 8;

enum ControlId : int { selectLabel = 1, firstSelect, secondSelect, searchLabel, firstSearch, secondSearch };

void takeRange(Graph& graph, int series)
{
    double& least = graph.seriesMin[static_cast<size_t>(series)];
    double& most = graph.seriesMax[static_cast<size_t>(series)];
    for (int point = 0; point < graph.series.pointCount(); ++point) {
        double value = graph.series.value(point, series);
        if (plottable(value)) {
            least = std::min(least, value);
            most = std::max(most, value);
        }
    }
}

int groupOf(const Graph& graph, size_t series)
{
    return series < graph.series.scaleGroup.size() ? graph.series.scaleGroup[series] : 0;
}

void shareRanges(Graph& graph)
{
    for (size_t i = 1; i < graph.seriesMin.size(); ++i) {
        for (size_t j = 0; j < i; ++j) {
            if ((groupOf(graph, i) & groupOf(graph, j)) != 0) {
                graph.seriesMin[i] = graph.seriesMin[j] = std::min(graph.seriesMin[i], graph.seriesMin[j]);
                graph.seriesMax[i] = graph.seriesMax[j] = std::max(graph.seriesMax[i], graph.seriesMax[j]);
            }
        }
    }
}

std::vector<std::string> withEmptyFirst(const std::vector<std::string>& labels)
{
    std::vector<std::string> entries(1);
    entries.insert(entries.end(), labels.begin(), labels.end());
    return entries;
}

bool hasFixedX(const Graph& graph)
{
    return graph.series.graphKind == kindWithFixedX;
}

// Series that entry 0 of the two select lists stands for.
int firstChoice(const Graph& graph)
{
    return hasFixedX(graph) ? graph.series.alongs : 0;
}

bool isSelect(int controlId)
{
    return controlId == firstSelect || controlId == secondSelect;
}

int axisOf(const Graph& graph, int controlId)
{
    return (hasFixedX(graph) ? axisY : axisX) + controlId - firstSelect;
}

std::vector<std::string> entriesOf(const Graph& graph, int controlId)
{
    const GraphSeries& series = graph.series;
    if (!isSelect(controlId))
        return withEmptyFirst(controlId == firstSearch ? series.pointLabels : series.secondLabels);
    std::ptrdiff_t skipped = std::min<std::ptrdiff_t>(firstChoice(graph), std::ssize(series.seriesNames));
    return {series.seriesNames.begin() + skipped, series.seriesNames.end()};
}

bool hasCombo(const Graph& graph, int controlId)
{
    const GraphKind& kind = kindOf(graph);
    switch (controlId) {
    case firstSelect:
    case secondSelect:
        return kind.select;
    case firstSearch:
        return kind.search;
    case secondSearch:
        return kind.search && graph.series.graphKind == kindWithSecondList;
    default:
        return false;
    }
}

const char* nameOf(const Graph& graph, int controlId)
{
    if (!isSelect(controlId))
        return controlId == firstSearch ? "Search" : "Search, second label";
    if (hasFixedX(graph))
        return controlId == firstSelect ? "First curve" : "Second curve";
    return controlId == firstSelect ? "Across" : "Upwards";
}

// A combo box in which no entry is cut.
int widthFor(const std::vector<std::string>& entries)
{
    constexpr int least = 80, besideText = 30; // pixels; the second for frame, edges and arrow
    double widest = 0;                         // em
    for (const std::string& entry : entries)
        widest = std::max(widest, textWidth(entry));
    return std::max(least, besideText + static_cast<int>(std::ceil(widest * emOfHeight * controlFontHeight)));
}

// From the left, each control beside the one before.
struct ControlRow {
    const Graph& graph;
    std::vector<GraphControl> controls = {};
    int x = 20;

    void addLabel(int id, const char* text)
    {
        constexpr int width = 40;
        controls.push_back({id, text, x, controlTop, width, 20, {}, -1});
        x += width;
    }
    void addCombo(int id);
};

void ControlRow::addCombo(int id)
{
    constexpr int gap = 10;
    std::vector<std::string> entries = entriesOf(graph, id);
    int width = widthFor(entries);
    int selected = isSelect(id) ? graph.axisSeries[axisOf(graph, id)] - firstChoice(graph) : graph.picked;
    if (selected < 0 || selected >= std::ssize(entries))
        selected = -1;
    controls.push_back({id, nullptr, x, gap, width, 140, std::move(entries), selected, nameOf(graph, id)});
    x += width + gap;
}

} // namespace

bool plottable(double value)
{
    return std::fabs(value) < 1e300; // false for what is no number
}

const GraphKind& kindOf(const Graph& graph)
{
    int kind = graph.series.graphKind;
    return kind >= 0 && kind < static_cast<int>(std::size(graphKinds)) ? graphKinds[kind] : axesAlone;
}

Graph storeGraph(GraphSeries series)
{
    Graph graph;
    graph.series = std::move(series);
    size_t count = graph.series.seriesNames.size();
    graph.seriesMin.assign(count, 0.0);
    graph.seriesMax.assign(count, 0.0);
    for (size_t i = 0; i < count; ++i)
        takeRange(graph, static_cast<int>(i));
    shareRanges(graph);
    for (int axis = axisY; hasFixedX(graph) && axis <= axisSecondY; ++axis)
        graph.axisSeries[axis] = firstChoice(graph) + axis - axisY;
    return graph;
}

std::vector<GraphControl> graphControls(const Graph& graph)
{
    const GraphKind& kind = kindOf(graph);
    ControlRow row{graph};
    if (kind.select) {
        row.addLabel(selectLabel, "Select");
        row.addCombo(firstSelect);
        row.addCombo(secondSelect);
    }
    if (kind.search) {
        row.addLabel(searchLabel, "Search");
        row.addCombo(firstSearch);
    }
    if (hasCombo(graph, secondSearch))
        row.addCombo(secondSearch);
    return std::move(row.controls);
}

int freeLeftOf(const Graph& graph)
{
    constexpr int gap = 20;
    int free = gap;
    for (const GraphControl& control : graphControls(graph))
        free = std::max(free, control.x + control.width + gap);
    return free;
}

void chooseEntry(Graph& graph, int controlId, int entry)
{
    if (!hasCombo(graph, controlId) || entry < 0 || entry >= std::ssize(entriesOf(graph, controlId)))
        return;
    if (isSelect(controlId))
        graph.axisSeries[axisOf(graph, controlId)] = entry + firstChoice(graph);
    else
        graph.picked = entry;
}

void layAlong(Graph& graph, int series)
{
    if (hasFixedX(graph) && series >= 0 && series < graph.series.alongs)
        graph.axisSeries[axisX] = series;
}

bool pickPoint(Graph& graph, int width, int height, int x, int y)
{
    constexpr int64_t farthest = 351; // squared pixels, not reached by a hit
    if (!kindOf(graph).search)
        return false;
    GraphGeometry geometry = layOut(graph, width, height);
    int64_t nearest = farthest;
    int found = 0;
    for (int point = 0; point < graph.series.pointCount(); ++point) {
        Pixel place;
        if (placeOf(graph, geometry, point, axisY, place)) {
            int64_t dx = place.x - x;
            int64_t dy = place.y - y;
            int64_t squared = dx * dx + dy * dy;
            if (squared < nearest) {
                nearest = squared;
                found = point + 1;
            }
        }
    }
    if (found != 0)
        graph.picked = found;
    return found != 0;
}

} // namespace torvane
