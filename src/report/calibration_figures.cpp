#include "report/calibration_figures.h"

#include "fit/fit_time.h"
#include "model/constants.h"

#include <cmath>

namespace torvane {

namespace {

using Row = FigureRow<CalibrationAnswer>;
using RideRow = FigureRow<CalibratedRide>;

bool hasAnswer(const CalibrationAnswer& answer)
{
    return answer.ridesUsed != 0;
}

bool hasAngle(const CalibrationAnswer& answer)
{
    return answer.angle.has_value();
}

bool hasHeldOut(const CalibrationAnswer& answer)
{
    return answer.heldOut.blocks != 0;
}

constexpr Row answerRows[] = {
    {"factor", "", [](const CalibrationAnswer& a) { return a.factor; }, hasAnswer},
    {"lowestFactor", "", [](const CalibrationAnswer& a) { return a.lowest; }, hasAnswer},
    {"highestFactor", "", [](const CalibrationAnswer& a) { return a.highest; }, hasAnswer},
    {"intervalLevel", "%", [](const CalibrationAnswer&) { return double{calibrationLevel}; }, hasAnswer},
    {"standardError", "", [](const CalibrationAnswer& a) { return a.error; }, hasAnswer},
    {"factorBefore", "", [](const CalibrationAnswer& a) { return a.factorBefore; }, hasAnswer},
    {"dragArea", "m2", [](const CalibrationAnswer& a) { return a.dragArea; }, hasAnswer},
    {"dragAreaSpeed", "kph", [](const CalibrationAnswer&) { return double{dragAreaSpeed}; }, hasAnswer},
    {"torsoAngle", "deg", [](const CalibrationAnswer& a) { return *a.angle; }, hasAngle},
    {"rollingChange", "%", [](const CalibrationAnswer&) { return double{rollingPercent}; }, hasAnswer},
    {"rollingEffect", "", [](const CalibrationAnswer& a) { return a.rollingEffect; }, hasAnswer},
    {"residual", "W", [](const CalibrationAnswer& a) { return a.residual; }, hasAnswer},
    {"temperature", "Cel", [](const CalibrationAnswer& a) { return a.temperature; }, hasAnswer},
    {"blocks", "", [](const CalibrationAnswer& a) { return static_cast<double>(a.heldOut.blocks); }, hasHeldOut},
    {"blocksBetter", "", [](const CalibrationAnswer& a) { return static_cast<double>(a.heldOut.better); }, hasHeldOut},
    {"meanErrorBefore", "%", [](const CalibrationAnswer& a) { return a.heldOut.before.blockError * 100; }, hasHeldOut},
    {"meanErrorAfter", "%", [](const CalibrationAnswer& a) { return a.heldOut.after.blockError * 100; }, hasHeldOut},
    {"shortErrorBefore", "W", [](const CalibrationAnswer& a) { return a.heldOut.before.shortError; }, hasHeldOut},
    {"shortErrorAfter", "W", [](const CalibrationAnswer& a) { return a.heldOut.after.shortError; }, hasHeldOut},
    {"correlationBefore", "", [](const CalibrationAnswer& a) { return a.heldOut.before.correlation; }, hasHeldOut},
    {"correlationAfter", "", [](const CalibrationAnswer& a) { return a.heldOut.after.correlation; }, hasHeldOut},
    {"firstHalfFactor", "", [](const CalibrationAnswer& a) { return a.heldOut.factor[0]; }, hasHeldOut},
    {"secondHalfFactor", "", [](const CalibrationAnswer& a) { return a.heldOut.factor[1]; }, hasHeldOut},
};

bool foundWind(const CalibratedRide& ride)
{
    return ride.foundWind;
}

template <LeftOut reason>
double secondsOf(const CalibratedRide& ride)
{
    return ride.seconds[reason];
}

constexpr RideRow rideRows[] = {
    {"start", "sec since 1970", [](const CalibratedRide& r) { return unixTime(r.start); }},
    {"factor", "", [](const CalibratedRide& r) { return r.factor; }},
    {"standardError", "", [](const CalibratedRide& r) { return r.error; }},
    {"windSpeed", "m/s", windSpeed, foundWind},
    {"windDirection", "deg", windDirection, foundWind},
    {"temperature", "Cel", [](const CalibratedRide& r) { return r.temperature; }},
    {"windows", "", [](const CalibratedRide& r) { return static_cast<double>(r.windows); }},
    {"used", "sec", secondsOf<used>},
    {"slow", "sec", secondsOf<leftSlow>},
    {"withoutPower", "sec", secondsOf<leftWithoutPower>},
    {"impossiblePower", "sec", secondsOf<leftStrong>},
    {"braking", "sec", secondsOf<leftBraking>},
    {"shortRuns", "sec", secondsOf<leftShort>},
};

constexpr RowColumn columns[] = {{"ride", 0},     {"time_s", 0},  {"distance_m", 0}, {"measured_W", 1},
                                 {"before_W", 1}, {"after_W", 1}, {"lowest_W", 1},   {"highest_W", 1}};

} // namespace

double windSpeed(const CalibratedRide& ride)
{
    return std::hypot(ride.wind.east, ride.wind.north);
}

double windDirection(const CalibratedRide& ride)
{
    double degrees = std::atan2(ride.wind.east, ride.wind.north) * 180 / pi;
    return degrees < 0 ? degrees + 360 : degrees;
}

Figures calibrationFigures(const CalibrationAnswer& answer)
{
    Figures figures;
    addFigures(figures.values, answerRows, answer);
    Figures::Group& group = figures.groups.emplace_back(Figures::Group{"rides", {}});
    for (const CalibratedRide& ride : answer.rides)
        if (ride.fault == CalibrationFault::none)
            addFigures(group.items.emplace_back(), rideRows, ride);
    return figures;
}

std::vector<FigureInfo> calibrationFigureInfos()
{
    std::vector<FigureInfo> infos;
    addInfos(infos, answerRows);
    addInfos(infos, rideRows, "rides");
    return infos;
}

void writeCalibrationRows(RowWriter& rows, const CalibrationAnswer& answer)
{
    rows.begin(columns);
    for (const CalibrationRow& row : answer.rows) {
        for (double value :
             {row.ride + 1.0, row.seconds, row.metres, row.measured, row.before, row.after, row.lowest, row.highest})
            rows.number(value);
        rows.endRow();
    }
}

GraphSeries calibrationGraph(const CalibrationAnswer& answer)
{
    GraphSeries graph;
    beginGraphSeries(graph, GraphLayout::calibration, static_cast<int>(answer.rows.size()));
    double before = 0, last = 0; // km of the rides before, and of the last window
    size_t ride = 0;
    for (const CalibrationRow& row : answer.rows) {
        if (row.ride != ride)
            before = last;
        ride = row.ride;
        last = before + row.metres / 1000;
        addGraphPoint(graph, {last, row.measured, row.before, row.after, row.lowest, row.highest,
                              row.measured - row.before, row.measured - row.after});
    }
    return graph;
}

} // namespace torvane
