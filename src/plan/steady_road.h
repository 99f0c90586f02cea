// Speeds that last: where what is pedalled holds what the road takes.
#pragma once

#include "plan/road_ahead.h"

namespace torvane {

class SteadyRoad {
public:
    explicit SteadyRoad(const RideConditions& conditions) : road(conditions) {}

    void go(double distance, double way)
    {
        road.go(distance, way);
    }
    // W that holds a speed; below 0 what the brakes would take.
    double powerAt(double speed);
    // m/s that a power holds, near a guess; 0 W is coasting, and 0 m/s where nothing rolls.
    double speedFor(double power, double guess);
    double slowest() const
    {
        return road.slowest();
    }

private:
    RoadAhead road;
};

} // namespace torvane
