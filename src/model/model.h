// The model in force: what rider, bicycle and conditions are, and what follows from them alone. Made by rebuildModel
// whenever the entered figures of its state have changed; evaluations only read it.
#pragma once

#include "core/parameter_block.h"
#include "model/evaluation.h"

namespace torvane {

constexpr int gearTableCapacity = 45; // 3 chainrings by 15 sprockets
constexpr int trainingLevelBoundCount = 7;

// A gear that the rider uses.
struct GearEntry {
    double ratio;             // front teeth / rear teeth
    int32_t frontIndex;       // into chainring
    int32_t rearIndex;        // into sprocket
    double velocityUsual;     // m/s at cadenceUsual
    double velocityMax;       // m/s at cadencePoweredMax
    double velocityShiftUp;   // m/s at cadenceShiftUp
    double velocityShiftDown; // m/s at cadenceShiftDown
};

// The ratios of the gear table, rising, each once, with the earliest row that has it.
struct GearOrder {
    double rising[gearTableCapacity];
    int32_t row[gearTableCapacity];
    int32_t count;
};

// What drag and rolling take from the build of rider and frame, whatever the velocity.
struct Build {
    double surface; // body surface by height, per square of the air's velocity
    double weight, shellWeight;
    double posture;  // factor of torso angle and clothing on the drag of the body
    double tyreLoad; // mm2, square of the width that is made for the weight
};

// What it takes from the size and spacing of a train of riders.
struct Peloton {
    double train, spacing;
};

struct Model {
    ModelState state = {};
    Calibration calibration = {};
    bool calibratesClassic = false;              // classic physics take the factor as well: the preference of the user
    GearEntry gearTable[gearTableCapacity] = {}; // state.gearCount rows hold
    GearOrder gearOrder = {};
    double reachVelocity = 0;                                // m/s, last row of the gear table at cadencePoweredMax
    double trainingLevelBound[trainingLevelBoundCount] = {}; // W, lower bounds of the training levels, rising
    Build build = {};
    Peloton peloton = {};
    double dragFactor[physicsCount] = {1.0, 1.0}; // on the air drag, by Physics
};

// Derived fields of the state, gear table and all else from the entered fields. Needs the counts of chainrings within 1
// to 3 and of sprockets within 1 to 15.
void rebuildModel(Model& model);

// The model of a block, as at the start of the program; lets the block's theory cadences follow the rider's.
Model modelOf(ParameterBlock& block);

// A profile file written after a run holds the gear, the weight split and the grip of that run, though nothing reads
// them.
void keepEvaluation(ModelState& state, const Evaluation& evaluation);

} // namespace torvane
