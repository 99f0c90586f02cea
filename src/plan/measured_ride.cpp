#include "plan/measured_ride.h"

#include "fit/fit_walk.h"
#include "fit/message_fields.h"
#include "gps/activity.h"
#include "gps/gps_record.h"

#include <limits>

namespace torvane {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

double valueOf(const RideSample& sample, RideField field, double scale)
{
    return sample.has(field) ? sample.values[field] / scale : missing;
}

MeasuredSecond secondOf(const RideSample& sample)
{
    MeasuredSecond second;
    second.timestamp = sample.timestamp;
    second.latitude = sample.has(rideLatitude) ? degreesOf(sample.values[rideLatitude]) : missing;
    second.longitude = sample.has(rideLongitude) ? degreesOf(sample.values[rideLongitude]) : missing;
    second.altitude = sample.has(rideAltitude) ? metresOf(static_cast<uint16_t>(sample.values[rideAltitude])) : missing;
    second.speed = valueOf(sample, rideSpeed, 1000);
    second.power = valueOf(sample, ridePower, 1);
    second.cadence = valueOf(sample, rideCadence, 1);
    return second;
}

double meanTemperature(const std::vector<RideSample>& samples, double otherwise)
{
    double sum = 0;
    size_t count = 0;
    for (const RideSample& sample : samples)
        if (sample.has(rideTemperature)) {
            sum += sample.values[rideTemperature];
            ++count;
        }
    return count != 0 ? sum / static_cast<double>(count) : otherwise;
}

// A session says so by its kind of cycling.
bool isVirtual(const FitImage& prepared)
{
    constexpr uint8_t sessionSubSport = 6, indoorCycling = 6, virtualActivity = 58;
    bool found = false;
    walkMessages(prepared, [&](const FitMessage& message) {
        if (!message.isData(messageSession))
            return;
        std::optional<uint8_t> kind = lastUint8(message, sessionSubSport);
        found = found || kind == indoorCycling || kind == virtualActivity;
    });
    return found;
}

StatusCode read(const ParameterBlock& settings, const PrepareOptions& options, MeasuredRide& ride, Progress* progress)
{
    FitImage prepared = {};
    if (StatusCode code = loadPrepared(prepared, ride.path, options, ride.findings, progress))
        return code;
    Activity activity;
    PrepareFindings again;
    if (StatusCode code = readActivity(prepared, activity, again))
        return code;
    ride.temperature = meanTemperature(activity.samples, settings.averageTemperature);
    ride.isVirtual = isVirtual(prepared);
    for (const RideSample& sample : activity.samples)
        ride.seconds.push_back(secondOf(sample));
    return fitOk;
}

} // namespace

MeasuredRide readMeasuredRide(const ParameterBlock& settings, const std::string& path, const PrepareOptions& options,
                              Progress* progress)
{
    MeasuredRide ride;
    ride.path = path;
    ride.code = read(settings, options, ride, progress);
    return ride;
}

} // namespace torvane
