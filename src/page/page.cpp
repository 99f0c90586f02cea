#include "page/page.h"

#include "core/shown_text.h"
#include "core/text.h"
#include "page/html.h"
#include "page/page_texts.h"
#include "page_assets.h"
#include "plot/chart.h"
#include "plot/graph.h"
#include "plot/svg.h"
#include "plot/track_map.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <iterator>

namespace torvane {

namespace {

constexpr ChartSize chartSize = {720, 260}, mapSize = {720, 420};
constexpr const char* kindNames[] = {"line", "area", "bars", "scatter", "stack"};

std::string attribute(const char* name, const std::string& value)
{
    return value.empty() ? std::string() : formatText(" %s=\"%s\"", name, htmlText(value).c_str());
}

std::string idsOf(const std::vector<std::string>& ids)
{
    std::string text;
    for (const std::string& id : ids)
        text += (text.empty() ? "s-" : " s-") + id;
    return text;
}

std::string shadesOf(const std::vector<std::pair<double, double>>& shades)
{
    std::string text;
    for (auto [from, to] : shades)
        appendFormat(text, "%s%.6g:%.6g", text.empty() ? "" : " ", from, to);
    return text;
}

std::string named(const PageSeries& series)
{
    return series.unit.empty() ? series.label : series.label + " (" + series.unit + ")";
}

// By how much a point of a chart reaches to both sides along x: a bar to its neighbours, a dot so far as to be seen.
double reachOf(ChartKind kind, const std::vector<double>& x)
{
    constexpr double dot = 0.002; // of the range
    if (kind == ChartKind::bars && x.size() > 1)
        return (x[1] - x[0]) / 2;
    return kind == ChartKind::scatter ? dot * (std::ranges::max(x) - std::ranges::min(x)) : 0;
}

// Durations on a logarithmic axis.
std::vector<ChartMark> durationMarks()
{
    std::vector<ChartMark> marks;
    for (int seconds : {1, 2, 5, 10, 20, 30})
        marks.push_back({std::log10(seconds), formatText("%d s", seconds)});
    for (int minutes : {1, 2, 5, 10, 20, 30})
        marks.push_back({std::log10(60 * minutes), formatText("%d min", minutes)});
    for (int hours : {1, 2, 5, 10, 20, 50, 100, 200, 500})
        marks.push_back({std::log10(3600 * hours), formatText("%d h", hours)});
    return marks;
}

// What a browser without scripts shows: lines; of bars their outline, of a scatter its dots.
Picture staticChart(const PageChart& chart, const PageSeries& x, const std::vector<const PageSeries*>& series)
{
    GraphSeries graph;
    graph.seriesNames.push_back(chart.logarithmic ? x.label : named(x));
    for (const PageSeries* each : series)
        graph.seriesNames.push_back(named(*each));
    double reach = reachOf(chart.kind, x.values);
    auto addRow = [&](double at, size_t i, bool gap) {
        graph.values.push_back(chart.logarithmic ? std::log10(at) : at);
        for (const PageSeries* each : series)
            graph.values.push_back(gap ? NAN : each->values[i]);
    };
    for (size_t i = 0; i < x.values.size(); ++i) {
        addRow(x.values[i] - reach, i, false);
        if (reach > 0)
            addRow(x.values[i] + reach, i, false);
        if (chart.kind == ChartKind::scatter)
            addRow(x.values[i], i, true);
    }
    CurveChoice choice;
    for (size_t i = 0; i < series.size(); ++i)
        choice.curves.push_back(static_cast<int>(i + 1));
    return drawChart(graph, choice, chartSize, chart.logarithmic ? durationMarks() : std::vector<ChartMark>());
}

std::string svgFor(const Picture& picture, std::string_view told)
{
    std::string svg = svgText(picture, SvgGround::styled);
    return "<svg role=\"img\" aria-label=\"" + htmlText(told) + "\"" + svg.substr(4);
}

std::string dataOf(const PageSeries& s)
{
    std::string data = formatText("<data class=\"series\" id=\"s-%s\"", s.id.c_str());
    data += attribute("data-label", s.label) + attribute("data-unit", s.unit);
    appendFormat(data, " data-decimals=\"%d\"%s", s.decimals, s.isTime ? " data-format=\"time\"" : "");
    return data + " data-f32=\"" + base64Floats(s.values) + "\" hidden></data>\n";
}

bool isFigure(const std::string& cell)
{
    size_t sign = cell.starts_with('-') || cell.starts_with('+') ? 1 : 0;
    return cell.size() > sign && std::isdigit(static_cast<unsigned char>(cell[sign]));
}

// Of each column of a table what marks its cells: those that are figures for the most part stand to the right.
std::vector<const char*> columnsOf(const PageTable& table)
{
    std::vector<const char*> columns(table.heads.size(), "");
    for (size_t i = 1; i < columns.size(); ++i) {
        int lead = 0; // of the figures over the words
        for (const std::vector<std::string>& row : table.rows)
            if (i < row.size() && !row[i].empty() && row[i] != "-")
                lead += isFigure(row[i]) ? 1 : -1;
        if (lead > 0)
            columns[i] = " class=\"n\"";
    }
    return columns;
}

std::string rowOf(const std::vector<std::string>& cells, const std::vector<const char*>& columns)
{
    std::string row = "<tr>";
    for (size_t i = 0; i < std::min(cells.size(), columns.size()); ++i) {
        std::string text = htmlText(cells[i]);
        row += i == 0 ? "<th scope=\"row\">" + text + "</th>" : std::string("<td") + columns[i] + ">" + text + "</td>";
    }
    return row + "</tr>\n";
}

// Nothing is fetched, and of scripts only this one runs.
std::string policy()
{
    return formatText("default-src 'none'; script-src 'sha256-%s'; img-src data:; style-src 'unsafe-inline'",
                      pageScriptHash);
}

} // namespace

HtmlPage::HtmlPage(std::string_view pageTitle, std::string_view pageLead) : title(pageTitle), lead(pageLead) {}

void HtmlPage::section(std::string_view sectionTitle)
{
    body += std::exchange(inSection, true) ? "</section>\n<section>\n" : "<section>\n";
    body += "<h2>" + htmlText(sectionTitle) + "</h2>\n";
}

void HtmlPage::paragraph(std::string_view text)
{
    body += "<p>" + htmlText(text) + "</p>\n";
}

void HtmlPage::figures(const std::vector<std::pair<std::string, std::string>>& figures)
{
    body += "<dl class=\"figures\">\n";
    for (const auto& [what, value] : figures)
        body += "<div><dt>" + htmlText(what) + "</dt><dd>" + htmlText(value) + "</dd></div>\n";
    body += "</dl>\n";
}

void HtmlPage::table(const PageTable& table)
{
    if (table.rows.empty())
        return;
    std::string name = htmlText(table.title);
    body += "<div class=\"table\" tabindex=\"0\" role=\"region\" aria-label=\"" + name + "\"><table><caption>" + name +
            "</caption>\n<thead><tr>";
    std::vector<const char*> columns = columnsOf(table);
    for (size_t i = 0; i < columns.size(); ++i)
        body += std::string("<th scope=\"col\"") + columns[i] + ">" + htmlText(table.heads[i]) + "</th>";
    body += "</tr></thead>\n<tbody>\n";
    for (const std::vector<std::string>& row : table.rows)
        body += rowOf(row, columns);
    body += "</tbody></table></div>\n";
}

void HtmlPage::notes(const std::vector<std::string>& notes)
{
    if (notes.empty())
        return;
    body += "<ul class=\"notes\">\n";
    for (const std::string& note : notes)
        body += "<li>" + htmlText(note) + "</li>\n";
    body += "</ul>\n";
}

void HtmlPage::picture(std::string_view caption, const Picture& picture, std::string_view told,
                       const std::vector<std::string>& keys)
{
    body += "<figure class=\"split\">" + svgFor(picture, told) + "<figcaption>" + htmlText(caption) +
            "</figcaption><p class=\"choice\">";
    for (size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].empty())
            continue;
        body += formatText("<span class=\"named\"><span class=\"key\" style=\"--ink:var(--c%zu)\"></span>", i) +
                htmlText(keys[i]) + "</span>";
    }
    body += "</p></figure>\n";
}

