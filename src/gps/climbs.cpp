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
    RiddenRow foot, top, row;
    auto close = [&](size_t next) {
        if (climb.top > climb.foot && top.height - foot.height >= leastHeight)
            climbs.push_back(climb);
        climb = {next, next};
        foot = top = row;
    };
    size_t i = 0;
    for (const RiddenRow& each : rows) {
        row = each;
        if (i == 0)
            foot = top = row;
        double now = excess(row);
        if (now > excess(top)) {
            climb.top = i;
            top = row;
        } else if (now < excess(top) - lossAtEnd || now < excess(foot)) {
            close(i);
        }
        ++i;
    }
    close(i);
    return climbs;
}

double climbedHeight(RiddenRows rows)
{
    if (rows.empty())
        return 0;
    double climbed = 0;
    double low = rows.front().height,
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
