#include "report/ride_answer_figures.h"

#include "core/units.h"
#include "fit/fit_time.h"
#include "model/gear_table.h"

namespace torvane {

namespace {

using Row = FigureRow<RideAnswer>;
using StretchRow = FigureRow<StretchFigures>;

double kphOf(const StretchFigures& stretch)
{
    return stretch.metres / stretch.seconds * kphPerMps;
}

bool hasAltitude(const RideAnswer& answer)
{
    return answer.hasAltitude;
}

bool hasMeter(const RideAnswer& answer)
{
    return answer.meter.has_value();
}

bool hasCorrelation(const RideAnswer& answer)
{
    return answer.meter && answer.meter->correlation;
}

bool brakes(const RideAnswer& answer)
{
    return answer.brakes.has_value();
}

constexpr Row rideRows[] = {
    {"start", "sec since 1970", [](const RideAnswer& a) { return unixTime(a.start); }},
    {"seconds", "sec", [](const RideAnswer& a) { return static_cast<double>(a.whole.seconds); }},
    {"standing", "sec", [](const RideAnswer& a) { return static_cast<double>(a.elapsed - a.whole.seconds); }},
    {"distance", "km", [](const RideAnswer& a) { return a.distance / 1000; }},
    {"climbed", "m", [](const RideAnswer& a) { return a.whole.climbed; }, hasAltitude},
    {"speed", "kph", [](const RideAnswer& a) { return kphOf(a.whole); }},
    {"highestSpeed", "kph", [](const RideAnswer& a) { return a.highestSpeed * kphPerMps; }},
    {"recordsRead", "", [](const RideAnswer& a) { return static_cast<double>(a.recordsRead); }},
    {"recordsUsed", "", [](const RideAnswer& a) { return static_cast<double>(a.recordsUsed); }},
    {"meterSeconds", "sec", [](const RideAnswer& a) { return static_cast<double>(a.meter->seconds); }, hasMeter},
    {"meterPredictedMean", "W", [](const RideAnswer& a) { return a.meter->mean[predictedFigure]; }, hasMeter},
    {"meterMeasuredMean", "W", [](const RideAnswer& a) { return a.meter->mean[measuredFigure]; }, hasMeter},
    {"meterRatio", "",
     [](const RideAnswer& a) { return a.meter->mean[predictedFigure] / a.meter->mean[measuredFigure]; }, hasMeter},
    {"leastCorrelation", "", [](const RideAnswer& a) { return a.meter->correlation->least; }, hasCorrelation},
    {"mostCorrelation", "", [](const RideAnswer& a) { return a.meter->correlation->most; }, hasCorrelation},
    {"comparisonWindow", "sec", [](const RideAnswer&) { return double{comparisonWindow}; }, hasCorrelation},
    {"mostBrakeForce", "kgf", [](const RideAnswer& a) { return a.brakes->mostForce; }, brakes},
    {"frontBrakeHighest", "Cel", [](const RideAnswer& a) { return a.brakes->highest[0]; }, brakes},
    {"rearBrakeHighest", "Cel", [](const RideAnswer& a) { return a.brakes->highest[1]; }, brakes},
    {"frontBrakeKiloJoule", "kJ", [](const RideAnswer& a) { return a.brakes->kiloJoule[0]; }, brakes},
    {"rearBrakeKiloJoule", "kJ", [](const RideAnswer& a) { return a.brakes->kiloJoule[1]; }, brakes},
};

constexpr const char* sources[figureSourceCount] = {"predicted", "measured"};
static_assert(predictedFigure == 0 && measuredFigure == 1);

std::string bestName(size_t duration)
{
    return "Best" + std::to_string(bestDurations[duration]);
}

// Names go on from their source: "predictedMean", "measuredBest300" of 300 s.
void addPower(FigureList& list, const RideAnswer& answer, size_t source)
{
    std::string name = sources[source];
    if (answer.whole.cadence[source])
        addFigure(list, name + "Cadence", "rpm", *answer.whole.cadence[source]);
    if (!answer.power[source])
        return;
    const PowerFigures& power = *answer.power[source];
    addFigure(list, name + "Mean", "W", power.mean);
    if (power.normalised)
        addFigure(list, name + "Normalised", "W", *power.normalised);
    for (size_t i = 0; i < bestDurations.size(); ++i)
        if (power.best[i])
            addFigure(list, name + bestName(i), "W", *power.best[i]);
    addFigure(list, name + "KiloJoule", "kJ", power.kiloJoule);
    addFigure(list, name + "FoodKiloCalorie", "kcal", answer.foodKiloCalorie[source]);
}

template <FigureSource source>
double powerOf(const StretchFigures& stretch)
{
    return *stretch.power[source];
}

template <FigureSource source>
bool hasPower(const StretchFigures& stretch)
{
    return stretch.power[source].has_value();
}

constexpr StretchRow stretchRows[] = {
    {"from", "km", [](const StretchFigures& s) { return s.from / 1000; }},
    {"distance", "km", [](const StretchFigures& s) { return s.metres / 1000; }},
    {"seconds", "sec", [](const StretchFigures& s) { return static_cast<double>(s.seconds); }},
    {"speed", "kph", kphOf},
    {"climbed", "m", [](const StretchFigures& s) { return s.climbed; }},
    {"predictedMean", "W", powerOf<predictedFigure>, hasPower<predictedFigure>},
    {"measuredMean", "W", powerOf<measuredFigure>, hasPower<measuredFigure>},
};

void addStretches(Figures& figures, const char* name, const std::vector<StretchFigures>& stretches)
{
    if (stretches.empty())
        return;
    Figures::Group& group = figures.groups.emplace_back(Figures::Group{name, {}});
    for (const StretchFigures& stretch : stretches)
        addFigures(group.items.emplace_back(), stretchRows, stretch);
}

void addGears(Figures& figures, const Model& model, const RideAnswer& answer)
{
    if (answer.gears.empty())
        return;
    Figures::Group& group = figures.groups.emplace_back(Figures::Group{"gears", {}});
    for (const GearUse& use : answer.gears) {
        FigureList& gear = group.items.emplace_back();
        addFigure(gear, "frontTooth", "t", frontToothOf(model, use.row));
        addFigure(gear, "rearTooth", "t", rearToothOf(model, use.row));
        addFigure(gear, "seconds", "sec", use.seconds);
    }
}

} // namespace

Figures answerFigures(const Model& model, const RideAnswer& answer)
{
    Figures figures;
    addFigures(figures.values, rideRows, answer);
    for (size_t source = 0; source < figureSourceCount; ++source)
        addPower(figures.values, answer, source);
    addStretches(figures, "laps", answer.laps);
    addStretches(figures, "climbs", answer.climbs);
    addGears(figures, model, answer);
    return figures;
}

std::vector<FigureInfo> answerFigureInfos()
{
    std::vector<FigureInfo> infos;
    addInfos(infos, rideRows);
    for (const char* source : sources) {
        std::string name = source;
        for (const char* power : {"Mean", "Normalised"})
            infos.push_back({name + power, "W"});
        for (size_t i = 0; i < bestDurations.size(); ++i)
            infos.push_back({name + bestName(i), "W"});
        infos.push_back({name + "KiloJoule", "kJ"});
        infos.push_back({name + "FoodKiloCalorie", "kcal"});
        infos.push_back({name + "Cadence", "rpm"});
    }
    addInfos(infos, stretchRows, "laps");
    addInfos(infos, stretchRows, "climbs");
    for (const char* tooth : {"frontTooth", "rearTooth"})
        infos.push_back({tooth, "t", "gears"});
    infos.push_back({"seconds", "sec", "gears"});
    return infos;
}

} // namespace torvane