bool HtmlPage::add(PageSeries added)
{
    if (!std::ranges::any_of(added.values, plottable))
        return false;
    added.label = shownText(added.label); // pictures have it as well
    added.unit = shownText(shownUnit(added.unit));
    series.push_back(std::move(added));
    return true;
}

bool HtmlPage::has(std::string_view id) const
{
    return find(id) != nullptr;
}

const PageSeries* HtmlPage::find(std::string_view id) const
{
    auto found = std::ranges::find(series, id, &PageSeries::id);
    return found == series.end() ? nullptr : &*found;
}

std::vector<std::string> HtmlPage::present(const std::vector<std::string>& ids) const
{
    std::vector<std::string> held;
    std::ranges::copy_if(ids, std::back_inserter(held), [&](const std::string& id) { return has(id); });
    return held;
}

void HtmlPage::figure(std::string_view kind, const std::string& attributes, std::string_view caption,
                      const Picture& picture)
{
    appendFormat(body, "<figure class=\"%s\" id=\"c-%d\"", std::string(kind).c_str(), ++figureCount);
    body +=
        attributes + ">" + svgFor(picture, caption) + "<figcaption>" + htmlText(caption) + "</figcaption></figure>\n";
}

void HtmlPage::chart(const PageChart& chart)
{
    const PageSeries* x = find(chart.x);
    std::vector<std::string> ids = present(chart.series);
    if (!x || ids.empty())
        return;
    std::vector<std::string> shown = present(chart.shown);
    std::vector<const PageSeries*> drawn;
    for (const std::string& id : shown.empty() ? ids : shown)
        drawn.push_back(find(id));
    std::string attributes = attribute("data-x", "s-" + chart.x) + attribute("data-series", idsOf(ids)) +
                             attribute("data-kind", kindNames[static_cast<size_t>(chart.kind)]) +
                             attribute("data-shown", idsOf(shown)) + attribute("data-shade", shadesOf(chart.shades)) +
                             attribute("data-log", chart.logarithmic ? "x" : "") +
                             attribute("data-cursor", chart.cursor);
    if (chart.fit != std::pair<double, double>())
        appendFormat(attributes, " data-fit=\"%.9g %.9g\"", chart.fit.first, chart.fit.second);
    attributes += chart.fromZero ? " data-zero" : "";
    attributes += chart.diagonal ? " data-diagonal" : "";
    figure("chart", attributes, chart.title, staticChart(chart, *x, drawn));
}

