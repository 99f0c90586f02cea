// The commands as data: what each asks, what it commits, what runs, what follows.
#include "command/command_table.h"

#include "command/fit_tool_command.h"
#include "command/gps_command.h"
#include "command/gps_load_command.h"
#include "command/prepare_command.h"
#include "command/ride_answer_command.h"
#include "command/ride_command.h"
#include "command/settings_command.h"
#include "command/theory_command.h"
#include "report/profile_report.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace torvane {

namespace {

using enum Work;

constexpr Command dialogCommand(int id, const char* label, char key, int form)
{
    return {.id = id, .label = label, .key = key, .entry = form ? Entry::dialog : Entry::immediate, .form = form};
}

constexpr Command windowCommand(int id, const char* label, char key = 0)
{
    return {.id = id, .label = label, .key = key, .shift = key != 0};
}

using Operation = ResultStatus (*)(Session&);
using Commit = void (*)(ParameterBlock&, ParameterBlock&);

constexpr Command sheetCommand(int id, const char* label, char key, Sheet sheet, Commit commit, Operation operation,
                               const char* aliases)
{
    return {.id = id,
            .label = label,
            .key = key,
            .entry = Entry::sheet,
            .sheet = sheet,
            .work = settings,
            .commit = commit,
            .operation = operation,
            .aliases = aliases};
}

constexpr Command profileCommand(int id, const char* label, char key, Entry entry, FileKind writes, Operation operation,
                                 const char* aliases)
{
    return {.id = id,
            .label = label,
            .key = key,
            .entry = entry,
            .work = settings,
            .operation = operation,
            .files = {1, 1, writes, "FILE.pro"},
            .aliases = aliases};
}

template <uint32_t sections>
ResultStatus profileReport(Session& session)
{
    reportProfile(session.screens, Pane::upper, session.model.state, session.working, sections);
    return 0;
}

template <uint32_t sections>
ResultStatus conditionReport(Session& session)
{
    reportCondition(session.screens, Pane::upper, session.model.state, sections);
    return 0;
}

constexpr Command reportCommand(int id, const char* label, char key, Operation operation)
{
    return {.id = id, .label = label, .key = key, .shift = key != 0, .work = report, .operation = operation};
}

constexpr Command theoryCommand(int id, const char* label, char key, int form, TheoryCalculator calculator)
{
    return {.id = id,
            .label = label,
            .key = key,
            .shift = true,
            .entry = Entry::dialog,
            .form = form,
            .work = worker,
            .commit = commitTheory,
            .operation = runTheory,
            .family = Family::theory,
            .member = calculator,
            .showsLower = true};
}

constexpr Command rideCommand(int id, const char* label, char key, int form, RideMode mode, GraphWhen graph)
{
    return {.id = id,
            .label = label,
            .key = key,
            .entry = Entry::dialog,
            .form = form,
            .work = worker,
            .commit = commitRide,
            .operation = dispatchRide,
            .family = Family::ride,
            .member = mode,
            .graph = graph,
            .showsLower = true};
}

constexpr CommandFiles oneRide = {1, 1, FileKind::nothing, "RIDE.fit"};
constexpr CommandFiles rideToRide = {2, 2, FileKind::fit, "RIDE.fit OUT.fit"};

constexpr Command gpsCommand(int id, const char* label, char key, bool shift, int form, RideUse ride, MenuAfter menu,
                             Operation operation, const char* aliases, CommandFiles files = oneRide)
{
    return {.id = id,
            .label = label,
            .key = key,
            .shift = shift,
            .entry = form ? Entry::dialog : Entry::openFit,
            .form = form,
            .work = worker,
            .commit = form ? commitGps : nullptr,
            .operation = operation,
            .answers = Answers::codes,
            .ride = ride,
            .takesSettings = files.writes != FileKind::nothing,
            .files = files,
            .menu = menu,
            .showsLower = true,
            .aliases = aliases};
}

// The FIT tools leave their "save as default" flags to the next commit of the recorded rides.
constexpr Command toolCommand(int id, const char* label, char key, bool shift, int form, Operation operation,
                              const char* aliases, CommandFiles files = {2, 2, FileKind::fit, "IN.fit OUT.fit"})
{
    return {.id = id,
            .label = label,
            .key = key,
            .shift = shift,
            .entry = Entry::dialog,
            .form = form,
            .work = worker,
            .operation = operation,
            .answers = Answers::codes,
            .files = files,
            .menu = MenuAfter::toolRan,
            .aliases = aliases};
}

constexpr bool onlyNew = true, inParts = true;

constexpr Command commands[] = {
    dialogCommand(commandAbout, "About", 'Q', 107),
    dialogCommand(commandExit, "Exit", 'X', 108),
    windowCommand(commandFontSelectedUpper, "Font Selected"),
    windowCommand(commandFontAllUpper, "Font All"),
    windowCommand(commandFontSelectedLower, "Font Selected"),
    windowCommand(commandFontAllLower, "Font All"),
    windowCommand(commandClearUpper, "Clear Screen"),
    windowCommand(commandClearLower, "Clear Screen"),
    windowCommand(commandPrintUpper, "Print"),
    windowCommand(commandPrintLower, "Print"),
    windowCommand(commandSaveUpper, "Save"),
    windowCommand(commandSaveLower, "Save"),
    windowCommand(commandSaveAsUpper, "Save As"),
    windowCommand(commandSaveAsLower, "Save As"),
    windowCommand(commandOpenUpper, "Open Upper", '1'),
    windowCommand(commandOpenLower, "Open Lower", '2'),
    windowCommand(commandPageSetUp, "Page SetUp"),
    sheetCommand(commandProfile, "Setup Profile", 'P', Sheet::profile, commitProfile, finishProfile, "profile"),
    profileCommand(commandLoadProfile, "Load Profile Data", 'O', Entry::openProfile, FileKind::nothing,
                   loadNamedProfile, "load-profile"),
    profileCommand(commandSaveProfile, "Save Current Profile", 'S', Entry::saveProfile, FileKind::profile,
                   saveNamedProfile, "save-profile"),
    sheetCommand(commandCondition, "Setup Condition", 'R', Sheet::condition, commitCondition, finishCondition, ""),
    sheetCommand(commandPreference, "Preference", 'K', Sheet::preference, commitPreference, finishPreference,
                 "preferences"),
    reportCommand(commandReportHuman, "Human", 'H', profileReport<sectionHuman>),
    reportCommand(commandReportEquipment, "Equipments", 'E', profileReport<sectionEquipment>),
    reportCommand(commandReportShifting, "Shifting", 'S', profileReport<sectionShifting>),
    reportCommand(commandReportWheel, "Wheel", 'W', profileReport<sectionWheel>),
    reportCommand(commandReportTyre, "Tyre", 'Y', profileReport<sectionTyre>),
    reportCommand(commandReportBrake, "Brake", 'B', profileReport<sectionBrake>),
    reportCommand(commandReportPowerLoss, "Power Loss", 'L', profileReport<sectionPowerLoss>),
    reportCommand(commandReportAssist, "e-Assist", 'P', profileReport<sectionAssist>),
    reportCommand(commandReportProfile, "All Profile", 'A', profileReport<allProfileSections>),
    reportCommand(commandReportCourse, "Course", 0, conditionReport<sectionCourse>),
    reportCommand(commandReportPeloton, "Peloton", 0, conditionReport<sectionPeloton>),
    reportCommand(commandReportCondition, "Condition", 'C', conditionReport<allConditionSections>),
    theoryCommand(commandCadenceTheory, "Cadence Theory", 'T', 2011, calculatorCadence),
    theoryCommand(commandPedalingDynamics, "Pedaling Dynamics", 'D', 2012, calculatorPedaling),
    theoryCommand(commandGearCombination, "Gear Combination", 'G', 2013, calculatorGears),
    rideCommand(commandPowerAndVelocity, "Power and Velocity", 'V', 2021, ridePowerAndVelocity,
                GraphWhen::bandPowerVelocity),
    rideCommand(commandAcceleration, "Acceleration", 'A', 2022, rideAcceleration, GraphWhen::express),
    rideCommand(commandDeceleration, "Deceleration", 'D', 2023, rideDeceleration, GraphWhen::express),
    rideCommand(commandPatternBraking, "Pattern Braking", 'B', 2024, ridePatternBraking, GraphWhen::express),
    rideCommand(commandInclinationAndVelocity, "Inclination and Velocity", 'I', 2025, rideInclinationAndVelocity,
                GraphWhen::express),
    rideCommand(commandCriticalCornering, "Critical Cornering", 'C', 2026, rideCriticalCornering,
                GraphWhen::bandCornering),
    gpsCommand(commandLoadRide, "Load Activity FIT File", 'L', false, 0, RideUse::chosen, MenuAfter::loaded,
               loadGpsFile, "load"),
    gpsCommand(commandExpress, "Express Source Data", 'E', false, 2052, RideUse::loaded, MenuAfter::expressed,
               expressSourceData, "express"),
    gpsCommand(commandAnalyse, "Analyse And Predict", 'T', false, 2053, RideUse::ready, MenuAfter::analysed,
               analyseAndPredict, "analyse predict"),
    gpsCommand(commandCreate, "Create FIT File Analysed", 'F', false, 2054, RideUse::analysed, MenuAfter::none,
               createAnalysedFile, "create", rideToRide),
    toolCommand(commandCombine, "Combine FIT Files", 'M', false, 2055, combineCommand, "combine",
                {2, 6, FileKind::fit, "A.fit B.fit [C.fit [D.fit [E.fit]]] OUT.fit", onlyNew}),
    toolCommand(commandConvert, "Convert FIT File Format", 'N', false, 2056, convertCommand, "convert"),
    toolCommand(commandAddMessages, "Add Messages", 'U', false, 2057, addMessagesCommand, "add"),
    toolCommand(commandDivide, "Divide A Fit File", 'V', true, 2058, divideCommand, "divide",
                {2, 2, FileKind::fit, "IN.fit BASE.fit", false, inParts}),
    toolCommand(commandExclude, "Exclude Messages", 'X', true, 2059, excludeCommand, "exclude"),
    gpsCommand(commandOneStroke, "At One Stroke", 'F', true, 2060, RideUse::none, MenuAfter::oneStroke, atOneStroke,
               "stroke", rideToRide),
    toolCommand(commandTimestamp, "Increase Timestamp", 'I', true, 2091, increaseTimestampCommand, "timestamp"),
    toolCommand(commandFieldDump, "Field Dump", 'Q', true, 2092, fieldDumpCommand, "dump",
                {2, 2, FileKind::csv, "IN.fit OUT.csv"}),
    toolCommand(commandPrepare, "Prepare Activity FIT File", 'R', true, 2093, prepareCommand, "prepare",
                {2, 2, FileKind::fit, "RIDE OUT.fit"}),
    {.id = commandCompare,
     .label = "Compare Rides",
     .work = worker,
     .operation = compareCommand,
     .answers = Answers::codes,
     .files = {2, 2, FileKind::nothing, "RIDE RIDE"},
     .aliases = "compare"},
    gpsCommand(commandRide, "Ride", 'J', false, 2095, RideUse::none, MenuAfter::none, answerRideCommand, "",
               {1, 2, FileKind::fit, "RIDE [OUT.fit]", onlyNew}),
};

constexpr bool idsRise()
{
    for (size_t i = 1; i < std::size(commands); ++i)
        if (commands[i].id <= commands[i - 1].id)
            return false;
    return true;
}
static_assert(idsRise(), "commands: keep sorted, no id twice");

constexpr bool keysDiffer()
{
    for (size_t i = 0; i < std::size(commands); ++i)
        for (size_t j = i + 1; j < std::size(commands); ++j)
            if (commands[i].key != 0 && commands[i].key == commands[j].key && commands[i].shift == commands[j].shift)
                return false;
    return true;
}
static_assert(keysDiffer(), "commands: an accelerator stands for one command");

bool hasAlias(const Command& command, std::string_view name)
{
    std::string_view rest = command.aliases;
    while (!rest.empty()) {
        size_t blank = rest.find(' ');
        if (rest.substr(0, blank) == name)
            return true;
        rest = blank == rest.npos ? std::string_view() : rest.substr(blank + 1);
    }
    return false;
}

} // namespace

std::span<const Command> commandTable()
{
    return commands;
}

const Command* findCommand(int id)
{
    const Command* found = std::ranges::lower_bound(commands, id, {}, &Command::id);
    return found != std::end(commands) && found->id == id ? found : nullptr;
}

const Command* findCommand(Sheet sheet)
{
    return std::ranges::find(commands, sheet, &Command::sheet);
}

const Command* findCommand(std::string_view name)
{
    int id = 0;
    auto [end, fault] = std::from_chars(name.data(), name.data() + name.size(), id);
    if (fault == std::errc() && end == name.data() + name.size())
        return findCommand(id);
    for (const Command& command : commands)
        if (command.work != frontEnd && (consoleName(command) == name || hasAlias(command, name)))
            return &command;
    return nullptr;
}

std::string consoleName(const Command& command)
{
    std::string name = command.label;
    for (char& c : name)
        c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return name;
}

bool worksOnLoadedRide(const Command& command)
{
    return command.ride >= RideUse::loaded;
}

bool succeeded(const Command& command, ResultStatus status)
{
    if (command.answers == Answers::bits)
        return !isFatal(status);
    return status == fitOk || (status >= fitLoaded && status <= fitPrepared);
}

} // namespace torvane
