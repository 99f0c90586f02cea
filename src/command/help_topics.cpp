#include "command/help_topics.h"

#include "command/command_table.h"
#include "forms/form.h"

#include <algorithm>

namespace torvane {

namespace {

struct Topic {
    int first, last; // commands
    std::string_view anchor;
};

constexpr Topic topics[] = {
    {commandAbout, commandPage, "the-desktop-program"},
    {commandProfile, commandSaveProfile, "your-own-bicycle"},
    {commandCondition, commandCondition, "conditions"},
    {commandPreference, commandPreference, "preferences"},
    {commandReportHuman, commandReportProfile, "your-own-bicycle"},
    {commandReportCourse, commandReportCondition, "conditions"},
    {commandCadenceTheory, commandGearCombination, "the-calculators-without-a-road"},
    {commandPowerAndVelocity, commandPowerAndVelocity, "power-and-velocity"},
    {commandAcceleration, commandDeceleration, "acceleration-and-deceleration"},
    {commandPatternBraking, commandPatternBraking, "pattern-braking"},
    {commandInclinationAndVelocity, commandInclinationAndVelocity, "inclination-and-velocity"},
    {commandCriticalCornering, commandCriticalCornering, "critical-cornering"},
    {commandLoadRide, commandCreate, "a-recorded-ride-from-the-device-to-the-analysed-file"},
    {commandCombine, commandCombine, "two-halves-of-one-ride"},
    {commandConvert, commandConvert, "format-sport-or-unit-of-speed-is-wrong"},
    {commandAddMessages, commandAddMessages, "my-device-lost-the-laps"},
    {commandDivide, commandDivide, "one-file-that-should-be-several"},
    {commandExclude, commandExclude, "wrong-laps-or-totals"},
    {commandOneStroke, commandOneStroke, "a-recorded-ride-from-the-device-to-the-analysed-file"},
    {commandTimestamp, commandTimestamp, "the-clock-was-wrong"},
    {commandFieldDump, commandFieldDump, "what-is-in-this-file"},
    {commandPrepare, commandPrepare, "the-analysis-finds-little-in-my-ride"},
    {commandCompare, commandCompare, "a-prediction-against-a-power-meter"},
    {commandRide, commandRide, "what-a-ride-cost"},
    {commandCourse, commandCourse, "a-course-ahead"},
    {commandCalibrate, commandCalibrate, "what-your-air-drag-is"},
};

bool holdsPage(const Command& command, int formId)
{
    return command.sheet != Sheet::none &&
           std::ranges::any_of(sheetPages(command.sheet), [=](const Form* page) { return page->id == formId; });
}

} // namespace

std::string_view manualAnchor(int commandId)
{
    for (const Topic& topic : topics)
        if (commandId >= topic.first && commandId <= topic.last)
            return topic.anchor;
    return {};
}

std::string_view manualAnchorOfForm(int formId)
{
    for (const Command& command : commandTable())
        if (command.form == formId || holdsPage(command, formId))
            return manualAnchor(command.id);
    for (const Form* parent : allForms())
        if (std::ranges::any_of(parent->rows, [=](const Row& row) { return row.child == formId; }))
            return manualAnchorOfForm(parent->id);
    return {};
}

} // namespace torvane
