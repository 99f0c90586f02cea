#include "report/calibration_report.h"

#include "core/text.h"
#include "model/constants.h"
#include "report/calibration_figures.h"
#include "report/calibration_notes.h"
#include "report/fit_report.h"
#include "report/report_text.h"

#include <cmath>

namespace torvane {

namespace {

void appendFactor(std::string& text, const CalibrationAnswer& answer)
{
    appendFormat(text, "\tfactor          : %.3f, with %d percent between %.3f and %.3f\n", answer.factor,
                 calibrationLevel, answer.lowest, answer.highest);
    appendFormat(text, "\tdrag area       : %.3f m2 at %d kph\n", answer.dragArea, dragAreaSpeed);
    if (answer.angle)
        appendFormat(text, "\tas an angle     : %.1f deg of the torso give the same drag without a factor\n",
                     *answer.angle);
    appendFormat(text, "\trolling         : %d percent more of it would change the factor by %+.3f\n", rollingPercent,
                 answer.rollingEffect);
    appendFormat(text, "\tresidual        : %.0f W over a minute\n", answer.residual);
}

void appendRide(std::string& text, const CalibratedRide& ride, const MeasuredRide& measured)
{
    appendFormat(text, "\n '%s', %s UTC\n\n", shownFileName(measured.path).c_str(), formatDateTime(ride.start).c_str());
    appendFormat(text, "\tfactor alone    : %.3f\n", ride.factor);
    if (ride.foundWind)
        appendFormat(text, "\teffective wind  : %.1f m/s from %.0f deg\n", windSpeed(ride), windDirection(ride));
    appendFormat(text, "\ttemperature     : %.1f Cel\n", ride.temperature);
    appendFormat(text, "\tused            : %u sec in %zu windows\n", ride.seconds[used], ride.windows);
    for (int reason = leftSlow; reason < leftOutCount; ++reason)
        if (ride.seconds[reason] != 0)
            appendFormat(text, "\tleft out        : %u sec %s\n", ride.seconds[reason], leftOutNames[reason]);
}

void appendHeldOut(std::string& text, const HeldOut& out)
{
    if (out.blocks == 0)
        return;
    text += "\n blocks of ten minutes, predicted by the others         before     after\n\n";
    appendFormat(text, "\terror of a block's mean, median of %4zu blocks %9.1f %9.1f %%\n", out.blocks,
                 out.before.blockError * 100, out.after.blockError * 100);
    appendFormat(text, "\terror over half a minute                     %9.0f %9.0f W\n", out.before.shortError,
                 out.after.shortError);
    appendFormat(text, "\tcorrelation over half a minute               %9.3f %9.3f\n", out.before.correlation,
                 out.after.correlation);
    appendFormat(text, "\tblocks that are predicted better or as well  %9s %9zu\n", "", out.better);
    appendFormat(text, "\tfactors of the two halves                    %9.3f %9.3f\n", out.factor[0], out.factor[1]);
}

} // namespace

void reportCalibration(Screens& screens, const CalibrationAnswer& answer, std::span<const MeasuredRide> rides,
                       const std::vector<std::string>& notes)
{
    std::string text;
    screens.setText(Pane::lower, "");
    if (answer.ridesUsed != 0) {
        text = "\n what the power meter teaches of your air drag\n\n";
        appendFactor(text, answer);
    }
    for (size_t i = 0; i < rides.size(); ++i)
        if (answer.rides[i].fault == CalibrationFault::none)
            appendRide(text, answer.rides[i], rides[i]);
    if (answer.ridesUsed != 0)
        appendHeldOut(text, answer.heldOut);
    appendNotes(text, "answer", notes);
    handOver(screens, Pane::lower, text);
}

} // namespace torvane
