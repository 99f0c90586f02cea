// The list of all targets.
#include "targets.h"

#include <algorithm>

namespace torvane {

std::span<const FuzzTarget> rideTargets();
std::span<const FuzzTarget> settingsTargets();
std::span<const FuzzTarget> trackTargets();

std::span<const FuzzTarget> fuzzTargets()
{
    static const std::vector<FuzzTarget> targets = [] {
        std::vector<FuzzTarget> all(rideTargets().begin(), rideTargets().end());
        for (std::span<const FuzzTarget> more : {settingsTargets(), trackTargets()})
            all.insert(all.end(), more.begin(), more.end());
        return all;
    }();
    return targets;
}

const FuzzTarget* findTarget(std::string_view name)
{
    for (const FuzzTarget& target : fuzzTargets())
        if (name == target.name)
            return &target;
    return nullptr;
}

} // namespace torvane
