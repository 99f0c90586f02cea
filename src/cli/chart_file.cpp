#include "cli/chart_file.h"

#include "core/text.h"
#include "plot/svg.h"

#include <charconv>

namespace torvane {

namespace {

bool readSide(std::string_view text, int& side)
{
    auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), side);
    return fault == std::errc() && end == text.data() + text.size() && side >= leastChartSide && side <= mostChartSide;
}

} // namespace

bool readChartSize(const std::string& text, ChartSize& size)
{
    size_t cross = text.find('x');
    return cross != text.npos && readSide(std::string_view(text).substr(0, cross), size.width) &&
           readSide(std::string_view(text).substr(cross + 1), size.height);
}

std::string checkChartOptions(const Request& request)
{
    ChartSize size;
    if (!request.size.empty() && !readChartSize(request.size, size))
        return formatText("--size needs WIDTHxHEIGHT from %d to %d pixels, not '%s'", leastChartSide, mostChartSide,
                          request.size.c_str());
    bool chosen = !request.curves.empty() || !request.x.empty() || !request.size.empty() || request.dark;
    return chosen && request.graph.empty() ? "--curves, --x, --size and --dark are for the picture of --graph"
                                           : std::string();
}

std::string chartOf(const Request& request, const GraphSeries& series, std::string& svg)
{
    CurveChoice choice = curvesAbout(series);
    if (std::string fault = chooseCurves(series, request.curves, request.x, choice); !fault.empty())
        return fault;
    ChartSize size;
    if (!request.size.empty())
        readChartSize(request.size, size);
    svg = svgText(drawChart(series, choice, size), request.dark ? SvgGround::dark : SvgGround::preferred);
    return {};
}

} // namespace torvane
