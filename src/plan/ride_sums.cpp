#include "plan/ride_sums.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double window = 30; // s

} // namespace

NormalisedSum::NormalisedSum(double timeStep) : last(static_cast<size_t>(std::lround(window / timeStep))) {}

void NormalisedSum::add(double power, double dt)
{
    sum += power - last[next];
    last[next] = power;
    next = next + 1 == last.size() ? 0 : next + 1;
    held = std::min(held + 1, last.size());
    work += power * dt;
    time += dt;
    if (held < last.size())
        return;
    double mean = sum / static_cast<double>(held);
    fourths += mean * mean * mean * mean * dt;
    seconds += dt;
}

double NormalisedSum::value() const
{
    if (seconds > 0)
        return std::sqrt(std::sqrt(fourths / seconds));
    return time > 0 ? work / time : 0;
}

void RideSums::add(const CourseStep& step, double seconds, double metres, bool steady)
{
    into.movingSeconds += seconds;
    into.kiloJoule += step.power * seconds / 1000;
    if (step.going != Going::walking)
        normalised.add(step.power, seconds);
    into.topSpeed = std::max(into.topSpeed, step.speed);
    for (size_t wheel = 0; wheel < into.hottest.size(); ++wheel)
        into.hottest[wheel] = std::max(into.hottest[wheel], step.brakeTemperature[wheel]);
    switch (step.going) {
    case Going::pedalling:
        into.pedalSeconds += seconds;
        if (steady && (into.lowestCadence == 0 || step.cadence < into.lowestCadence))
            into.lowestCadence = step.cadence;
        break;
    case Going::braking:
        into.brakeSeconds += seconds;
        break;
    case Going::walking:
        into.walkSeconds += seconds;
        into.walkMetres += metres;
        break;
    default:
        into.coastSeconds += seconds;
        break;
    }
}

void RideSums::finish()
{
    double ridden = into.movingSeconds - into.walkSeconds;
    into.meanPower = ridden > 0 ? 1000 * into.kiloJoule / ridden : 0;
    into.normalisedPower = normalised.value();
}

} // namespace torvane
