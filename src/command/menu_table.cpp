// The menu bar as data. Labels of its commands stand in the command table.
#include "command/command_table.h"

namespace torvane {

namespace {

using enum MenuKind;

constexpr MenuItem menus[] = {
    {menu, "File(&F)"},
    {submenu, "upperScreen"},
    {command, nullptr, commandFontSelectedUpper},
    {command, nullptr, commandFontAllUpper},
    {separator},
    {command, nullptr, commandClearUpper},
    {command, nullptr, commandPrintUpper},
    {separator},
    {command, nullptr, commandSaveUpper},
    {command, nullptr, commandSaveAsUpper},
    {end},
    {submenu, "lowerScreen"},
    {command, nullptr, commandFontSelectedLower},
    {command, nullptr, commandFontAllLower},
    {separator},
    {command, nullptr, commandClearLower},
    {command, nullptr, commandPrintLower},
    {separator},
    {command, nullptr, commandSaveLower},
    {command, nullptr, commandSaveAsLower},
    {end},
    {command, nullptr, commandPageSetUp},
    {separator},
    {command, nullptr, commandExit},
    {end},

    {menu, "Profile(&P)"},
    {submenu, "Check Current Profile"},
    {command, nullptr, commandReportHuman},
    {command, nullptr, commandReportEquipment},
    {command, nullptr, commandReportShifting},
    {command, nullptr, commandReportWheel},
    {command, nullptr, commandReportTyre},
    {command, nullptr, commandReportBrake},
    {command, nullptr, commandReportPowerLoss},
    {command, nullptr, commandReportAssist},
    {separator},
    {command, nullptr, commandReportProfile},
    {separator},
    {command, nullptr, commandReportCondition},
    {end},
    {command, nullptr, commandProfile},
    {separator},
    {command, nullptr, commandLoadProfile},
    {recent, "Recent Profiles", commandLoadProfile},
    {command, nullptr, commandSaveProfile},
    {separator},
    {command, nullptr, commandCondition},
    {end},

    {menu, "Simulation(&S)"},
    {command, nullptr, commandCadenceTheory},
    {command, nullptr, commandPedalingDynamics},
    {command, nullptr, commandGearCombination},
    {separator},
    {command, nullptr, commandPowerAndVelocity},
    {command, nullptr, commandAcceleration},
    {command, nullptr, commandDeceleration},
    {command, nullptr, commandPatternBraking},
    {command, nullptr, commandInclinationAndVelocity},
    {command, nullptr, commandCriticalCornering},
    {end},

    {menu, "GPS(&G)"},
    {command, nullptr, commandLoadRide},
    {command, nullptr, commandExpress},
    {command, nullptr, commandAnalyse},
    {command, nullptr, commandCreate},
    {separator},
    {command, nullptr, commandOneStroke},
    {command, nullptr, commandRide},
    {recent, "Recent Rides", commandRide},
    {command, nullptr, commandCourse},
    {command, nullptr, commandCalibrate},
    {separator},
    {command, nullptr, commandCombine},
    {command, nullptr, commandConvert},
    {command, nullptr, commandAddMessages},
    {command, nullptr, commandDivide},
    {command, nullptr, commandExclude},
    {separator},
    {command, nullptr, commandPrepare},
    {end},

    {menu, "Option(&O)"},
    {command, nullptr, commandPreference},
    {end},

    {menu, "Tools(&T)"},
    {command, nullptr, commandTimestamp},
    {command, nullptr, commandFieldDump},
    {separator},
    {command, nullptr, commandOpenUpper},
    {command, nullptr, commandOpenLower},
    {separator},
    {command, nullptr, commandPage},
    {end},

    {menu, "Help(&H)"},
    {command, nullptr, commandManual},
    {command, nullptr, commandAbout},
    {end},
};

} // namespace

std::span<const MenuItem> menuTable()
{
    return menus;
}

} // namespace torvane
