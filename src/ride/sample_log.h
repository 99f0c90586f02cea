// What a simulation over time leaves for the table under its report: a row for each step, or for each sector of an
// intermittent braking. One log lives for one command. Knows nothing of texts (report) and of curves (graph_series.h).
#pragma once

#include "model/step_state.h"

#include <vector>

namespace torvane {

struct SampleRow {
    double time;     // s
    double velocity; // m/s
    double power;    // W at the pedals; in a braking run at the road, in kW with kiloWattLog
    double torque;   // Nm, of the same stage
    double force;    // kgf, of the same stage
    double accele;   // m/s2
    double distance; // m
    int frontTooth;
    int rearTooth;
    double gearRatio;
    double cadence; // rpm
};

// End of a sector of intermittent braking: coasting and spot braking in turn. Index 0 front wheel, 1 rear.
struct SectorRow {
    double time;        // s, from the start of the ride
    double velocity;    // m/s
    double distance;    // m, from the start of the ride
    double brake[2];    // Cel, temperature
    double heat[2];     // kJ, cumulative heat into the brake
    double radiate[2];  // kJ, cumulative heat lost, negative
    double residual[2]; // kJ, heat still held
};

struct SampleLog {
    int sampleCount = 0;            // steps that the dry run counted; after the logged run the rows used
    std::vector<SampleRow> rows;    // sampleCount + 1 at allocation, zeroed; a last row at time 0 was never written
    bool bySectors = false;         // the table is of sectors, also where the way was too short for any
    std::vector<SectorRow> sectors; // one for each sector, as many as there were
};

// Takes memory for the rows that the dry run counted.
void allocateSampleLog(SampleLog& log);

// Writes a row; beyond the last row nothing is written.
void recordSample(SampleLog& log, const SampleRow& sample, int row);

// Rows that a process table shows: sampleCount, and the one behind them when it was written.
int shownRows(const SampleLog& log);

} // namespace torvane
