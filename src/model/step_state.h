// Where a simulation over time stands in its present step: what the loop carries from step to step, what the drivetrain
// reads of it, and what a row of the sample log shows. One record for every run; the powers stand in an Evaluation.
#pragma once

namespace torvane {

struct StepState {
    double previousResistance = 0;  // W
    double resistance = 0;          // W, thrust power that holds the present velocity
    double velocity = 0;            // m/s
    double previousThrustForce = 0; // kgf
    double accele = 0;              // m/s2
    double distance = 0;            // m
    int frontTooth = 0;
    int rearTooth = 0;
    double cadence = 0;   // rpm
    double time = 0;      // s
    double gearRatio = 0; // front teeth / rear teeth
    int gear = 0;         // row of the gear table
};

} // namespace torvane
