// A step changes the velocity by dt / (m v) times the mean of the powers at this velocity and at the one before. Let no
// step change it by more than `gain` while both lie between low and high, let the road win wherever a velocity is less
// than two gains above low, and let the drags win wherever it is less than two gains below high. Then none leaves: a
// step beyond high starts less than a gain below it, where the drags win, and so needs the road to have won at the
// velocity before; but that one was less than two gains below high. The same holds at low.
//
// The power splits into load x velocity, of tyres and slope, and that of the air, which never falls while the air comes
// from ahead and its drag is none that pushes. So the ends of an interval bound the power in it.
#include "ride/roll_bound.h"

#include "model/constants.h"
#include "model/resistance.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double spare = 1e-9; // of a power; far more than its rounding

// The road of the roll, evaluated beside it.
struct Road {
    const Model& model;
    Evaluation now;
};

double airPowerAt(Road& road, double velocity)
{
    resistanceAtVelocity(road.model, road.now, velocity);
    return road.now.airDragPower;
}

// Bounds of the power between two velocities, of which the road pushes with load < 0 kgf.
double leastPower(Road& road, double load, double low, double high)
{
    return load * standardGravity * high + airPowerAt(road, low);
}

double mostPower(Road& road, double load, double low, double high)
{
    return load * standardGravity * low + airPowerAt(road, high);
}

} // namespace

bool staysBelow(const RideRun& ride, const StepState& state, double before, double most, double dt)
{
    double load = ride.now.rollingLoad + ride.now.slopeLoad;
    double slower = std::min(before, state.velocity);
    double faster = std::max(before, state.velocity);
    double low = std::max(slower - (most - slower) * 0.5, slower * 0.5);
    if (!(load < 0.0 && faster < most && low > 0.0 && low + ride.now.headWind > 0.0))
        return false;
    Road road = {ride.model, ride.now};
    double fullDrag = airPowerAt(road, most);
    double unsure = fullDrag * spare;
    if (!(fullDrag + load * standardGravity * most > unsure)) // the road still wins there
        return false;
    double strongest = std::max(-leastPower(road, load, low, most), mostPower(road, load, low, most));
    double gain = dt * strongest / (ride.model.state.inertialWeight * low) * (1.0 + spare);
    double high = most - gain; // a cut takes back less than a step
    return gain > 0.0 && low + 2.0 * gain <= slower && faster <= high - 2.0 * gain &&
           mostPower(road, load, low, low + 2.0 * gain) < -unsure &&
           leastPower(road, load, high - 2.0 * gain, high) > unsure;
}

} // namespace torvane
