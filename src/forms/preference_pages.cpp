// The preference pages. Their messages are whole texts, and accepting one marks nothing as changed.
#include "core/choices.h"
#include "forms/pages.h"
#include "forms/rows.h"

namespace torvane {

namespace {

constexpr Row physiologyRows[] = {
    checkRow(2111, TORVANE_FIELD(useFtp)),
    checkRow(2112, TORVANE_FIELD(useCalibration)),
    messages(realRow(2121, 2131, TORVANE_FIELD(energyEfficiency), {0.1, 0.5, 0.001}, "%5.3lf", nullptr),
             "found too small value of an energy efficiency", "found too large value of an energy efficiency"),
};

constexpr int accelerationButtons[] = {2211, 2212};
constexpr int decelerationButtons[] = {2213, 2214};

bool entersAccelerationInterval(const FormState& state, const Row&)
{
    return state.values.accelerationIntervalMode == intervalInput;
}

bool entersDecelerationInterval(const FormState& state, const Row&)
{
    return state.values.decelerationIntervalMode == intervalInput;
}

constexpr Row intervalRow(int id, Field field, RowTest test)
{
    Row row =
        messages(realRow(id, id + 10, field, {0.01, 0.1, 0.01}, "%5.3lf", nullptr, "sec"),
                 "found too small value of a recording interval", "found too large value of a recording interval");
    return enabledWhen(row, test);
}

constexpr Row processIntervalRows[] = {
    radioRow(accelerationButtons, TORVANE_FIELD(accelerationIntervalMode), intervalModeNames),
    intervalRow(2221, TORVANE_FIELD(accelerationInterval), entersAccelerationInterval),
    radioRow(decelerationButtons, TORVANE_FIELD(decelerationIntervalMode), intervalModeNames),
    intervalRow(2222, TORVANE_FIELD(decelerationInterval), entersDecelerationInterval),
};

constexpr Row specificHeatRow(int id, Field field)
{
    return messages(realRow(id, id + 10, field, {0.1, 1, 0.001}, "%5.3lf", nullptr, "J/gK"),
                    "found too small value of a specific heat", "found too large value of a specific heat");
}

constexpr Row specificHeatRows[] = {
    specificHeatRow(2311, TORVANE_FIELD(specificHeat[0])),
    specificHeatRow(2312, TORVANE_FIELD(specificHeat[1])),
    specificHeatRow(2313, TORVANE_FIELD(specificHeat[2])),
};

constexpr Row emittanceRow(int id, Field field)
{
    return messages(realRow(id, id + 10, field, {0.1, 1, 0.001}, "%5.3lf", nullptr),
                    "found too small value of an emittance", "found too large value of an emittance");
}

constexpr Row emittanceRows[] = {
    emittanceRow(2411, TORVANE_FIELD(emittance[0])),
    emittanceRow(2412, TORVANE_FIELD(emittance[1])),
    emittanceRow(2413, TORVANE_FIELD(emittance[2])),
};

constexpr Row graphRows[] = {
    checkRow(3011, TORVANE_FIELD(expressGraph)),
    checkRow(3012, TORVANE_FIELD(bandGraphPowerVelocity)),
    checkRow(3013, TORVANE_FIELD(bandGraphCornering)),
};

constexpr int initialValueButtons[] = {2611, 2612};

constexpr Row initialValueRows[] = {
    radioRow(initialValueButtons, TORVANE_FIELD(initialValueMode), initialValueModeNames),
};

bool limitsPrediction(const FormState& state, const Row&)
{
    return state.values.limitPowerPrediction != 0;
}

// The upper limits hold the up-down controls alone.
constexpr Row thresholdRow(int id, Field field, double most, const char* tooSmall, const char* unit)
{
    Row row = messages(realRow(id, id + 10, field, {0, most, 0.1}, "%5.1lf", nullptr, unit), tooSmall, nullptr);
    row.mostBinds = false;
    return row;
}

constexpr Row gpsDataRows[] = {
    thresholdRow(2721, TORVANE_FIELD(thresholdSpeed), 20, "found too small value of the speed", "kph"),
    checkRow(2711, TORVANE_FIELD(detectBraking)),
    checkRow(2712, TORVANE_FIELD(limitPowerPrediction)),
    enabledWhen(
        thresholdRow(2722, TORVANE_FIELD(thresholdPower), 5000, "found too small value as the threshold power", "W"),
        limitsPrediction),
};

constexpr Form preferencePage(int saveBox, const char* title, Page page, std::span<const Row> rows)
{
    return pageForm(saveBox, title, page, Marks::nothing, rows);
}

} // namespace

constinit const Form physiologyPage = preferencePage(2001, "physiology", pagePhysiology, physiologyRows);
constinit const Form processIntervalPage =
    preferencePage(2002, "process interval", pageProcessInterval, processIntervalRows);
constinit const Form specificHeatPage = preferencePage(2003, "specific heat", pageSpecificHeat, specificHeatRows);
constinit const Form emittancePage = preferencePage(2004, "emittance", pageEmittance, emittanceRows);
constinit const Form graphPage = preferencePage(2005, "graph", pageGraph, graphRows);
constinit const Form initialValuesPage = preferencePage(2006, "initial values", pageInitialValues, initialValueRows);
constinit const Form gpsDataPage = preferencePage(2007, "GPS data", pageGpsData, gpsDataRows);

} // namespace torvane
