#include "plan/between_rides.h"

#include <algorithm>
#include <cmath>

namespace torvane {

bool ridesDiffer(std::span<const CalibratedRide> rides)
{
    for (const CalibratedRide& ride : rides)
        for (const CalibratedRide& other : rides)
            if (ride.foundWind && other.foundWind &&
                ride.factor - other.factor > normalReach * std::hypot(ride.error, other.error))
                return true;
    return false;
}

// The variance between studies by the method of moments, after DerSimonian and Laird (1986); of a further ride, since
// nobody knows which of the rides is like the next one. A few rides of one factor differ by chance: what their errors
// explain counts for nothing, or several rides would tell less than one.
double betweenRidesError(std::span<const CalibratedRide> rides)
{
    if (!ridesDiffer(rides))
        return 0;
    double count = 0, weights = 0, squaredWeights = 0, sum = 0, squares = 0;
    for (const CalibratedRide& ride : rides) {
        if (!ride.foundWind)
            continue;
        double weight = 1 / (ride.error * ride.error); // no error is 0: it holds a share of the factor
        ++count;
        weights += weight;
        squaredWeights += weight * weight;
        sum += weight * ride.factor;
        squares += weight * ride.factor * ride.factor;
    }
    double beyond = squares - sum * sum / weights - (count - 1);
    double variance = std::max(0.0, beyond) / (weights - squaredWeights / weights);
    return std::sqrt(variance * (1 + 1 / count));
}

} // namespace torvane
