// The commands as data: what each asks, what it commits, what runs, what follows.
#include "command/command_table.h"

#include "command/calibrate_command.h"
#include "command/course_command.h"
#include "command/fit_tool_command.h"
#include "command/gps_command.h"
#include "command/gps_load_command.h"
#include "command/prepare_command.h"
#include "command/profile_figures.h"
#include "command/ride_answer_command.h"
#include "command/ride_command.h"
#include "command/settings_command.h"
#include "command/theory_command.h"
#include "report/calibration_figures.h"
#include "report/course_figures.h"
#include "report/fit_figures.h"
#include "report/profile_report.h"
#include "report/ride_answer_figures.h"
#include "report/ride_figures.h"
#include "report/theory_figures.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace torvane {

namespace {

using enum Work;

constexpr Command dialogCommand(int id, const char* label, const char* meaning, char key, int form)
{
    return {.id = id,
            .label = label,
            .meaning = meaning,
            .key = key,
            .entry = form ? Entry::dialog : Entry::immediate,
            .form = form};
}

constexpr Command windowCommand(int id, const char* label, const char* meaning, char key = 0)
{
    return {.id = id, .label = label, .meaning = meaning, .key = key, .shift = key != 0};
}

using Operation = ResultStatus (*)(Session&);
using Commit = void (*)(ParameterBlock&, ParameterBlock&);

constexpr Command sheetCommand(int id, const char* label, const char* meaning, char key, Sheet sheet, Commit commit,
                               Operation operation, const char* aliases)
{
    return {.id = id,
            .label = label,
            .meaning = meaning,
            .key = key,
            .entry = Entry::sheet,
            .sheet = sheet,
            .work = settings,
            .commit = commit,
            .operation = operation,
            .aliases = aliases};
}

constexpr Command profileCommand(int id, const char* label, const char* meaning, char key, Entry entry, FileKind writes,
                                 Operation operation, const char* aliases)
{
    return {.id = id,
            .label = label,
            .meaning = meaning,
            .key = key,
            .entry = entry,
            .work = settings,
            .operation = operation,
            .files = {1, 1, writes, "FILE.pro"},
            .aliases = aliases};
}

template <Sheet sheet, uint32_t sections>
std::vector<FigureInfo> sheetInfos(const Command&)
{
    return sheetFigureInfos(sheet, sections);
}

template <uint32_t sections>
ResultStatus profileReport(Session& session)
{
    session.pageFigures = sheetFigures(session, Sheet::profile, sections);
    reportProfile(session.screens, Pane::upper, session.model.state, session.working, sections);
    return 0;
}

template <uint32_t sections>
ResultStatus conditionReport(Session& session)
{
    session.pageFigures = sheetFigures(session, Sheet::condition, sections);
    reportCondition(session.screens, Pane::upper, session.model.state, sections);
    return 0;
}

template <Sheet sheet, uint32_t sections>
constexpr Command reportCommand(int id, const char* label, const char* meaning, char key)
{
    return {.id = id,
            .label = label,
            .meaning = meaning,
            .key = key,
            .shift = key != 0,
            .work = report,
            .operation = sheet == Sheet::profile ? profileReport<sections> : conditionReport<sections>,
            .figures = sheetInfos<sheet, sections>};
}

constexpr Command theoryCommand(int id, const char* label, const char* meaning, char key, int form,
                                TheoryCalculator calculator)
{
    return {.id = id,
            .label = label,
            .meaning = meaning,
            .key = key,
            .shift = true,
            .entry = Entry::dialog,
            .form = form,
            .work = worker,
            .commit = commitTheory,
            .operation = runTheory,
            .family = Family::theory,
            .member = calculator,
            .figures = [](const Command& command) { return theoryFigureInfos(command.member); },
            .showsLower = true};
}

constexpr Command rideCommand(int id, const char* label, const char* meaning, char key, int form, RideMode mode,
                              GraphWhen graph)
{
    return {.id = id,
            .label = label,
            .meaning = meaning,
            .key = key,
            .entry = Entry::dialog,
            .form = form,
            .work = worker,
            .commit = commitRide,
            .operation = dispatchRide,
            .family = Family::ride,
            .member = mode,
            .graph = graph,
            .figures = [](const Command& command) { return rideFigureInfos(command.member); },
            .hasRows = true,
            .hasPage = true,
            .showsLower = true};
}

constexpr CommandFiles oneRide = {1, 1, FileKind::nothing, "RIDE.fit"};
constexpr CommandFiles rideToRide = {2, 2, FileKind::fit, "RIDE.fit OUT.fit"};

// Of a stroke that prepares first, what it found as well.
std::vector<FigureInfo> rideInfos(const Command& command)
{
    if (command.id == commandRide)
        return answerFigureInfos();
    std::vector<FigureInfo> infos = summaryFigureInfos();
    if (command.menu == MenuAfter::oneStroke)
        std::ranges::move(preparationFigureInfos(), std::back_inserter(infos));
    return infos;
}

constexpr Command gpsCommand(int id, const char* label, const char* meaning, char key, bool shift, int form,
                             RideUse ride, MenuAfter menu, Operation operation, const char* aliases,
                             CommandFiles files = oneRide)
{
    return {.id = id,
            .label = label,
            .meaning = meaning,
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
            .figures = rideInfos,
            .hasRows = form != 0,
            .showsLower = true,
            .aliases = aliases};
}

// The FIT tools leave their "save as default" flags to the next commit of the recorded rides.
constexpr Command toolCommand(int id, const char* label, const char* meaning, char key, bool shift, int form,
                              Operation operation, const char* aliases,
                              CommandFiles files = {2, 2, FileKind::fit, "IN.fit OUT.fit"})
{
    return {.id = id,
            .label = label,
            .meaning = meaning,
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

constexpr Command withFigures(Command command, std::vector<FigureInfo> (*figures)(const Command& command))
{
    command.figures = figures;
    return command;
}

constexpr Command withCurves(Command command)
{
    command.graph = GraphWhen::curves;
    return command;
}

constexpr Command withRows(Command command)
{
    command.hasRows = true;
    return command;
}

constexpr Command withPage(Command command)
{
    command.hasPage = true;
    return command;
}

constexpr bool onlyNew = true, inParts = true, byOption = true;

constexpr Command commands[] = {
    dialogCommand(commandAbout, "About", "version of the program", 'Q', 107),
    dialogCommand(commandExit, "Exit", "end the program", 'X', 108),
    windowCommand(commandFontSelectedUpper, "Font Selected", "font of what is marked in the upper pane"),
    windowCommand(commandFontAllUpper, "Font All", "font of the upper pane"),
    windowCommand(commandFontSelectedLower, "Font Selected", "font of the lower pane"),
    windowCommand(commandFontAllLower, "Font All", "font of the lower pane"),
    windowCommand(commandClearUpper, "Clear Screen", "empty the upper pane"),
    windowCommand(commandClearLower, "Clear Screen", "empty the lower pane"),
    windowCommand(commandPrintUpper, "Print", "print the upper pane"),
    windowCommand(commandPrintLower, "Print", "print the lower pane"),
    windowCommand(commandSaveUpper, "Save", "save the upper pane under the name that it was saved by"),
    windowCommand(commandSaveLower, "Save", "save the lower pane under the name that it was saved by"),
    windowCommand(commandSaveAsUpper, "Save As", "save the upper pane as rich or plain text"),
    windowCommand(commandSaveAsLower, "Save As", "save the lower pane as rich or plain text"),
    windowCommand(commandOpenUpper, "Open Upper", "show a saved text in the upper pane", '1'),
    windowCommand(commandOpenLower, "Open Lower", "show a saved text in the lower pane", '2'),
    windowCommand(commandPageSetUp, "Page SetUp", "paper and margins of a print"),
    windowCommand(commandManual, "Manual", "the manual in the browser"),
    windowCommand(commandPage, "Page", "the last answer as a page with charts, saved and shown in the browser"),
    sheetCommand(commandProfile, "Setup Profile", "rider, bicycle and motor, page by page", 'P', Sheet::profile,
                 commitProfile, finishProfile, "profile"),
    profileCommand(commandLoadProfile, "Load Profile Data", "take rider, bicycle and conditions from a profile file",
                   'O', Entry::openProfile, FileKind::nothing, loadNamedProfile, "load-profile"),
    profileCommand(commandSaveProfile, "Save Current Profile", "keep rider, bicycle and conditions in a profile file",
                   'S', Entry::saveProfile, FileKind::profile, saveNamedProfile, "save-profile"),
    sheetCommand(commandCondition, "Setup Condition", "wind, air, road and riding in a group", 'R', Sheet::condition,
                 commitCondition, finishCondition, ""),
    sheetCommand(commandPreference, "Preference", "what is computed, drawn and kept beside", 'K', Sheet::preference,
                 commitPreference, finishPreference, "preferences"),
    reportCommand<Sheet::profile, sectionHuman>(commandReportHuman, "Human", "report the rider", 'H'),
    reportCommand<Sheet::profile, sectionEquipment>(commandReportEquipment, "Equipments",
                                                    "report the bicycle's weight and what is worn", 'E'),
    reportCommand<Sheet::profile, sectionShifting>(commandReportShifting, "Shifting",
                                                   "report cranks, chainrings and sprockets", 'S'),
    reportCommand<Sheet::profile, sectionWheel>(commandReportWheel, "Wheel", "report the wheels", 'W'),
    reportCommand<Sheet::profile, sectionTyre>(commandReportTyre, "Tyre", "report the tyres", 'Y'),
    reportCommand<Sheet::profile, sectionBrake>(commandReportBrake, "Brake", "report the brakes", 'B'),
    reportCommand<Sheet::profile, sectionPowerLoss>(commandReportPowerLoss, "Power Loss",
                                                    "report what frame, chain and wheel swallow", 'L'),
    reportCommand<Sheet::profile, sectionAssist>(commandReportAssist, "e-Assist", "report the motor and its ranges",
                                                 'P'),
    reportCommand<Sheet::profile, allProfileSections>(commandReportProfile, "All Profile", "report the whole profile",
                                                      'A'),
    reportCommand<Sheet::condition, sectionCourse>(commandReportCourse, "Course", "report wind, air and road", 0),
    reportCommand<Sheet::condition, sectionPeloton>(commandReportPeloton, "Peloton",
                                                    "report the group that is ridden in", 0),
    reportCommand<Sheet::condition, allConditionSections>(commandReportCondition, "Condition", "report all conditions",
                                                          'C'),
    theoryCommand(commandCadenceTheory, "Cadence Theory",
                  "power over cadence: from three of cadence, power and their greatest values the fourth", 'T', 2011,
                  calculatorCadence),
    theoryCommand(commandPedalingDynamics, "Pedaling Dynamics",
                  "cadence, power, and torque or force at the pedal: from two the third", 'D', 2012,
                  calculatorPedaling),
    theoryCommand(commandGearCombination, "Gear Combination", "cadence, velocity and gear: from two the third", 'G',
                  2013, calculatorGears),
    rideCommand(commandPowerAndVelocity, "Power and Velocity",
                "the steady ride: the power for a velocity, or the velocity for a power", 'V', 2021,
                ridePowerAndVelocity, GraphWhen::bandPowerVelocity),
    rideCommand(commandAcceleration, "Acceleration", "from a velocity to a higher one, with gear changes", 'A', 2022,
                rideAcceleration, GraphWhen::express),
    rideCommand(commandDeceleration, "Deceleration", "from a velocity to a lower one, by coasting or with the brakes",
                'D', 2023, rideDeceleration, GraphWhen::express),
    rideCommand(commandPatternBraking, "Pattern Braking", "four ways to use the brakes, and the heat that they take",
                'B', 2024, ridePatternBraking, GraphWhen::express),
    rideCommand(commandInclinationAndVelocity, "Inclination and Velocity",
                "rolling without power: the velocity on a slope, or the slope for a velocity", 'I', 2025,
                rideInclinationAndVelocity, GraphWhen::express),
    rideCommand(commandCriticalCornering, "Critical Cornering", "velocity, line and grip in a bend: from two the third",
                'C', 2026, rideCriticalCornering, GraphWhen::bandCornering),
    gpsCommand(commandLoadRide, "Load Activity FIT File", "what a recorded ride holds", 'L', false, 0, RideUse::chosen,
               MenuAfter::loaded, loadGpsFile, "load"),
    gpsCommand(commandExpress, "Express Source Data", "a recorded ride row by row as its device wrote it", 'E', false,
               2052, RideUse::loaded, MenuAfter::expressed, expressSourceData, "express"),
    withPage(withCurves(gpsCommand(commandAnalyse, "Analyse And Predict",
                                   "power and cadence that a recorded ride took, row by row", 'T', false, 2053,
                                   RideUse::ready, MenuAfter::analysed, analyseAndPredict, "analyse predict"))),
    gpsCommand(commandCreate, "Create FIT File Analysed", "a recorded ride with predicted power and cadence as a file",
               'F', false, 2054, RideUse::analysed, MenuAfter::none, createAnalysedFile, "create", rideToRide),
    toolCommand(commandCombine, "Combine FIT Files", "one ride of two to five files", 'M', false, 2055, combineCommand,
                "combine", {2, 6, FileKind::fit, "A.fit B.fit [C.fit [D.fit [E.fit]]] OUT.fit", onlyNew}),
    toolCommand(commandConvert, "Convert FIT File Format", "another form of header, sport or unit of speed", 'N', false,
                2056, convertCommand, "convert"),
    toolCommand(commandAddMessages, "Add Messages", "laps, session and activity, summed up anew from the records", 'U',
                false, 2057, addMessagesCommand, "add"),
    toolCommand(commandDivide, "Divide A Fit File", "a file for each session, lap or set of fields", 'V', true, 2058,
                divideCommand, "divide", {2, 2, FileKind::fit, "IN.fit BASE.fit", false, inParts}),
    toolCommand(commandExclude, "Exclude Messages", "a file without its laps, sessions or activities", 'X', true, 2059,
                excludeCommand, "exclude"),
    withPage(withCurves(gpsCommand(commandOneStroke, "At One Stroke", "load, analyse and create in one go", 'F', true,
                                   2060, RideUse::none, MenuAfter::oneStroke, atOneStroke, "stroke", rideToRide))),
    toolCommand(commandTimestamp, "Increase Timestamp", "a ride with its clock set right", 'I', true, 2091,
                increaseTimestampCommand, "timestamp"),
    withRows(toolCommand(commandFieldDump, "Field Dump", "all messages of a FIT file, decoded, as a CSV table", 'Q',
                         true, 2092, fieldDumpCommand, "dump", {2, 2, FileKind::csv, "IN.fit OUT.csv"})),
    withFigures(toolCommand(commandPrepare, "Prepare Activity FIT File",
                            "a ride put in order, of FIT, GPX or TCX, so that the analysis reads it well", 'R', true,
                            2093, prepareCommand, "prepare", {2, 2, FileKind::fit, "RIDE OUT.fit"}),
                [](const Command&) { return preparationFigureInfos(); }),
    withPage({.id = commandCompare,
              .label = "Compare Rides",
              .meaning = "two rides with power held against each other, as a whole and by sector",
              .work = worker,
              .operation = compareCommand,
              .answers = Answers::codes,
              .files = {2, 2, FileKind::nothing, "RIDE RIDE"},
              .figures = [](const Command&) { return comparisonFigureInfos(); },
              .hasRows = true,
              .aliases = "compare"}),
    withPage(withCurves(gpsCommand(
        commandRide, "Ride", "what a recorded ride cost: power, work, laps, climbs and gears, measured or predicted",
        'J', false, 2095, RideUse::none, MenuAfter::none, answerRideCommand, "",
        {1, 2, FileKind::fit, "RIDE [OUT.fit]", onlyNew}))),
    withPage({.id = commandCourse,
              .label = "Course Ahead",
              .meaning = "a course ahead: how long, how hard, in which gear, and where to spend the power",
              .key = 'G',
              .entry = Entry::dialog,
              .form = 2096,
              .work = worker,
              .operation = planCommand,
              .answers = Answers::codes,
              .files = {1, 2, FileKind::fit, "TRACK [OUT.fit]", onlyNew},
              .graph = GraphWhen::curves,
              .figures = [](const Command&) { return courseFigureInfos(); },
              .hasRows = true,
              .showsLower = true,
              .aliases = "plan"}),
    {.id = commandCalibrate,
     .label = "Calibrate",
     .meaning = "what rides with a power meter teach of your air drag: a factor for the profile, with its interval",
     .key = 'K',
     .shift = true,
     .entry = Entry::dialog,
     .form = 2097,
     .work = worker,
     .operation = calibrateCommand,
     .answers = Answers::codes,
     .files = {1, toolSourceCount, FileKind::profile, "RIDE... [--save-profile OUT.pro]", onlyNew, false, byOption},
     .graph = GraphWhen::express,
     .figures = [](const Command&) { return calibrationFigureInfos(); },
     .hasRows = true,
     .showsLower = true},
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
        return !isFatal(status) && status != statusStopped;
    return status == fitOk || (status >= fitLoaded && status <= fitPrepared);
}

} // namespace torvane
