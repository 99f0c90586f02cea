#include "page/run_page.h"

#include "core/text.h"
#include "page/page.h"
#include "page/thinning.h"
#include "plot/curves.h"
#include "plot/graph.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace torvane {

namespace {

// "front brake" of "frontBrake".
std::string wordsOf(const std::string& name)
{
    std::string words;
    for (char c : name) {
        if (std::isupper(static_cast<unsigned char>(c)) && !words.empty())
            words += ' ';
        words += words.empty() ? static_cast<char>(std::toupper(static_cast<unsigned char>(c)))
                               : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return words;
}

std::string idOf(const std::string& series, int number)
{
    std::string name = curveName(series);
    return name.empty() ? "series" + std::to_string(number) : name;
}

// The curves but for points whose x is no number or lies before the last one: those have no place on an axis.
std::vector<size_t> risingPoints(const GraphSeries& curves)
{
    std::vector<size_t> points;
    double last = -INFINITY;
    for (int point = 0; point < curves.pointCount(); ++point)
        if (double x = curves.value(point, 0); plottable(x) && x >= last) {
            last = x;
            points.push_back(static_cast<size_t>(point));
        }
    return points;
}

std::vector<PageSeries> seriesOf(const GraphSeries& curves)
{
    std::vector<size_t> points = risingPoints(curves);
    std::vector<PageSeries> all;
    for (int i = 0; i < curves.seriesCount(); ++i) {
        const std::string& name = curves.seriesNames[static_cast<size_t>(i)];
        PageSeries series = {idOf(name, i), wordsOf(curveName(name)), curveUnit(name), 2, {}};
        for (size_t point : points)
            series.values.push_back(curves.value(static_cast<int>(point), i));
        all.push_back(std::move(series));
    }
    std::vector<const std::vector<double>*> peaks;
    peaks.reserve(all.size());
    for (const PageSeries& series : all)
        peaks.push_back(&series.values);
    std::vector<size_t> places = thinnedPoints(points.size(), peaks);
    for (PageSeries& series : all)
        series.values = valuesAt(series.values, places);
    return all;
}

void addCurves(HtmlPage& page, const GraphSeries& curves)
{
    std::vector<PageSeries> all = seriesOf(curves);
    PageChart chart;
    chart.title = "Curves to choose from";
    chart.x = all[0].id;
    for (int curve : curvesAbout(curves).curves)
        chart.shown.push_back(all[static_cast<size_t>(curve)].id);
    for (size_t i = 1; i < all.size(); ++i)
        chart.series.push_back(all[i].id);
    for (PageSeries& series : all)
        page.add(std::move(series));
    page.section("Curves");
    page.chart(chart);
}

void addGroup(HtmlPage& page, const Figures::Group& group)
{
    PageTable table = {wordsOf(group.name), {"No"}, {}};
    for (const FigureList& item : group.items) {
        std::vector<std::string> row = {std::to_string(table.rows.size() + 1)};
        for (const Figure& figure : item) {
            if (table.rows.empty())
                table.heads.push_back(wordsOf(figure.name) +
                                      (*figure.unit ? " (" + std::string(shownUnit(figure.unit)) + ")" : ""));
            row.push_back(formatText("%.6g", figure.value));
        }
        if (row.size() == table.heads.size())
            table.rows.push_back(std::move(row));
    }
    page.table(table);
}

} // namespace

std::string runPage(const Model& model, std::string_view title, const Figures& figures, const GraphSeries* curves,
                    const std::vector<std::vector<std::string>>& inputs)
{
    HtmlPage page(title, "A simulation. " + riderText(model));
    if (curves && curves->pointCount() > 1 && curves->seriesCount() > 1)
        addCurves(page, *curves);
    PageTable table = {"Figures of the answer", {"What", "How much", "Unit"}, {}};
    for (const Figure& figure : figures.values)
        table.rows.push_back(
            {wordsOf(figure.name), formatText("%.6g", figure.value), std::string(shownUnit(figure.unit))});
    page.section("Figures");
    page.table(table);
    for (const Figures::Group& group : figures.groups)
        addGroup(page, group);
    page.section("Inputs");
    page.table({"What was entered", {"Entry", "Value", "Which is"}, inputs});
    return page.html();
}

} // namespace torvane
