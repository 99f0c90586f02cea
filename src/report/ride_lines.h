// Blocks that several ride reports share. Each appends to the text of a report and changes nothing.
#pragma once

#include "ride/ride_records.h"

#include <string>

namespace torvane {

// Power, torque and force of the four stages and the motor, at one velocity.
void appendChain(std::string& text, const RideRun& ride);
// The same over a run: mean and peak power, mean torque and force. In kW from 10,000 W at the road on.
void appendRunChain(std::string& text, const RideRun& ride);
// The one row of a braking run, with the same unit rule.
void appendBrakingRow(std::string& text, const RideRun& ride);

void appendCadence(std::string& text, const RideRun& ride);
// What the rider would have to be able to give at the summit of the power parabola.
void appendRequiredPower(std::string& text, const RideRun& ride, double power);
// Sector time, mean and largest acceleration, distance.
void appendMotion(std::string& text, const RideRun& ride);
// Drag forces and powers of the present velocity.
void appendDrags(std::string& text, const RideRun& ride);

// Training level, stress and energy.
void appendPhysiology(std::string& text, const RideRun& ride);
// Energies of the run, then temperature and heat of both brakes.
void appendBrakeHeat(std::string& text, const RideRun& ride);

} // namespace torvane
