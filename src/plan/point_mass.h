// A rider as a point of mass on a course: the model's forces as parabolas over the speed, a step every 10 m. So light
// that pacing can ride it many times, and so plain that it tells what a little more power in each place would change.
#pragma once

#include "plan/course_ride.h"

#include <cstddef>
#include <vector>

namespace torvane {

class PointMass {
public:
    static constexpr double cellLength = 50; // m of road with one power

    // What gets through to the road is that of `watts`.
    PointMass(const RideConditions& conditions, double watts);

    size_t cells() const;

    // Rides with a power in W for each cell; where legs rest, as on the brakes, less is pedalled.
    void ride(const std::vector<double>& powers);
    double seconds = 0;
    double normalisedPower = 0; // W

    // Of a W more in each cell, since the last ride: seconds, and the share of the normalised power. What stretches the
    // seconds is taken not to change the normalised power.
    struct Gradient {
        std::vector<double> seconds, normalised;
        std::vector<double> pedalled; // s, of each cell
    };
    Gradient gradient(const std::vector<double>& powers) const;

private:
    struct Step {
        double still, linear, square; // N, N/(m/s), N/(m/s)2: resistance over the speed
        double limit;                 // m/s at its end
        bool down;
        // Of the last ride
        double from, to; // m/s
        double time;     // s at its end
        double power;    // W that is pedalled
        double mean30;   // W over the 30 s up to its end, or all of them before
        double resistance(double speed) const
        {
            return still + speed * (linear + speed * square);
        }
    };
    void roll(Step& step, double power);
    double legsLeft(size_t index, double wanted) const;
    void tellNormalised();
    double bendOf(const Step& step) const;
    static double savedBy(const Step& step);
    static double shareOf(const Step& step, double wanted);
    void addTime(const std::vector<double>& powers, Gradient& gradient) const;
    void addNormalised(const std::vector<double>& powers, Gradient& gradient) const;

    std::vector<Step> steps;
    double mass, passed, slowest, reach, topSpeed, startSpeed;
};

} // namespace torvane
