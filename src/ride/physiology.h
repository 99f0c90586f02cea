// What a ride asks of the rider's body: training level, stress and energy, by mean and normalized power.
#pragma once

#include "model/model.h"

namespace torvane {

struct TrainingLevel {
    const char* name;
    int upperLimit;     // s of training, 0 none
    bool asOneInterval; // the limit holds for a single interval, not for a whole training
};

constexpr TrainingLevel trainingLevels[] = {
    {"recovery", 0, false},
    {"endurance", 18000, false},
    {"tempo", 10800, false},
    {"lactate threshold", 1800, true},
    {"vo2max", 480, true},
    {"anaerobic work capacity", 180, true},
    {"neuromuscular power", 30, true},
};

// Length of a steady ride, twice: by time and by distance.
struct RideLength {
    int32_t intensionFirst[intensionCaseCount];  // min, km
    int32_t intensionSecond[intensionCaseCount]; // s, m
};

struct PhysiologyInputs {
    int32_t useFtp;
    double energyEfficiency; // of muscle
    int32_t intensionCase;   // IntensionCase: how the length is entered
    RideLength length;
};

struct PhysiologyFigures {
    double meanPower;       // W, never below 0
    double normalizedPower; // W
    double duration;        // s
    double variabilityIndex;
    // With useFtp only
    int level; // 1 to 7; trainingLevels[level - 1]
    double intensityFactor;
    double trainingStressScore;
    // Energy
    double kiloJoule;       // done at the pedals
    double kiloCalorie;     // the same
    double foodKiloCalorie; // eaten for it, at the efficiency of the muscles
    RideLength length;      // of a steady ride
};

// Level of a power, 1 to 7, by the bounds of the rider's functional threshold power.
int trainingLevelOf(const Model& model, double power);

// Figures of a steady ride at a power at the pedals and a velocity. The length entered as a time or as a distance gives
// the other one.
PhysiologyFigures physiologyOfSteadyRide(const Model& model, const PhysiologyInputs& in, double power, double velocity);

// Figures of a run over a time in s. Energy counts from the mean power.
PhysiologyFigures physiologyOfRun(const Model& model, const PhysiologyInputs& in, double meanPower,
                                  double normalizedPower, double time);

} // namespace torvane
