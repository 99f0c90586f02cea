// The tables under a ride report: the steps of a run, and the sectors of an intermittent braking.
#include "core/text.h"
#include "core/units.h"
#include "report/report_text.h"
#include "report/ride_report.h"

namespace torvane {

namespace {

void reportHeading(Screens& screens, const char* subject, bool kiloWatt)
{
    constexpr const char* format = "%8s,%8s,%9s,%8s,%8s,%8s,%8s,%6s,%6s,%8s\n";
    std::string text = formatText("\n\n\tprocess of %s as follows\n\n", subject);
    appendFormat(text, format, "time", "velocity", "power", "torque", "force", "accele", "distance", "gear", "ratio",
                 "cadence");
    appendFormat(text, format, "sec", "kph", kiloWatt ? "kW" : "W", "Nm", "kgf", "mpss", "m", "t", "", "rpm");
    handOver(screens, Pane::lower, text);
}

void appendRow(std::string& text, const SampleRow& row)
{
    appendFormat(text, "%8.3lf,%8.3lf,%9.3lf,%8.3lf,%8.3lf,%8.3lf,%8.3lf,%3d/%2d,%6.3lf,%8.3lf\n", row.time,
                 row.velocity * kphPerMps, row.power, row.torque, row.force, row.accele, row.distance, row.frontTooth,
                 row.rearTooth, row.gearRatio, row.cadence);
}

void appendSector(std::string& text, int number, const SectorRow& row)
{
    appendFormat(text, "%9d,%9.1lf,%9.1lf,%9.3lf,%9.3lf,%9.3lf,%9.3lf,%9.3lf,%9.3lf\n", number, row.time, row.distance,
                 row.velocity * kphPerMps, row.brake[0], row.brake[1], row.heat[0], row.radiate[0], row.residual[0]);
}

} // namespace

void reportProcessHeading(Screens& screens, const RideRun& ride)
{
    const char* subject = "braking powered (wheel)thrust based";
    if (ride.found.drive.thrustMode == thrustByPedaling) {
        subject = ride.in.rideMode == rideAcceleration ? "acceleration powered pedaling based"
                                                       : "deceleration powered pedaling based";
    }
    reportHeading(screens, subject, ride.found.drive.kiloWattLog != 0);
}

void reportRollingHeading(Screens& screens)
{
    reportHeading(screens, "inclination and velocity powered zero", false);
}

void reportProcessRows(Screens& screens, const SampleLog& log, Progress* progress)
{
    std::string text;
    int rows = shownRows(log);
    for (int row = 0; row < rows; ++row) {
        appendRow(text, log.rows[static_cast<size_t>(row)]);
        handOverWhenLarge(screens, Pane::lower, text);
        reportProgress(progress, progressPercent(0.0, rows, row));
    }
    handOver(screens, Pane::lower, text);
}

void reportSectorHeading(Screens& screens)
{
    std::string text = "\n\n\tcumulative data of motion and front brake heat at the end of each sector\n"
                       "\t-- odd sector is acceleration powered zero, even sector is spot braking\n\n";
    appendFormat(text, "%9s,%9s,%9s,%9s,%9s,%9s,%9s,%9s,%9s\n", "sector", "time", "distance", "velocity", "f.brake",
                 "r.brake", "f.heat", "f.radiate", "f.residual");
    // The first comma is missing and one is a full stop: the layout has always been so.
    appendFormat(text, "%9s %9s,%9s,%9s,%9s,%9s,%9s.%9s,%9s\n", "", "sec", "m", "kph", "Cel", "Cel", "kJ", "kJ", "kJ");
    handOver(screens, Pane::lower, text);
}

void reportSectorRows(Screens& screens, const SampleLog& log)
{
    std::string text;
    for (size_t row = 0; row < log.sectors.size(); ++row) {
        appendSector(text, static_cast<int>(row) + 1, log.sectors[row]);
        handOverWhenLarge(screens, Pane::lower, text);
    }
    handOver(screens, Pane::lower, text);
}

} // namespace torvane
