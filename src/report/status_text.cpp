#include "report/status_text.h"

#include "core/text.h"

#include <span>

namespace torvane {

namespace {

struct StatusLine {
    int bit;
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
    return ride.found.velocity * 3.6;
}

double reachKph(const RideRun& ride)
{
    return ride.model.reachVelocity * 3.6;
}

constexpr StatusLine theoryAlerts[] = {
    {0, "illegal variate value\n"},
};

constexpr StatusLine theoryWarnings[] = {
    {18, "non-sence variate value\n"},
    {20, "over maximal velocity under current profile\n"},
    {21, "velocity not converged under current profile\n"},
    {22, "too short power under current profile\n"},
};

constexpr int assistRangeBit = 14;

constexpr StatusLine rideAlerts[] = {
    {0, "illegal initial variate value\n"},
    {1, "not converged cause illegal initial values\n"},
    {2, "sorry, not converged and failed to seak\n"},
    {3, "too short power or too short accele\n"},
    {4, "could not decelerate cause too large power for the ending velocity\n"},
    {5, "could not accelerate cause too short power or too low cadence\n"},
    {6, "could not decelerate even if powered zero\n"},
    {7, "too small gradient for rolling\n"},
    {8, "too small velocity for rolling\n"},
    {9, "too long sector time limitted maximum %lf sec\n", seekLimit},
    {10, "too long distance limitted maximum %lf m\n", seekLimit},
    {11, "too hi accele limitted maximum %lf\n", seekLimit},
    {12, "no need braking cause maximal velocity is %3.1lf kph as ending poised\n", velocityKph},
    {13, "too large inclination or too small braking force or too short interval\n"},
    {assistRangeBit, " The specified human power is in the velocity range of the assist,\n"
                     "and can be expected to be assisted by the motor,\n"
                     "but the total power assisted will exceed the velocity of that assist range.\n"
                     "\n The settings in question do not converge to a specific velocity.\n"
                     "\n refer to in and out of assist range due to the current profile,\n"
                     "as following samples:\n"},
    {15, "-- .\n"}, // no operation of the model sets this bit
};

constexpr StatusLine rideWarnings[] = {
    {16, "found non-sence variate value\n"},
    {17, "sorry, converged not so good and seak result has a few percentage error\n"},
    {18, "over friction of tyre that makes wheel-spin\n"},
    {19, "over friction of tyre that makes slip and fall\n"},
    {20, "over %5.3lf kph as max powered cadence on top gear\n", reachKph},
    {21, "too large gear ratio for the power\n"},
    {22, "too short power for the ending velocity\n"},
    {23, "could not decelerate cause too large power for the ending velocity\n"},
};

void appendLine(std::string& text, const StatusLine& line, const RideRun* ride)
{
    if (line.quote != nullptr && ride != nullptr) {
        appendFormat(text, line.text, line.quote(*ride));
    } else {
        text += line.text;
    }
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
    if (!fatal && (status & warningBits) == 0) {
        return {};
    }
    std::string text = fatal ? "alert :\n" : "warning :\n";
    for (const StatusLine& line : fatal ? alerts : warnings) {
        if ((status >> line.bit & 1) != 0) {
            appendLine(text, line, ride);
            if (line.bit == assistRangeBit && ride != nullptr) {
                appendAssistSamples(text, ride->now);
            }
        }
    }
    return text;
}

} // namespace

const char* statusTail(ResultStatus status)
{
    if (isFatal(status)) {
        return ", with fatal error";
    }
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
