#include "page/power_section.h"

#include "core/text.h"
#include "page/page_texts.h"
#include "ride/physiology.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace torvane {

namespace {

// Histogram

constexpr double binWidth = 20; // W

struct Spread {
    std::vector<double> minutes = {};                       // of each bin
    std::array<double, trainingLevelBoundCount> level = {}; // s
    double seconds = 0;
};

Spread spreadOf(const Model& model, std::span<const RiddenRow> rows, FigureSource source)
{
    constexpr double mostBins = 200;
    Spread spread;
    for (const RiddenRow& row : rows) {
        double watts = row.power[source];
        if (row.seconds == 0 || !(watts >= 0))
            continue;
        auto bin = static_cast<size_t>(std::min(watts / binWidth, mostBins - 1));
        spread.minutes.resize(std::max(spread.minutes.size(), bin + 1));
        spread.minutes[bin] += row.seconds / 60.0;
        spread.level[static_cast<size_t>(trainingLevelOf(model, watts) - 1)] += row.seconds;
        spread.seconds += row.seconds;
    }
    return spread;
}

std::string rangeText(const Model& model, int level)
{
    double from = model.trainingLevelBound[level];
    return level + 1 < trainingLevelBoundCount ? formatText("%.0f to %.0f", from, model.trainingLevelBound[level + 1])
                                               : formatText("%.0f and more", from);
}

PageTable levelTable(const Model& model, const Spread& spread)
{
    PageTable table = {formatText("Training levels by a threshold power of %.0f W", model.state.ftp),
                       {"Level", "W", "Time", "Share %"},
                       {}};
    for (int level = 0; level < trainingLevelBoundCount; ++level) {
        double seconds = spread.level[static_cast<size_t>(level)];
        std::string time = timeText(seconds);
        table.rows.push_back({trainingLevels[level].name, rangeText(model, level), time,
                              formatText("%.1f", seconds / spread.seconds * 100)});
    }
    return table;
}

// Every other level is shaded, so that each is seen.
std::vector<std::pair<double, double>> levelShades(const Model& model, double most)
{
    std::vector<std::pair<double, double>> shades;
    for (int level = 1; level < trainingLevelBoundCount; level += 2) {
        double to = level + 1 < trainingLevelBoundCount ? model.trainingLevelBound[level + 1] : most;
        if (model.trainingLevelBound[level] < most)
            shades.emplace_back(model.trainingLevelBound[level], std::min(to, most));
    }
    return shades;
}

void addHistogram(HtmlPage& page, const Model& model, std::span<const RiddenRow> rows, FigureSource source)
{
    Spread spread = spreadOf(model, rows, source);
    if (spread.seconds == 0)
        return;
    PageSeries power = {"bin", "Power", "W", 0, {}}, minutes = {"binMinutes", "Time", "min", 1, spread.minutes};
    for (size_t bin = 0; bin < spread.minutes.size(); ++bin)
        power.values.push_back((static_cast<double>(bin) + 0.5) * binWidth);
    double most = static_cast<double>(spread.minutes.size()) * binWidth;
    page.add(std::move(power));
    page.add(std::move(minutes));
    page.chart({.title = formatText("Time at each %s power; every other training level shaded",
                                    source == measuredFigure ? "measured" : "predicted"),
                .kind = ChartKind::bars,
                .x = "bin",
                .series = {"binMinutes"},
                .shades = levelShades(model, most),
                .fromZero = true});
    page.table(levelTable(model, spread));
}

// Best means

// Durations that somebody asks for, and the longest one of each source.
std::vector<uint32_t> durationsUpTo(uint32_t shortest, uint32_t most)
{
    std::vector<uint32_t> durations;
    auto add = [&](uint32_t seconds) {
        if (seconds < most)
            durations.push_back(seconds);
    };
    for (uint32_t unit : {1u, 60u})
        for (uint32_t times : {1u, 2u, 3u, 5u, 10u, 15u, 20u, 30u, 45u})
            add(unit * times);
    for (uint32_t hours = 1; hours < 12; ++hours)
        add(hours * 3600);
    for (uint64_t halfDays = 12 * 3600; halfDays < most; halfDays *= 2)
        add(static_cast<uint32_t>(halfDays));
    durations.push_back(most);
    if (auto place = std::ranges::lower_bound(durations, shortest); *place != shortest)
        durations.insert(place, shortest);
    return durations;
}

// From the first to the last row that has a power: a mean needs no less.
uint32_t secondsWith(std::span<const RiddenRow> rows, FigureSource source)
{
    auto counts = [&](const RiddenRow& row) { return row.seconds != 0 && std::isfinite(row.power[source]); };
    auto first = std::ranges::find_if(rows, counts);
    if (first == rows.end())
        return 0;
    auto last = std::find_if(rows.rbegin(), rows.rend(), counts);
    return last->timestamp - first->timestamp + first->seconds;
}

struct BestMeans {
    FigureSource source;
    const char *head, *id, *label;
    std::vector<std::optional<double>> watts = {};
};

PageTable bestTable(const std::vector<uint32_t>& durations, const std::vector<BestMeans>& best)
{
    PageTable table = {"Best mean powers", {"Over"}, {}};
    for (const BestMeans& each : best)
        table.heads.emplace_back(each.head);
    for (size_t i = 0; i < durations.size(); ++i) {
        std::vector<std::string>& row = table.rows.emplace_back();
        row.push_back(timeText(durations[i]));
        for (const BestMeans& each : best)
            row.push_back(each.watts[i] ? formatText("%.0f", *each.watts[i]) : "-");
    }
    return table;
}

void addBestMeans(HtmlPage& page, std::span<const RiddenRow> rows)
{
    std::vector<BestMeans> best;
    uint32_t shortest = UINT32_MAX;
    uint32_t longest = 0; // that one of them has: a meter that fails early takes nothing from the prediction
    for (const BestMeans& each : {BestMeans{measuredFigure, "Measured W", "bestMeasured", "Measured power"},
                                  BestMeans{predictedFigure, "Predicted W", "bestPredicted", "Predicted power"}})
        if (uint32_t seconds = secondsWith(rows, each.source); seconds != 0) {
            shortest = std::min(shortest, seconds);
            longest = std::max(longest, seconds);
            best.push_back(each);
        }
    if (best.empty())
        return;
    std::vector<uint32_t> durations = durationsUpTo(shortest, longest);
    PageSeries duration = {"duration", "Duration", "s", 0, {}, true};
    duration.values.assign(durations.begin(), durations.end());
    page.add(std::move(duration));
    for (BestMeans& each : best) {
        each.watts = bestMeansOf(rows, each.source, durations);
        PageSeries series = {each.id, each.label, "W", 0, {}};
        for (const std::optional<double>& mean : each.watts)
            series.values.push_back(mean.value_or(noFigure));
        page.add(std::move(series));
    }
    page.chart({.title = "Best mean power",
                .x = "duration",
                .series = {"bestMeasured", "bestPredicted"},
                .logarithmic = true,
                .fromZero = true});
    page.table(bestTable(durations, best));
    if (shortest < longest)
        page.paragraph("-: shorter than that from the first power to the last.");
}

} // namespace

