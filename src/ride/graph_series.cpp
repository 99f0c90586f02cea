#include "ride/graph_series.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace torvane {

namespace {

constexpr int mostReserved = 1'000'000; // points; what comes beyond grows

struct LayoutSeries {
    const char* name;
    int scaleGroup;
};

constexpr LayoutSeries frequencyBandSeries[] = {
    {"velocity(kph)", 0},   {"pedaling power(W)", 1},   {"crank power(W)", 1},    {"hub power(W)", 1},
    {"thrust power(W)", 1}, {"total air resist(W)", 1}, {"rolling resist(W)", 1}, {"gradiant resist(W)", 1},
};
constexpr LayoutSeries processSeries[] = {
    {"time(sec)", 0},         {"velocity(kph)", 0},       {"distance(m)", 0},        {"accele(mpss)", 0},
    {"pedaling power(W)", 0}, {"pedaling torque(Nm)", 0}, {"crank cadence(rpm)", 0},
};
constexpr LayoutSeries brakingSeries[] = {
    {"time(sec)", 0}, {"velocity(kph)", 0}, {"distance(m)", 0}, {"front brake Cel", 1}, {"rear brake Cel", 1},
};
constexpr LayoutSeries rollingSeries[] = {
    {"time(sec)", 0},
    {"velocity(kph)", 0},
    {"distance(m)", 0},
    {"accele(mpss)", 0},
};
constexpr LayoutSeries courseSeries[] = {
    {"distance(km)", 0},    {"altitude(m)", 0},    {"velocity(kph)", 0}, {"pedaling power(W)", 0},
    {"front brake Cel", 1}, {"rear brake Cel", 1}, {"time(min)", 0},
};
constexpr LayoutSeries corneringBandSeries[] = {
    {"velocity(kph)", 0},
    {"corner radius(m)", 0},
};
constexpr LayoutSeries calibrationSeries[] = {
    {"distance(km)", 0},    {"measured power(W)", 1}, {"power before(W)", 1},  {"power after(W)", 1},
    {"lowest power(W)", 1}, {"highest power(W)", 1},  {"missed before(W)", 1}, {"missed after(W)", 1},
};

enum GraphKind : int { oneLine = 1, twoLinesChosen = 3 };

struct Layout {
    int kind;
    std::span<const LayoutSeries> series;
};

// In the order of GraphLayout.
constexpr Layout layouts[] = {
    {twoLinesChosen, frequencyBandSeries}, {twoLinesChosen, processSeries}, {twoLinesChosen, brakingSeries},
    {twoLinesChosen, rollingSeries},       {oneLine, corneringBandSeries},  {twoLinesChosen, calibrationSeries},
    {twoLinesChosen, courseSeries},
};

// How many series a kind takes, and the complaint when there are others.
struct KindRule {
    int least, most;
    int complaint;
};

constexpr int any = 64;
constexpr KindRule kindRules[] = {
    {1, 1, 1}, {2, 2, 1}, {3, 3, 1}, {3, any, 1}, {2, 2, 1}, {2, any, 2}, {2, 2, 1}, {2, any, 2}, {2, any, 2},
};

} // namespace

void beginGraphSeries(GraphSeries& graph, GraphLayout layout, int pointsExpected)
{
    const Layout& chosen = layouts[static_cast<size_t>(layout)];
    graph = {};
    graph.graphKind = chosen.kind;
    for (const LayoutSeries& series : chosen.series) {
        graph.seriesNames.emplace_back(series.name);
        graph.scaleGroup.push_back(series.scaleGroup);
    }
    graph.values.reserve(static_cast<size_t>(std::clamp(pointsExpected, 0, mostReserved)) * chosen.series.size());
}

void addGraphPoint(GraphSeries& graph, std::initializer_list<double> row)
{
    graph.values.insert(graph.values.end(), row);
}

void keepValues(GraphSeries& graph)
{
    if (!graph.told)
        return;
    std::vector<double> values;
    values.reserve(static_cast<size_t>(graph.toldPoints) * graph.seriesNames.size());
    for (int point = 0; point < graph.toldPoints; ++point)
        for (int series = 0; series < graph.seriesCount(); ++series)
            values.push_back(graph.told(point, series));
    graph.values = std::move(values);
    graph.told = nullptr;
}

int checkGraphSeries(const GraphSeries& graph)
{
    constexpr int unknownKind = 4;
    if (graph.graphKind < 0 || graph.graphKind >= static_cast<int>(std::size(kindRules)))
        return unknownKind;
    const KindRule& rule = kindRules[graph.graphKind];
    bool fits = graph.seriesCount() >= rule.least && graph.seriesCount() <= rule.most;
    return fits ? 0 : rule.complaint;
}

} // namespace torvane
