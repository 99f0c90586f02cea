#include "plan/steady_road.h"

#include <algorithm>
#include <cmath>

namespace torvane {

double SteadyRoad::powerAt(double speed)
{
    double thrust = road.resistance(speed);
    if (thrust <= 0)
        return thrust;
    road.shift(speed, true);
    road.driveBack(thrust, speed);
    return road.power;
}

// Newton's way on the power over the speed, which rises; two sides are kept, since wind and motors bend it.
double SteadyRoad::speedFor(double power, double guess)
{
    constexpr double slow = 0.3, fast = 60, close = 1e-4, aside = 1e-3; // m/s; share of the speed
    double low = slow, high = fast, speed = std::clamp(guess, slow, fast);
    for (int round = 0; round < 60 && high - low > close; ++round) {
        double over = powerAt(speed) - power;
        (over > 0 ? high : low) = speed;
        double beside = speed * (1 + aside);
        double slope = (powerAt(beside) - power - over) / (beside - speed);
        double next = speed - over / slope;
        if (!(next > low && next < high))
            next = std::sqrt(low * high);
        if (std::fabs(next - speed) < close)
            return next;
        speed = next;
    }
    return speed <= slow + close ? 0 : speed;
}

} // namespace torvane
