// The choices about the header and sport of a written ride.
#pragma once

#include <cstdint>
#include <iterator>

namespace torvane {

// formOfSource is no choice of the list: it stands for a format box without a tick.
enum HeaderForm : int32_t { formLegacy, formModern, headerFormCount, formOfSource = headerFormCount };
inline constexpr const char* headerFormNames[] = {"legacy", "modern"};
static_assert(std::size(headerFormNames) == headerFormCount);

// Rows of every dialog's sport list; their FIT values are in fit_types.h.
enum Sport : int32_t {
    sportGeneric,
    sportRunning,
    sportCycling,
    sportTransition,
    sportFitness,
    sportSwimming,
    sportWalking,
    sportSedentary,
    sportAll,
    sportCount
};
inline constexpr const char* sportNames[] = {"generic", "running", "cycling",   "transition", "fitness",
                                             "swiming", "walking", "sedentary", "all"};
static_assert(std::size(sportNames) == sportCount);

// Whose legs are taken out of a recording of several sports.
enum RideSport : int32_t { rideCycling, rideRunning, rideSwimming, rideWalking, rideHiking, rideSportCount };
inline constexpr const char* rideSportNames[] = {"cycling", "running", "swimming", "walking", "hiking"};
static_assert(std::size(rideSportNames) == rideSportCount);

} // namespace torvane