void addSplitSection(HtmlPage& page, const std::string& title, const std::array<double, powerSinkCount>& kiloJoule,
                     const std::vector<EnergyPart>& besides)
{
    std::vector<EnergyPart> parts;
    for (size_t sink = 0; sink < powerSinkCount; ++sink)
        parts.push_back({powerSinkLabels[sink], kiloJoule[sink]});
    parts.insert(parts.end(), besides.begin(), besides.end());
    page.section("Where the power goes");
    page.chart({.title = "Power by what takes it; below zero it gives",
                .kind = ChartKind::stack,
                .x = "distance",
                .series = {powerSinkIds.begin(), powerSinkIds.end()},
                .shown = {powerSinkIds.begin(), powerSinkIds.end()}});
    addEnergy(page, title, parts);
}

void addSplitSection(HtmlPage& page, const std::array<double, powerSinkCount>& kiloJoule, double motor,
                     const RideAnswer& answer)
{
    std::string title = "Energy of the whole ride";
    std::vector<EnergyPart> besides;
    if (motor > 0)
        besides.push_back({"Motor", -motor});
    if (const std::optional<PowerFigures>& power = answer.power[predictedFigure]) {
        title += formatText(": of the predicted work, %.0f kJ", power->kiloJoule);
        // The split is of each record, the predicted power smoothed over its neighbours.
        double rest = power->kiloJoule + motor - std::accumulate(kiloJoule.begin(), kiloJoule.end(), 0.0);
        if (std::fabs(rest) >= 0.5)
            besides.push_back({"Smoothing", rest});
    }
    addSplitSection(page, title, kiloJoule, besides);
}

void addPowerSection(HtmlPage& page, const Model& model, std::span<const RiddenRow> rows, const RideAnswer& answer)
{
    page.section("Power");
    addHistogram(page, model, rows, answer.power[measuredFigure] ? measuredFigure : predictedFigure);
    addBestMeans(page, rows);
}

} // namespace torvane
