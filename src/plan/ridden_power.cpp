#include "plan/ridden_power.h"

#include "gps/activity.h"
#include "gps/gps_record.h"
#include "gps/prepare.h"

#include <algorithm>
#include <limits>
#include <span>

namespace torvane {

namespace {

constexpr double meanOver = 200;     // m of road
constexpr double spikeShare = 0.005; // of the seconds with the highest powers: nobody holds what they show

struct RiddenSecond {
    double distance; // m since the start, at its end
    double power;    // W
};

struct RiddenSeconds {
    std::vector<RiddenSecond> seconds = {};
    double length = 0; // m
};

RiddenSeconds movingSeconds(std::span<const RideSample> samples)
{
    RiddenSeconds ridden;
    int32_t start = samples.empty() ? 0 : samples.front().values[rideDistance];
    for (size_t i = 1; i < samples.size(); ++i) {
        const RideSample &from = samples[i - 1], &to = samples[i];
        if (!from.has(rideDistance) || !to.has(rideDistance))
            continue;
        ridden.length = (to.values[rideDistance] - start) / 100.0;
        constexpr int32_t least = 50; // 1/100 m
        bool moves = !from.open && to.values[rideDistance] - from.values[rideDistance] >= least;
        if (moves && to.has(ridePower))
            ridden.seconds.push_back({ridden.length, static_cast<double>(to.values[ridePower])});
    }
    return ridden;
}

// One each 50 m or so.
std::vector<RiddenPlace> placesOf(std::span<const RideSample> samples)
{
    constexpr int32_t apart = 5000; // 1/100 m
    std::vector<RiddenPlace> places;
    int32_t next = std::numeric_limits<int32_t>::min();
    for (const RideSample& sample : samples) {
        bool known = sample.has(rideLatitude) && sample.has(rideLongitude) && sample.has(rideDistance);
        if (!known || sample.values[rideDistance] < next)
            continue;
        next = sample.values[rideDistance] + apart;
        places.push_back({degreesOf(sample.values[rideLatitude]), degreesOf(sample.values[rideLongitude])});
    }
    return places;
}

void clipSpikes(std::vector<RiddenSecond>& seconds)
{
    std::vector<double> powers;
    powers.reserve(seconds.size());
    for (const RiddenSecond& second : seconds)
        powers.push_back(second.power);
    auto most = powers.end() - 1 - static_cast<std::ptrdiff_t>(spikeShare * static_cast<double>(powers.size()));
    std::ranges::nth_element(powers, most);
    for (RiddenSecond& second : seconds)
        second.power = std::min(second.power, *most);
}

struct Bin {
    double work = 0, seconds = 0;
};

// Where nothing was measured, the mean of the ride.
PowerProfile profileOf(std::span<const Bin> bins, double mean)
{
    PowerProfile profile = {meanOver, {}};
    for (const Bin& bin : bins)
        profile.watts.push_back(bin.seconds > 0 ? bin.work / bin.seconds : mean);
    return profile;
}

} // namespace

StatusCode readRiddenPower(const std::string& path, RiddenPower& ridden, Progress* progress)
{
    FitImage prepared = {};
    PrepareFindings findings;
    if (StatusCode code = loadPrepared(prepared, path, {}, findings, progress))
        return code;
    Activity activity;
    if (StatusCode code = readActivity(prepared, activity, findings))
        return code;
    RiddenSeconds moving = movingSeconds(activity.samples);
    if (moving.seconds.empty() || moving.length > mostCourse)
        return planWithoutPower;
    clipSpikes(moving.seconds);
    std::vector<Bin> bins(static_cast<size_t>(moving.length / meanOver) + 1);
    double work = 0;
    for (const RiddenSecond& second : moving.seconds) {
        Bin& bin = bins[static_cast<size_t>(second.distance / meanOver)];
        bin.work += second.power;
        bin.seconds += 1;
        work += second.power;
    }
    auto empty = std::ranges::count_if(bins, [](const Bin& bin) { return bin.seconds == 0; });
    if (static_cast<size_t>(2 * empty) > bins.size())
        return planWithoutPower;
    ridden = {profileOf(bins, work / static_cast<double>(moving.seconds.size())), moving.length,
              placesOf(activity.samples)};
    return fitOk;
}

} // namespace torvane
