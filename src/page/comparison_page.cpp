#include "page/comparison_page.h"

#include "core/text.h"
#include "page/page.h"
#include "page/page_texts.h"
#include "page/thinning.h"
#include "report/fit_report.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace torvane {

namespace {

// Means over 30 s that follow one another, none across a hole: there stands no number.
struct Windows {
    std::vector<double> place, first, second, difference;

    void add(double at, double one, double other)
    {
        place.push_back(at);
        first.push_back(one);
        second.push_back(other);
        if (std::isfinite(one))
            difference.push_back(other - one);
    }
};

struct Axis {
    bool distance; // km; else s since the start
    double of(const CommonSecond& second, uint32_t start) const
    {
        return distance ? second.metres / 1000 : second.timestamp - start;
    }
};

// By distance where the first ride has one that never falls.
Axis axisOf(const std::vector<CommonSecond>& seconds)
{
    double last = 0;
    for (const CommonSecond& second : seconds) {
        if (!(second.metres >= last))
            return {false};
        last = second.metres;
    }
    return {last > 0};
}

Windows windowsOf(const std::vector<CommonSecond>& seconds, Axis axis)
{
    Windows windows;
    size_t from = 0;
    for (size_t i = 0; i < seconds.size(); ++i) {
        if (i > 0 && seconds[i].timestamp != seconds[i - 1].timestamp + 1) {
            windows.add(axis.of(seconds[i], seconds[0].timestamp), NAN, NAN);
            from = i;
        }
        if (i + 1 - from < comparisonWindow)
            continue;
        double sums[2] = {};
        for (size_t j = from; j <= i; ++j)
            for (int ride : {0, 1})
                sums[ride] += seconds[j].watts[ride] / comparisonWindow;
        windows.add(axis.of(seconds[i], seconds[0].timestamp), sums[0], sums[1]);
        from = i + 1;
    }
    return windows;
}

// Slope and intercept of the second by the first; 0, 0 where there is no spread.
std::pair<double, double> regression(const Windows& windows)
{
    double n = static_cast<double>(windows.difference.size()), x = 0, y = 0, xx = 0, xy = 0;
    for (size_t i = 0; i < windows.first.size(); ++i) {
        if (!std::isfinite(windows.first[i]))
            continue;
        x += windows.first[i];
        y += windows.second[i];
        xx += windows.first[i] * windows.first[i];
        xy += windows.first[i] * windows.second[i];
    }
    double spread = n * xx - x * x;
    if (!(spread > 0))
        return {0, 0};
    double slope = (n * xy - x * y) / spread;
    return {slope, (y - slope * x) / n};
}

// W: the narrowest of these by which the differences have few enough bars to be read.
double binFor(double spread)
{
    constexpr double widths[] = {1, 2, 5, 10, 20, 50};
    constexpr double mostBars = 25;
    auto narrow = std::ranges::find_if(widths, [&](double width) { return spread / width <= mostBars; });
    return narrow != std::end(widths) ? *narrow : 100;
}

void addDifferences(HtmlPage& page, const Windows& windows)
{
    auto [least, most] = std::ranges::minmax(windows.difference);
    double bin = binFor(most - least), from = std::floor(least / bin) * bin;
    constexpr double mostBins = 400;
    size_t bins = static_cast<size_t>(std::min((most - from) / bin + 1, mostBins));
    PageSeries middle = {"difference", "Second less first", "W", 0, {}},
               count = {"windows", "Means of 30 s", "", 0, {}};
    count.values.resize(bins);
    for (size_t i = 0; i < bins; ++i)
        middle.values.push_back(from + (static_cast<double>(i) + 0.5) * bin);
    for (double value : windows.difference)
        ++count.values[std::min(static_cast<size_t>((value - from) / bin), bins - 1)];
    page.add(std::move(middle));
    page.add(std::move(count));
    page.chart({.title = "How often they differ so much",
                .kind = ChartKind::bars,
                .x = "difference",
                .series = {"windows"},
                .fromZero = true});
}

void addWindows(HtmlPage& page, const Windows& windows, Axis axis, const std::string& first, const std::string& second)
{
    const std::vector<double>* peaks[] = {&windows.first, &windows.second};
    std::vector<size_t> places = thinnedPoints(windows.place.size(), peaks);
    if (axis.distance)
        page.add({"distance", "Distance", "km", 3, valuesAt(windows.place, places)});
    else
        page.add({"time", "Time", "", 0, valuesAt(windows.place, places), true});
    page.add({"first", first, "W", 0, valuesAt(windows.first, places)});
    page.add({"second", second, "W", 0, valuesAt(windows.second, places)});
    std::string x = axis.distance ? "distance" : "time";
    page.section("Means over 30 s");
    page.beginCharts();
    page.chart({.title = "Both powers along the way", .x = x, .series = {"first", "second"}, .fromZero = true});
    page.chart({.title = second + " by " + first + ", with the line of least squares; dashed where both are equal",
                .kind = ChartKind::scatter,
                .x = "first",
                .series = {"second"},
                .diagonal = true,
                .fit = regression(windows),
                .cursor = "s-" + x});
    addDifferences(page, windows);
    page.endCharts();
}

PageTable sectorsOf(const RideComparison& comparison)
{
    PageTable table = {"Stretches without a hole",
                       {"Start UTC", "Time", "First W", "Second W", "Ratio", "First normalised W",
                        "Second normalised W", "Correlation"},
                       {}};
    for (const PowerComparison& s : comparison.sectors)
        table.rows.push_back({formatTimeOfDay(s.start), timeText(s.seconds), formatText("%.0f", s.mean[0]),
                              formatText("%.0f", s.mean[1]),
                              s.mean[0] > 0 ? formatText("%.3f", s.mean[1] / s.mean[0]) : "-",
                              formatText("%.0f", s.normalised[0]), formatText("%.0f", s.normalised[1]),
                              s.windows >= leastWindows ? formatText("%.3f", s.correlation) : "-"});
    return table;
}

} // namespace

std::string comparisonPage(const RideComparison& comparison, const std::string& first, const std::string& second)
{
    const PowerComparison& whole = comparison.whole;
    std::string names[] = {nameWithoutEnding(first), nameWithoutEnding(second)};
    HtmlPage page(names[0] + " and " + names[1], dateText(whole.start) + ". Two rides, second by second.");
    if (names[0] == names[1]) {
        names[0] += " (first)";
        names[1] += " (second)";
    }
    PageFigures figures = {{"Seconds of both", timeText(whole.seconds)},
                           {"Mean, first", formatText("%.0f W", whole.mean[0])},
                           {"Mean, second", formatText("%.0f W", whole.mean[1])},
                           {"Normalised, first", formatText("%.0f W", whole.normalised[0])},
                           {"Normalised, second", formatText("%.0f W", whole.normalised[1])}};
    if (whole.mean[0] > 0)
        figures.emplace_back("Second to first", formatText("%.3f", whole.mean[1] / whole.mean[0]));
    if (whole.windows >= leastWindows)
        figures.emplace_back("Correlation", formatText("%.3f", whole.correlation));
    page.section("Summary");
    page.figures(figures);
    Axis axis = axisOf(comparison.common);
    if (Windows windows = windowsOf(comparison.common, axis); !windows.difference.empty())
        addWindows(page, windows, axis, names[0], names[1]);
    page.section("Stretches");
    page.table(sectorsOf(comparison));
    return page.html();
}

} // namespace torvane
