#include "plan/refined_pacing.h"

#include "plan/least_time.h"
#include "plan/point_mass.h"
#include "plan/steady_road.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

class Refining {
public:
    Refining(const RideConditions& conditions, double power)
        : mass(conditions, power), watts(power), least(power * conditions.options.least / 100),
          most(power * conditions.options.most / 100), powers(mass.cells(), power), best(powers)
    {
        findRests(conditions);
    }

    PowerProfile solve()
    {
        constexpr int rounds = 20;
        for (int round = 0; round < rounds; ++round) {
            mass.ride(powers);
            PointMass::Gradient gradient = mass.gradient(powers);
            double price = priceOf(gradient);
            if (!(price > 0)) // nobody pedals
                break;
            keepBest(price);
            move(gradient, price);
        }
        for (double& power : best) // half rests are whole ones, or none
            if (power < least)
                power = power < least / 2 ? 0 : least;
        return {PointMass::cellLength, best};
    }

private:
    // Who coasts fast may rest.
    void findRests(const RideConditions& conditions)
    {
        constexpr double guess = 8; // m/s
        SteadyRoad road(conditions);
        double cell = PointMass::cellLength, end = conditions.course.length - cell;
        for (size_t i = 0; i < powers.size(); ++i) {
            road.go(std::clamp(static_cast<double>(i) * cell, 0.0, std::max(0.0, end)), cell);
            rests.push_back(road.powerAt(fastDescent) < 0 && road.speedFor(0, guess) >= fastDescent);
        }
    }

    double clamped(size_t cell, double power) const
    {
        return std::clamp(power, rests[cell] ? 0 : least, most);
    }

    // Against each other by what they would take at the same normalised power.
    void keepBest(double price)
    {
        double held = mass.seconds + price * std::log(mass.normalisedPower / watts);
        if (bestSeconds != 0 && held >= bestSeconds)
            return;
        bestSeconds = held;
        best = powers;
    }

    // Newton's way by the bend of the fourth power alone, which is nearly all of it, and half of it at once.
    void move(const PointMass::Gradient& gradient, double price)
    {
        constexpr double part = 0.5, bendOfFourth = 3;
        double factor = watts / mass.normalisedPower;
        for (size_t i = 0; i < powers.size(); ++i) {
            if (gradient.pedalled[i] <= 0)
                continue;
            double cost = gradient.seconds[i] + price * gradient.normalised[i];
            double bend = bendOfFourth * price * gradient.pedalled[i] / (watts * watts * mass.seconds);
            powers[i] = clamped(i, powers[i] * factor - part * cost / bend);
        }
    }

    // s for all of the normalised power, at which more of everything gains nothing; of cells that can give more and
    // less.
    double priceOf(const PointMass::Gradient& gradient) const
    {
        double saved = 0, spent = 0;
        for (size_t i = 0; i < powers.size(); ++i) {
            if (powers[i] <= clamped(i, 0) || powers[i] >= most)
                continue;
            saved -= powers[i] * gradient.seconds[i];
            spent += powers[i] * gradient.normalised[i];
        }
        return spent > 0 ? saved / spent : 0;
    }

    PointMass mass;
    double watts, least, most;
    std::vector<double> powers, best;
    std::vector<bool> rests;
    double bestSeconds = 0;
};

} // namespace

PowerProfile refinedPacing(const RideConditions& conditions, double watts)
{
    return Refining(conditions, watts).solve();
}

} // namespace torvane
