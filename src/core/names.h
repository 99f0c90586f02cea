// Names of what a record holds as an index: forms offer them, reports print them. Some are misspelt and have always
// been; they stay so.
#pragma once

namespace torvane {

inline constexpr const char* wearNames[] = {"skin suit", "bike summer", "bike winter", "casual summer",
                                            "casual winter"};
inline constexpr const char* helmetNames[] = {"none", "normal", "aero"};
inline constexpr const char* brakeMaterialNames[] = {"carbon", "aluminum", "stainless"};
inline constexpr const char* roadSurfaceNames[] = {"dry", "damp", "rain"};
inline constexpr const char* stageNames[] = {"pedaling", "crank", "hub", "thrust"};

inline constexpr const char* accelerationFactorNames[] = {"maxi power",  "mean power",  "PEV as maxi",
                                                          "PEV as mean", "sector time", "distance",
                                                          "accele",      "gravity",     "constant power"};
inline constexpr const char* decelerationFactorNames[] = {"maxi power", "mean power", "PEV as maxi", "sector time",
                                                          "distance",   "accele",     "gravity",     "constant power"};
inline constexpr const char* brakingPatternNames[] = {"constant force braking", "critical full braking",
                                                      "constant velocity braking", "intermittent braking"};

} // namespace torvane
