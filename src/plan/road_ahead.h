// The model at a place of a course: its slope, wind and air, and the rider's gears there. What the ride over time and
// the steady states of pacing both stand on; all forces are the model's.
#pragma once

#include "model/assist.h"
#include "model/evaluation.h"
#include "plan/course_ride.h"

namespace torvane {

class RoadAhead {
public:
    // Of a thrust that only leads to the middle of a step, those of the last one do.
    enum class Losses { exact, asBefore };

    explicit RoadAhead(const RideConditions& conditions);

    // Goes to a place, on the mean slope of the way that lies ahead of it.
    void go(double distance, double way);

    // W of thrust that holds a speed in m/s; negative where the road pushes.
    double resistance(double speed);

    // Chooses the gear for a speed: that of the usual cadence where the speed is steady; else the one before does while
    // its cadence is within the limits of shifting.
    void shift(double speed, bool steady);

    // W of thrust that a power makes at a speed. Below the least cadence of the lowest gear the force is that of there.
    // Beyond the highest gear's reach nobody pedals. Power, motor and
    // cadence of it below.
    double thrustFor(double power, double speed, Losses losses = Losses::exact);
    // The power that makes a thrust; the same figures.
    void driveBack(double thrust, double speed);

    bool canRide(double power); // at the slowest speed
    double slowest() const
    {
        return slowestSpeed;
    }

    Evaluation now = {};
    int gear = 0;
    double power = 0, motor = 0, cadence = 0; // W, W, rpm

private:
    void setAirOf(size_t point);
    double inGears(double wanted, double speed, Losses losses);
    double warmThrust(double wanted, double speed);

    const RideConditions& ride;
    int stage;
    double slowestSpeed;  // m/s
    double passed = 0.95; // share of the last power that reached the road
    size_t airPoint;      // whose air, and heading, holds
};

} // namespace torvane
