// Names of what a record holds as an index: forms offer them, reports print them. Some are misspelt and have always
// been; they stay so.
#pragma once

#include "core/choices.h"

namespace torvane {

inline constexpr const char* stageNames[] = {"pedaling", "crank", "hub", "thrust"};

inline constexpr const char* accelerationFactorNames[] = {"maxi power",  "mean power",  "PEV as maxi",
                                                          "PEV as mean", "sector time", "distance",
                                                          "accele",      "gravity",     "constant power"};
inline constexpr const char* decelerationFactorNames[] = {"maxi power", "mean power", "PEV as maxi", "sector time",
                                                          "distance",   "accele",     "gravity",     "constant power"};
inline constexpr const char* brakingPatternNames[] = {"constant force braking", "critical full braking",
                                                      "constant velocity braking", "intermittent braking"};

} // namespace torvane
