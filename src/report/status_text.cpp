#include "report/status_text.h"

#include "core/text.h"
#include "core/units.h"

#include <span>

namespace torvane {

namespace {

struct StatusLine {
    StatusBit bit;
    const char* text; // with a quote: a format of one double
    double (*quote)(const RideRun& ride) = nullptr;
};

// The limit that the seek met; the seek for an acceleration leaves it at 0, and the line then says so.
double seekLimit(const RideRun& ride)
{
    return ride.found.seekHigh;
}

double velocityKph(const RideRun& ride)
{
    return ride.found.velocity * kphPerMps;
}

double reachKph(const RideRun& ride)
{
    return ride.model.reachVelocity * kphPerMps;
}

constexpr StatusLine theoryAlerts[] = {
    {statusIllegalValue, "illegal variate value\n"},
};

constexpr StatusLine theoryWarnings[] = {
    {statusZeroValue, "non-sence variate value\n"},
    {statusOverReach, "over maximal velocity under current profile\n"},
    {statusTheoryNotConverged, "velocity not converged under current profile\n"},
    {statusTheoryTooShortPower, "too short power under current profile\n"},
};

constexpr StatusLine rideAlerts[] = {
    {statusIllegalValue, "illegal initial variate value\n"},
    {statusNotConverged, "not converged cause illegal initial values\n"},
    {statusBeyondTolerance, "sorry, not converged and failed to seak\n"},
    {statusTooShortPower, "too short power or too short accele\n"},
    {statusTooLargePower, "could not decelerate cause too large power for the ending velocity\n"},
    {statusNoAcceleration, "could not accelerate cause too short power or too low cadence\n"},
    {statusNoDeceleration, "could not decelerate even if powered zero\n"},
    {statusTooSmallGradient, "too small gradient for rolling\n"},
    {statusTooSmallVelocity, "too small velocity for rolling\n"},
    {statusTooLongTime, "too long sector time limitted maximum %lf sec\n", seekLimit},
    {statusTooLongDistance, "too long distance limitted maximum %lf m\n", seekLimit},
    {statusTooHighAccele, "too hi accele limitted maximum %lf\n", seekLimit},
    {statusNoBrakingNeeded, "no need braking cause maximal velocity is %3.1lf kph as ending poised\n", velocityKph},
    {statusTooShortInterval, "too large inclination or too small braking force or too short interval\n"},
    {statusNoAssistedVelocity, " The specified human power is in the velocity range of the assist,\n"
                               "and can be expected to be assisted by the motor,\n"
                               "but the total power assisted will exceed the velocity of that assist range.\n"
                               "\n The settings in question do not converge to a specific velocity.\n"
                               "\n refer to in and out of assist range due to the current profile,\n"
                               "as following samples:\n"},
    {statusUnknownFault, "-- .\n"},
};

constexpr StatusLine rideWarnings[] = {
    {statusNonsense, "found non-sence variate value\n"},
    {statusLooseTolerance, "sorry, converged not so good and seak result has a few percentage error\n"},
    {statusWheelSpin, "over friction of tyre that makes wheel-spin\n"},
    {statusSlip, "over friction of tyre that makes slip and fall\n"},
    {statusOverReach, "over %5.3lf kph as max powered cadence on top gear\n", reachKph},
    {statusTooLargeRatio, "too large gear ratio for the power\n"},
    {statusEndNotReached, "too short power for the ending velocity\n"},
    {statusDeclineMayStop, "could not decelerate cause too large power for the ending velocity\n"},
};

void appendLine(std::string& text, const StatusLine& line, const RideRun* ride)
{
    if (line.quote != nullptr && ride != nullptr)
        appendFormat(text, line.text, line.quote(*ride));
    else
        text += line.text;
}

// The pedaling power on both sides of the edge of the assist ranges.
void appendAssistSamples(std::string& text, const Evaluation& now)
{
    for (int i = 0; i < 2; ++i) {
        appendFormat(text, "pedaling power and velocity\t:%9.3lf W  ,%9.3lf kph\n", now.assistSamplePower[i],
                     now.assistSampleVelocity[i]);
    }
}

std::string statusLines(ResultStatus status, std::span<const StatusLine> alerts, std::span<const StatusLine> warnings,
                        const RideRun* ride)
{
    bool fatal = isFatal(status);
    if (!fatal && (status & warningBits) == 0)
        return {};
    std::string text = fatal ? "alert :\n" : "warning :\n";
    for (const StatusLine& line : fatal ? alerts : warnings) {
        if ((status & line.bit) != 0) {
            appendLine(text, line, ride);
            if (line.bit == statusNoAssistedVelocity && ride != nullptr)
                appendAssistSamples(text, ride->now);
        }
    }
    return text;
}

} // namespace

const char* statusTail(ResultStatus status)
{
    if (isFatal(status))
        return ", with fatal error";
    return (status & warningBits) != 0 ? ", with any warning" : "";
}

std::string theoryStatusLines(ResultStatus status)
{
    return statusLines(status, theoryAlerts, theoryWarnings, nullptr);
}

std::string rideStatusLines(const RideRun& ride)
{
    return statusLines(ride.status, rideAlerts, rideWarnings, &ride);
}

} // namespace torvane
