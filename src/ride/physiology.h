// What a ride asks of the rider's body: training level, stress and energy, by mean and normalized power.
// Reports read the one record; knows nothing of their texts.
#pragma once

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

struct PhysiologyFigures {
    double meanPower;       // W, never below 0
    double normalizedPower; // W
    double duration;        // s
    double variabilityIndex;
    // With runState.useFtp only
    int level; // 1 to 7; trainingLevels[level - 1]
    double intensityFactor;
    double trainingStressScore;
    // Energy
    double kiloJoule;       // done at the pedals
    double kiloCalorie;     // the same
    double foodKiloCalorie; // eaten for it, at the efficiency of the muscles
};

extern PhysiologyFigures physiology; // of the last ride

// Level of a power, 1 to 7, by the bounds of the rider's functional threshold power.
int trainingLevelOf(double power);

// Figures of a steady ride at runState.pedalingPower. The length entered as a time or as a distance gives the other
// one, which is written back to runState's pair of whole numbers.
void physiologyOfSteadyRide();

// Figures of a run over time; its mean power and sector time stand in runState. Energy counts from the mean power.
void physiologyOfRun(double normalizedPower);

} // namespace torvane
