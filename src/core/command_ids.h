// The numbers of the commands, as the menu, the accelerators and the console's user know them. What a command is
// called, asks and does stands in the command table.
#pragma once

namespace torvane {

enum CommandId : int {
    // The window
    commandAbout = 302,
    commandExit,
    commandFontSelectedUpper,
    commandFontAllUpper,
    commandFontSelectedLower,
    commandFontAllLower,
    commandClearUpper,
    commandClearLower,
    commandPrintUpper,
    commandPrintLower,
    commandSaveUpper,
    commandSaveLower,
    commandSaveAsUpper,
    commandSaveAsLower,
    commandOpenUpper,
    commandOpenLower,
    commandPageSetUp,
    commandManual,
    commandPage,

    // Settings
    commandProfile = 321,
    commandLoadProfile,
    commandSaveProfile,
    commandCondition,
    commandPreference,

    // Reports of the settings
    commandReportHuman = 501,
    commandReportEquipment,
    commandReportShifting,
    commandReportWheel,
    commandReportTyre,
    commandReportBrake,
    commandReportPowerLoss,
    commandReportAssist,
    commandReportProfile,
    commandReportCourse,
    commandReportPeloton,
    commandReportCondition,

    // Calculators, in the order of TheoryCalculator
    commandCadenceTheory = 701,
    commandPedalingDynamics,
    commandGearCombination,

    // Simulations, in the order of RideMode
    commandPowerAndVelocity = 801,
    commandAcceleration,
    commandDeceleration,
    commandPatternBraking,
    commandInclinationAndVelocity,
    commandCriticalCornering,

    // Recorded rides and their files
    commandLoadRide = 901,
    commandExpress,
    commandAnalyse,
    commandCreate,
    commandCombine,
    commandConvert,
    commandAddMessages,
    commandDivide,
    commandExclude,
    commandOneStroke,
    commandTimestamp = 991,
    commandFieldDump,
    commandPrepare,
    commandCompare,
    commandRide,
    commandCourse,
    commandCalibrate = 997,
};

} // namespace torvane
