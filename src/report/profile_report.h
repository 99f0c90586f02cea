// The profile and the condition as text: what the model now holds, not what a dialog shows. Each call replaces the
// whole text of the pane.
#pragma once

#include "core/parameter_block.h"
#include "core/screens.h"

#include <cstdint>

namespace torvane {

// Sections of the profile report, in the order in which they are printed.
constexpr uint32_t sectionHuman = 0x01;
constexpr uint32_t sectionEquipment = 0x02;
constexpr uint32_t sectionShifting = 0x04;
constexpr uint32_t sectionWheel = 0x08;
constexpr uint32_t sectionTyre = 0x10;
constexpr uint32_t sectionBrake = 0x20;
constexpr uint32_t sectionPowerLoss = 0x40;
constexpr uint32_t sectionAssist = 0x80;
constexpr uint32_t allProfileSections = 0xFF;

// Sections of the condition report.
constexpr uint32_t sectionCourse = 0x1;
constexpr uint32_t sectionPeloton = 0x2;
constexpr uint32_t allConditionSections = 0x3;

// Prints the sections whose bit is set in mask. The block supplies the name of the profile file and the
// calibration.
void reportProfile(Screens& screens, Pane pane, const ModelState& model, const ParameterBlock& block, uint32_t mask);
void reportCondition(Screens& screens, Pane pane, const ModelState& model, uint32_t mask);

} // namespace torvane