void HtmlPage::map(const PageMap& map)
{
    std::vector<std::string> ids = present(map.series);
    TrackWay way = {map.latitude, map.longitude};
    TrackScale scale(way, mapSize);
    if (scale.empty())
        return;
    PageSeries east = {"easting", "East", "m", 0, {}}, north = {"northing", "North", "m", 0, {}};
    for (size_t i = 0; i < map.latitude.size(); ++i) {
        east.values.push_back(scale.east(map.longitude[i]));
        north.values.push_back(scale.north(map.latitude[i]));
    }
    add(std::move(east));
    add(std::move(north));
    const PageSeries* colours = ids.empty() ? nullptr : find(ids.front());
    TrackColouring colouring;
    std::string name = colours ? named(*colours) : std::string();
    if (colours)
        colouring = {name, colours->values};
    figure("map",
           attribute("data-x", "s-easting") + attribute("data-y", "s-northing") + attribute("data-series", idsOf(ids)),
           map.title, drawTrackMap(way, colouring, mapSize));
}

void HtmlPage::beginCharts()
{
    body += "<div class=\"charts\">\n";
}

void HtmlPage::endCharts()
{
    body += "</div>\n";
}

std::string HtmlPage::html() const
{
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta http-equiv=\"Content-Security-Policy\" content=\"" +
                       policy() +
                       "\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                       "<meta name=\"color-scheme\" content=\"light dark\">\n<title>" +
                       htmlText(title) + "</title>\n<style>\n" + themeStyle() + "\n" + pageStyle +
                       "</style>\n</head>\n<body>\n<header>\n<h1>" + htmlText(title) + "</h1>\n";
    if (!lead.empty())
        html += "<p class=\"lead\">" + htmlText(lead) + "</p>\n";
    html += "</header>\n<main>\n" + body + (inSection ? "</section>\n" : "") +
            "</main>\n<footer>Made by Torvane</footer>\n";
    for (const PageSeries& each : series)
        html += dataOf(each);
    return html + "<script>" + pageScript + "</script>\n</body>\n</html>\n";
}

} // namespace torvane
