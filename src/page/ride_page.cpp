#include "page/ride_page.h"

#include "core/text.h"
#include "core/units.h"
#include "model/gear_table.h"
#include "page/page_texts.h"
#include "page/power_section.h"
#include "page/ride_series.h"
#include "page/thinning.h"
#include "report/fit_report.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace torvane {

namespace {

double kphOf(const StretchFigures& s)
{
    return s.seconds != 0 ? s.metres / s.seconds * kphPerMps : 0;
}

std::string wholeText(const std::optional<double>& value)
{
    return value ? formatText("%.0f", *value) : "-";
}

// Over the seconds that have both, which the figures beside are not.
std::string meterText(const MeterFigures& meter)
{
    std::string text =
        formatText("Over the %s that have both, the prediction is %.0f W, the meter %.0f W",
                   timeText(meter.seconds).c_str(), meter.mean[predictedFigure], meter.mean[measuredFigure]);
    if (meter.correlation)
        appendFormat(text, "; their means over 30 s correlate by %.3f to %.3f", meter.correlation->least,
                     meter.correlation->most);
    return text + ".";
}

void addPower(PageFigures& texts, const RideAnswer& answer)
{
    constexpr const char* names[figureSourceCount] = {"predicted", "measured"};
    for (FigureSource source : {measuredFigure, predictedFigure}) {
        if (!answer.power[source])
            continue;
        const PowerFigures& power = *answer.power[source];
        texts.emplace_back(formatText("Mean power, %s", names[source]), formatText("%.0f W", power.mean));
        if (power.normalised)
            texts.emplace_back(formatText("Normalised, %s", names[source]), formatText("%.0f W", *power.normalised));
        if (source == measuredFigure || !answer.power[measuredFigure])
            texts.emplace_back("Work", formatText("%.0f kJ", power.kiloJoule));
    }
}

PageFigures summaryOf(const RideAnswer& answer)
{
    PageFigures texts = {{"Distance", formatText("%.2f km", answer.distance / 1000)},
                         {"Moving", timeText(answer.whole.seconds)},
                         {"Standing", timeText(answer.elapsed - answer.whole.seconds)},
                         {"Average speed", formatText("%.1f kph", kphOf(answer.whole))},
                         {"Highest speed", formatText("%.1f kph", answer.highestSpeed * kphPerMps)}};
    if (answer.hasAltitude)
        texts.emplace_back("Climbed", formatText("%.0f m", answer.whole.climbed));
    addPower(texts, answer);
    return texts;
}

PageTable tableOf(const char* title, const std::vector<StretchFigures>& stretches, bool slopes, bool measured)
{
    PageTable table = {title, {"No", "From km", "km", "Time", "kph", "Climb m"}, {}};
    if (slopes)
        table.heads.emplace_back("Slope %");
    table.heads.emplace_back("Predicted W");
    if (measured)
        table.heads.emplace_back("Measured W");
    for (const StretchFigures& s : stretches) {
        std::vector<std::string>& row = table.rows.emplace_back(
            std::vector<std::string>{std::to_string(table.rows.size() + 1), formatText("%.3f", s.from / 1000),
                                     formatText("%.3f", s.metres / 1000), timeText(s.seconds),
                                     formatText("%.1f", kphOf(s)), formatText("%.0f", s.climbed)});
        if (slopes)
            row.push_back(formatText("%.1f", s.metres > 0 ? s.climbed / s.metres * 100 : 0));
        row.push_back(wholeText(s.power[predictedFigure]));
        if (measured)
            row.push_back(wholeText(s.power[measuredFigure]));
    }
    return table;
}

PageTable gearTable(const Model& model, const RideAnswer& answer)
{
    constexpr double leastShare = 0.005;
    PageTable table = {
        formatText("Gears, by speed and %s cadence", answer.gearSource == measuredFigure ? "measured" : "predicted"),
        {"Gear", "Time", "Share %"},
        {}};
    double pedalled = 0;
    for (const GearUse& use : answer.gears)
        pedalled += use.seconds;
    for (const GearUse& use : answer.gears)
        if (use.seconds > 0 && use.seconds / pedalled >= leastShare)
            table.rows.push_back({formatText("%d x %d", frontToothOf(model, use.row), rearToothOf(model, use.row)),
                                  timeText(use.seconds), formatText("%.1f", use.seconds / pedalled * 100)});
    return table;
}

// Where the page shows what lies so many metres into the ride, pauses left out.
double shownAt(const RideSeries& series, double metres)
{
    auto row = std::ranges::lower_bound(series.rows, metres, {}, &RiddenRow::distance);
    size_t at = std::min(static_cast<size_t>(row - series.rows.begin()), series.rows.size() - 1);
    return series.along[0].values[at];
}

std::vector<std::pair<double, double>> climbShades(const RideSeries& series, const RideAnswer& answer)
{
    std::vector<std::pair<double, double>> shades;
    for (const StretchFigures& climb : answer.climbs)
        shades.emplace_back(shownAt(series, climb.from), shownAt(series, climb.from + climb.metres));
    return shades;
}

// The points that stay are chosen by what has peaks that somebody looks for.
void addSeries(HtmlPage& page, RideSeries& series)
{
    constexpr std::string_view peaked[] = {"altitude", "speed",     "measured",   "predicted",
                                           "cadence",  "heartRate", "frontBrake", "rearBrake"};
    std::vector<const std::vector<double>*> peaks;
    for (const PageSeries& each : series.along)
        if (std::ranges::find(peaked, each.id) != std::end(peaked))
            peaks.push_back(&each.values);
    std::vector<size_t> places = thinnedPoints(series.rows.size(), peaks);
    for (PageSeries& each : series.along) {
        each.values = valuesAt(each.values, places);
        page.add(std::move(each));
    }
    series.latitude = valuesAt(series.latitude, places);
    series.longitude = valuesAt(series.longitude, places);
}

void addCharts(HtmlPage& page, const std::vector<std::pair<double, double>>& climbs, uint32_t seconds)
{
    constexpr uint32_t readable = 3600; // s: the gears of a longer ride are lines on one another
    std::vector<std::string> turning = {"cadence", "frontTooth", "rearTooth"};
    page.section("Along the way");
    page.beginCharts();
    page.chart({.title = climbs.empty() ? "Altitude" : "Altitude, climbs shaded",
                .kind = ChartKind::area,
                .x = "distance",
                .series = {"altitude"},
                .shades = climbs});
    page.chart({.title = "Speed", .x = "distance", .series = {"speed", "time"}, .shown = {"speed"}, .fromZero = true});
    page.chart({.title = "Power",
                .x = "distance",
                .series = {"measured30", "predicted30", "measured", "predicted"},
                .shown = {"measured30", "predicted30"},
                .fromZero = true});
    page.chart({.title = "Cadence and gears",
                .x = "distance",
                .series = turning,
                .shown = seconds < readable ? turning : std::vector<std::string>{"cadence"}});
    page.chart({.title = "Heart rate", .x = "distance", .series = {"heartRate"}});
    page.chart({.title = "Brake temperatures", .x = "distance", .series = {"frontBrake", "rearBrake"}});
    page.endCharts();
}

} // namespace

