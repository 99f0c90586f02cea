#include "model/road_grid.h"

#include "core/parallel.h"
#include "model/assist.h"
#include "model/gear_walk.h"
#include "model/power_search.h"
#include "model/thrust_pair.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace torvane {

namespace {

// Of a stage and one road, what holds for all its velocities.
struct Road {
    const Model& model;
    int stage;
    Evaluation e;
    double ratioPerVelocity;
};

// As powerAtVelocity, at the road's stage. `places`: of the gears, kept from one evaluation to the next.
inline Pair stagePowers(const Road& road, Pair velocity, int (&places)[2])
{
    Pair thrust = thrustPowers(road.model, road.e.physics, road.e, velocity);
    if (road.stage == stageThrust)
        return thrust;
    const ModelState& m = road.model.state;
    Pair wanted = velocity * mmPerMinute / road.ratioPerVelocity;
    Pair ratio = {nearestRatio(road.model, wanted[0], places[0]), nearestRatio(road.model, wanted[1], places[1])};
    Pair wheelRpm = wheelRpmAt(road.model, velocity);
    StagePair stages;
    stagesBack(m, stages, thrust, angularVelocity(wheelRpm), angularVelocity(wheelRpm / ratio), NoMotor{});
    auto moved = (velocity > 0.0) & (thrust > 0.0);
    return moved ? powerOf(stages, road.stage) : Pair{};
}

// The points of one road, from one place among its velocities or powers on.
struct Stretch {
    std::span<const double> asked;
    size_t first; // of the answers
};

// Walks over a part of the grid, road by road.
template <class Answer>
void overRoads(Road& road, const RoadGrid& grid, size_t first, size_t end, Answer answer)
{
    size_t perRoad = grid.asked.size();
    while (first < end) {
        size_t row = first / perRoad, start = first % perRoad;
        size_t count = std::min(perRoad - start, end - first);
        road.e.inclination = grid.inclinations[row / grid.headWinds.size()];
        road.e.headWind = grid.headWinds[row % grid.headWinds.size()];
        updateLoadAndGrip(road.model, road.e, 0.0);
        setLoads(road.model, road.e);
        answer(Stretch{grid.asked.subspan(start, count), first});
        first += count;
    }
}

// Deals the grid out to threads.
template <class Answer>
void overGrid(const Model& model, const Evaluation& air, int stage, const RoadGrid& grid, size_t threads,
              size_t pieceLength, Answer answer)
{
    size_t points = pointsOf(grid);
    inParallel((points + pieceLength - 1) / pieceLength, threads, [&](size_t piece) {
        Road road = {model, stage, air, model.state.cadenceUsual * model.state.rearCircumference};
        size_t first = piece * pieceLength;
        overRoads(road, grid, first, std::min(first + pieceLength, points),
                  [&](const Stretch& stretch) { answer(road, stretch); });
    });
}

void powersOf(const Road& road, std::span<const double> velocities, double* answers)
{
    int places[2] = {};
    size_t count = velocities.size(), i = 0;
    for (; i + 1 < count; i += 2) {
        Pair powers = stagePowers(road, Pair{velocities[i], velocities[i + 1]}, places);
        answers[i] = powers[0];
        answers[i + 1] = powers[1];
    }
    if (i < count)
        answers[i] = stagePowers(road, Pair{velocities[i], velocities[i]}, places)[0];
}

bool hasMotor(const Model& model)
{
    return model.state.motorLocation > motorNone;
}

// So many searches side by side hide that each division of a search waits for the one before.
constexpr size_t lanes = 6;

struct Lane {
    PowerSearch search = {firstVelocity, firstStep};
    size_t point = 0; // whose search it is
    bool isOpen = false;
};

class Searches {
public:
    Searches(const Road& onRoad, std::span<const double> wantedPowers, Solved* toAnswers)
        : road(onRoad), wanted(wantedPowers), answers(toAnswers)
    {
    }
    void run()
    {
        for (Lane& lane : all)
            open(lane);
        while (openLanes > 0)
            for (size_t first = 0; first < lanes; first += 2)
                step(first);
    }

private:
    void open(Lane& lane)
    {
        lane = {};
        lane.isOpen = next < wanted.size();
        lane.point = next;
        next += lane.isOpen;
        openLanes += lane.isOpen;
    }
    void step(size_t first)
    {
        Pair velocity = {all[first].search.velocity, all[first + 1].search.velocity};
        Pair power = stagePowers(road, velocity, places[first / 2]);
        take(all[first], power[0]);
        take(all[first + 1], power[1]);
    }
    void take(Lane& lane, double power)
    {
        ResultStatus status = lane.search.velocity > road.model.reachVelocity ? statusOverReach : statusDone;
        if (!lane.isOpen || !takePower(lane.search, wanted[lane.point], {power, status}))
            return;
        Solved found = judged(lane.search, wanted[lane.point]);
        answers[lane.point] = {found.value < 0.0 ? 0.0 : found.value, found.status};
        --openLanes;
        open(lane);
    }

    const Road& road;
    std::span<const double> wanted;
    Solved* answers;
    std::array<Lane, lanes> all = {};
    int places[lanes / 2][2] = {};
    size_t next = 0, openLanes = 0;
};

} // namespace

void powersOverGrid(const Model& model, const Evaluation& air, int stage, const RoadGrid& grid, size_t threads,
                    std::span<double> answers)
{
    constexpr size_t pieceLength = 2048; // 13 us, for which the last thread at most works alone
    overGrid(model, air, stage, grid, threads, pieceLength, [&](Road& road, const Stretch& stretch) {
        if (!hasMotor(model) || stage == stageThrust)
            return powersOf(road, stretch.asked, &answers[stretch.first]);
        for (size_t i = 0; i < stretch.asked.size(); ++i)
            answers[stretch.first + i] = assistedPowerAtVelocity(model, road.e, stage, stretch.asked[i]).value;
    });
}

void velocitiesOverGrid(const Model& model, const Evaluation& air, int stage, const RoadGrid& grid, size_t threads,
                        std::span<Solved> answers)
{
    constexpr size_t pieceLength = 256;
    overGrid(model, air, stage, grid, threads, pieceLength, [&](Road& road, const Stretch& stretch) {
        if (!hasMotor(model))
            return Searches(road, stretch.asked, &answers[stretch.first]).run();
        for (size_t i = 0; i < stretch.asked.size(); ++i)
            answers[stretch.first + i] = assistedVelocityForPower(model, road.e, stage, stretch.asked[i]);
    });
}

} // namespace torvane
