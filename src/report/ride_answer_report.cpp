#include "report/ride_answer_report.h"

#include "core/text.h"
#include "core/units.h"
#include "fit/fit_types.h"
#include "model/gear_table.h"
#include "report/fit_report.h"
#include "report/prepare_report.h"
#include "report/report_text.h"
#include "report/time_text.h"

#include <array>
#include <cmath>

namespace torvane {

namespace {

constexpr double worthTelling = 0.02; // share of records that could not be used

std::string durationText(uint32_t seconds)
{
    return hms(static_cast<int32_t>(seconds));
}

double kphOf(const StretchFigures& figures)
{
    return figures.seconds != 0 ? figures.metres / figures.seconds * kphPerMps : 0;
}

// A whole number within a column, or a dash.
std::string wholeText(const std::optional<double>& value, int width)
{
    return value ? formatText("%*.0f", width, *value) : formatText("%*s", width, "-");
}

bool hasMeter(const RideAnswer& answer)
{
    return answer.power[measuredFigure].has_value();
}

void appendWay(std::string& text, const RideAnswer& answer)
{
    const StretchFigures& whole = answer.whole;
    appendFormat(text, "\tstart           : %s UTC\n", formatDateTime(answer.start).c_str());
    appendFormat(text, "\tmoving          : %s, standing %s\n", durationText(whole.seconds).c_str(),
                 durationText(answer.elapsed - whole.seconds).c_str());
    appendFormat(text, "\tdistance        : %.3f km\n", answer.distance / 1000);
    if (answer.hasAltitude)
        appendFormat(text, "\tclimbed         : %.0f m\n", whole.climbed);
    appendFormat(text, "\tspeed           : average %.1f kph, highest %.1f kph\n", kphOf(whole),
                 answer.highestSpeed * kphPerMps);
}

// One line of figures from both sources; the second only where there is a meter.
void appendFigures(std::string& text, const std::string& label,
                   const std::array<std::optional<double>, figureSourceCount>& values, const char* unit)
{
    if (!values[predictedFigure] && !values[measuredFigure])
        return;
    appendFormat(text, "\t%-20s%s", label.c_str(), wholeText(values[predictedFigure], 10).c_str());
    if (values[measuredFigure])
        appendFormat(text, "%10.0f", *values[measuredFigure]);
    appendFormat(text, " %s\n", unit);
}

template <class Take>
std::array<std::optional<double>, figureSourceCount> ofBoth(const RideAnswer& answer, Take&& take)
{
    std::array<std::optional<double>, figureSourceCount> values;
    for (size_t source = 0; source < figureSourceCount; ++source)
        if (answer.power[source])
            values[source] = take(*answer.power[source]);
    return values;
}

std::string bestText(uint32_t seconds)
{
    return seconds < 60 ? formatText("highest of %u s", seconds) : formatText("highest of %u min", seconds / 60);
}

std::array<std::optional<double>, figureSourceCount> foodOf(const RideAnswer& answer)
{
    std::array<std::optional<double>, figureSourceCount> food;
    for (size_t source = 0; source < figureSourceCount; ++source)
        if (answer.power[source])
            food[source] = answer.foodKiloCalorie[source];
    return food;
}

void appendPower(std::string& text, const RideAnswer& answer)
{
    appendFormat(text, "\n power and work%*s%s\n\n", 19, "predicted", hasMeter(answer) ? "  measured" : "");
    appendFigures(text, "mean, coasting too", ofBoth(answer, [](const PowerFigures& p) { return p.mean; }), "W");
    appendFigures(text, "normalised", ofBoth(answer, [](const PowerFigures& p) { return p.normalised; }), "W");
    for (size_t i = 0; i < bestDurations.size(); ++i)
        appendFigures(text, bestText(bestDurations[i]),
                      ofBoth(answer, [&](const PowerFigures& p) { return p.best[i]; }), "W");
    appendFigures(text, "work", ofBoth(answer, [](const PowerFigures& p) { return p.kiloJoule; }), "kJ");
    appendFigures(text, "food for it", foodOf(answer), "kcal");
    appendFigures(text, "cadence, pedalling", answer.whole.cadence, "rpm");
}

void appendMeter(std::string& text, const RideAnswer& answer)
{
    if (!answer.meter)
        return;
    const MeterFigures& meter = *answer.meter;
    appendFormat(text, "\n prediction against the meter, over %u seconds that have both\n\n", meter.seconds);
    if (meter.mean[measuredFigure] > 0)
        appendFormat(text, "\tpredicted %.0f W is %.3f of measured %.0f W\n", meter.mean[predictedFigure],
                     meter.mean[predictedFigure] / meter.mean[measuredFigure], meter.mean[measuredFigure]);
    if (meter.correlation)
        appendFormat(text, "\tcorrelation of means over %u s: %.3f to %.3f, by where they begin\n", comparisonWindow,
                     meter.correlation->least, meter.correlation->most);
}

// Of a climb the height from foot to top makes a slope; of a lap it is the sum of what leads uphill.
struct StretchTable {
    const char* title;
    bool slopes;
};
constexpr StretchTable lapTable = {"laps", false}, climbTable = {"climbs", true};

void appendHeading(std::string& text, const StretchTable& table, bool measured)
{
    appendFormat(text, "\n %s\n\n\t  no  from km        km       time     kph   climb m", table.title);
    if (table.slopes)
        text += "  slope %";
    text += measured ? "  predicted W  measured W\n" : "  predicted W\n";
}

void appendStretch(std::string& text, const StretchTable& table, int number, const StretchFigures& s, bool measured)
{
    appendFormat(text, "\t%4d %8.3f %9.3f  %s %7.1f %9.0f", number, s.from / 1000, s.metres / 1000,
                 durationText(s.seconds).c_str(), kphOf(s), s.climbed);
    if (table.slopes)
        appendFormat(text, "%9.1f", s.metres > 0 ? s.climbed / s.metres * 100 : 0);
    text += wholeText(s.power[predictedFigure], 13);
    if (measured)
        text += wholeText(s.power[measuredFigure], 12);
    text += "\n";
}

void appendStretches(Screens& screens, std::string& text, const StretchTable& table,
                     const std::vector<StretchFigures>& stretches, bool measured)
{
    if (stretches.empty())
        return;
    appendHeading(text, table, measured);
    int number = 0;
    for (const StretchFigures& stretch : stretches) {
        appendStretch(text, table, ++number, stretch, measured);
        handOverWhenLarge(screens, Pane::lower, text);
    }
}

void appendGears(std::string& text, const Model& model, const RideAnswer& answer)
{
    constexpr double leastShare = 0.005;
    double pedalled = 0;
    for (const GearUse& use : answer.gears)
        pedalled += use.seconds;
    if (pedalled == 0)
        return;
    appendFormat(text, "\n gears, by speed and %s cadence\n\n",
                 answer.gearSource == measuredFigure ? "measured" : "predicted");
    for (const GearUse& use : answer.gears) {
        double share = use.seconds / pedalled;
        if (share >= leastShare)
            appendFormat(text, "\t%3d x %2d  %s %5.1f %%\n", frontToothOf(model, use.row), rearToothOf(model, use.row),
                         durationText(use.seconds).c_str(), share * 100);
    }
}

void appendBrakes(std::string& text, const RideAnswer& answer)
{
    if (!answer.brakes)
        return;
    const BrakeFigures& brakes = *answer.brakes;
    text += "\n brakes\n\n";
    appendFormat(text, "\tgreatest force  : %.1f kgf\n", brakes.mostForce);
    for (int wheel : {0, 1})
        appendFormat(text, "\t%-16s: highest %.1f Cel, %.1f kJ taken up\n", wheel == 0 ? "front brake" : "rear brake",
                     brakes.highest[wheel], brakes.kiloJoule[wheel]);
}

constexpr const char* ofAnswer = "answer";

void addSport(std::vector<std::string>& notes, const FitInventory& inventory)
{
    constexpr uint8_t generic = 0, cycling = 2, eBiking = 21;
    for (uint8_t sport : inventory.sessionSport) {
        if (sport == generic || sport == cycling || sport == eBiking)
            continue;
        std::string name = sportName(sport);
        notes.push_back(formatText("the device calls this %s; the answer is that of a bicycle",
                                   name.empty() ? "another sport" : name.c_str()));
        return;
    }
}

// Why there is no answer, where the words of the code do not say it.
std::string reasonText(const AnsweredRide& ride, StatusCode code)
{
    switch (code) {
    case fitTooShort:
        return formatText("the ride moves for %s at %.1f kph or faster; an answer takes %u minutes",
                          durationText(ride.answer.whole.seconds).c_str(), ride.analysis.settings.thresholdSpeed,
                          leastRide / 60);
    case fitNotSupported:
        return "the file is neither a FIT file nor a track that was ridden; a planned course has no times of its own";
    case fitPrepareFailed:
        return "no record of the file has a time that can be";
    default:
        return {};
    }
}

} // namespace

std::vector<std::string> rideNotes(const AnsweredRide& ride, StatusCode code)
{
    const RideAnswer& answer = ride.answer;
    std::vector<std::string> notes;
    if (std::string reason = reasonText(ride, code); !reason.empty())
        notes.push_back(reason);
    if (code != fitOk && code != fitTooShort)
        return notes;
    uint32_t lost = answer.recordsRead - answer.recordsUsed;
    if (lost > worthTelling * answer.recordsRead)
        notes.push_back(formatText("only %u of %u records could be used", answer.recordsUsed, answer.recordsRead));
    addSport(notes, ride.prepared.inventory);
    if (answer.meterStill)
        notes.emplace_back("all powers of the file are 0 and count as missing");
    std::vector<std::string> mended = preparationNotes(ride.findings);
    notes.insert(notes.end(), mended.begin(), mended.end());
    return notes;
}

void reportRideAnswer(Screens& screens, const Model& model, const AnsweredRide& ride,
                      const std::vector<std::string>& notes)
{
    const RideAnswer& answer = ride.answer;
    screens.setText(Pane::lower, "");
    std::string title = formatText("what '%s' cost", shownFileName(ride.prepared.path).c_str());
    screens.setStatus("status : " + title);
    std::string text = "\n " + title + "\n\n";
    appendWay(text, answer);
    appendPower(text, answer);
    appendMeter(text, answer);
    appendStretches(screens, text, lapTable, answer.laps, hasMeter(answer));
    appendStretches(screens, text, climbTable, answer.climbs, hasMeter(answer));
    appendGears(text, model, answer);
    appendBrakes(text, answer);
    appendNotes(text, ofAnswer, notes);
    handOver(screens, Pane::lower, text);
}

void reportRideNotes(Screens& screens, const std::vector<std::string>& notes)
{
    std::string text;
    appendNotes(text, ofAnswer, notes);
    screens.appendText(Pane::lower, text);
}

} // namespace torvane
