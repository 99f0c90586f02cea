#include "gps/climbs.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr double leastSlope = 0.02;
constexpr double lossAtEnd = 10;   // m
constexpr double leastHeight = 20; // m
constexpr double noise = 3;        // m

// Height above a road that climbs by the least slope.
double excess(const RiddenRow& row)
{
    return row.height - leastSlope * row.distance;
}

} // namespace

std::vector<Climb> findClimbs(RiddenRows rows)
{
    std::vector<Climb> climbs;
    Climb climb = {0, 0};
    auto close = [&](size_t next) {
        if (climb.top > climb.foot && rows[climb.top].height - rows[climb.foot].height >= leastHeight)
            climbs.push_back(climb);
        climb = {next, next};
    };
    for (size_t i = 0; i < rows.size(); ++i) {
        double now = excess(rows[i]);
        if (now > excess(rows[climb.top]))
            climb.top = i;
        else if (now < excess(rows[climb.top]) - lossAtEnd || now < excess(rows[climb.foot]))
            close(i);
    }
    if (!rows.empty())
        close(rows.size() - 1);
    return climbs;
}

double climbedHeight(RiddenRows rows)
{
    if (rows.empty())
        return 0;
    double climbed = 0;
    double low = rows[0].height,
           high = low; // since the last turn; a rise has begun once high leads above low by more than noise
    for (const RiddenRow& row : rows) {
        if (row.height > high) {
            high = row.height;
        } else if (row.height < high - noise) {
            climbed += high - low >= noise ? high - low : 0;
            low = high = row.height;
        } else if (row.height < low) {
            low = high = row.height;
        }
    }
    return climbed + (high - low >= noise ? high - low : 0);
}

} // namespace torvane
