// Where a ride leads uphill: its climbs, and the height that it climbs in all.
#pragma once

#include "gps/ridden_rows.h"

#include <cstddef>
#include <vector>

namespace torvane {

// From the row at its foot to the row at its top.
struct Climb {
    size_t foot, top;
};

// Stretches steeper than 2 percent in the mean that climb 20 m or more. Where the road has lost 10 m against such a
// slope, by a descent or by 500 m of flat, a climb is over.
std::vector<Climb> findClimbs(RiddenRows rows);

// Sum in m of what the road climbs between its low and its high places; ups and downs of less than 3 m are noise.
double climbedHeight(RiddenRows rows);

} // namespace torvane