std::string ridePage(const Model& model, const AnsweredRide& ride, const std::vector<std::string>& notes)
{
    const RideAnswer& answer = ride.answer;
    RideSeries series = rideSeriesOf(model, ride);
    HtmlPage page(nameWithoutEnding(ride.prepared.path), dateText(answer.start) + ". " + riderText(model));
    page.section("Summary");
    page.figures(summaryOf(answer));
    if (answer.meter)
        page.paragraph(meterText(*answer.meter));
    if (!notes.empty()) {
        page.section("Mended or doubtful");
        page.notes(notes);
    }
    std::vector<std::pair<double, double>> climbs = climbShades(series, answer);
    addSeries(page, series);
    if (std::ranges::any_of(series.latitude, [](double degrees) { return std::isfinite(degrees); })) {
        page.section("Map");
        page.map({"Track, north above",
                  series.latitude,
                  series.longitude,
                  {answer.power[measuredFigure] ? "measured30" : "predicted30", "speed", "slope"}});
    }
    addCharts(page, climbs, answer.whole.seconds);
    addSplitSection(page, series.kiloJoule, series.motorKiloJoule, answer);
    addPowerSection(page, model, series.rows, answer);
    if (!answer.laps.empty() || !answer.climbs.empty()) {
        page.section("Laps and climbs");
        page.table(tableOf("Laps", answer.laps, false, answer.power[measuredFigure].has_value()));
        page.table(tableOf("Climbs", answer.climbs, true, answer.power[measuredFigure].has_value()));
    }
    if (PageTable gears = gearTable(model, answer); !gears.rows.empty()) {
        page.section("Gears");
        page.table(gears);
    }
    return page.html();
}

} // namespace torvane
