#include "report/course_report.h"

#include "core/text.h"
#include "core/units.h"
#include "model/gear_table.h"
#include "report/fit_report.h"
#include "report/report_text.h"
#include "report/time_text.h"

#include <cmath>

namespace torvane {

namespace {

std::string durationText(double seconds)
{
    return hms(wholeSeconds(std::round(seconds)));
}

// "-2:31 min", with its sign.
std::string changeText(double seconds)
{
    auto whole = static_cast<int>(std::lround(std::fabs(seconds)));
    const char* sign = whole == 0 ? "" : seconds < 0 ? "-" : "+";
    return formatText("%s%d:%02d min", sign, whole / 60, whole % 60);
}

void appendEffort(std::string& text, const PlannedCourse& planned)
{
    const CourseRide& ride = planned.ride;
    appendFormat(text, "\tpower           : mean %.0f W, normalised %.0f W\n", ride.meanPower, ride.normalisedPower);
    if (planned.threePowers[0] > 0)
        appendFormat(text, "\tthree powers    : %.0f W up, %.0f W on the flat, %.0f W down\n", planned.threePowers[0],
                     planned.threePowers[1], planned.threePowers[2]);
    appendFormat(text, "\twork            : %.0f kJ\n", ride.kiloJoule);
}

void appendTime(std::string& text, const AnsweredCourse& a)
{
    const CourseRide& ride = a.planned.ride;
    appendFormat(text, "\tmoving          : %s, between %s and %s\n", durationText(ride.movingSeconds).c_str(),
                 durationText(a.planned.fastest).c_str(), durationText(a.planned.slowest).c_str());
    if (ride.seconds > ride.movingSeconds)
        appendFormat(text, "\twith stops      : %s\n", durationText(ride.seconds).c_str());
    if (a.answer.start)
        appendFormat(text, "\tstart, arrival  : %s and %s UTC\n", formatDateTime(*a.answer.start).c_str(),
                     formatDateTime(*a.answer.start + static_cast<uint32_t>(std::lround(ride.seconds))).c_str());
    appendFormat(text, "\tspeed           : average %.1f kph, highest %.1f kph\n",
                 ride.movingSeconds > 0 ? a.course.length / ride.movingSeconds * kphPerMps : 0,
                 ride.topSpeed * kphPerMps);
}

double shareOf(double seconds, const CourseRide& ride)
{
    return ride.movingSeconds > 0 ? seconds / ride.movingSeconds * 100 : 0;
}

void appendRiding(std::string& text, const AnsweredCourse& a)
{
    const CourseRide& ride = a.planned.ride;
    if (a.answer.stress > 0)
        appendFormat(text, "\tintensity       : %.2f of ftp, stress score %.0f\n", a.answer.intensity, a.answer.stress);
    appendFormat(text, "\tcoasting        : %.0f %% of the time, braking %.0f %%\n", shareOf(ride.coastSeconds, ride),
                 shareOf(ride.brakeSeconds, ride));
    if (ride.lowestCadence > 0)
        appendFormat(text, "\tlowest cadence  : %.0f rpm\n", ride.lowestCadence);
    appendFormat(text, "\tbrakes          : highest %.0f Cel front, %.0f Cel rear\n", ride.hottest[0], ride.hottest[1]);
}

void appendWhole(std::string& text, const AnsweredCourse& a)
{
    const CourseFindings& f = a.course.findings;
    appendFormat(text, "\tdistance        : %.3f km\n", a.course.length / 1000);
    appendFormat(text, "\tclimbed         : %.0f m, %.0f m smoothed over %.0f m\n", f.climbedRaw, f.climbed,
                 f.smoothing);
    appendTime(text, a);
    appendEffort(text, a.planned);
    appendRiding(text, a);
}

// Time of the day where the start is known, else since the start.
std::string clockText(const CourseAnswer& answer, double clock)
{
    auto seconds = static_cast<uint32_t>(std::lround(clock));
    return answer.start ? formatTimeOfDay(*answer.start + seconds) + " " : durationText(clock);
}

std::string gearText(const Model& model, int gear)
{
    return gear < 0 ? "      -" : formatText("%3d x%2d", frontToothOf(model, gear), rearToothOf(model, gear));
}

struct Table {
    const char* title;
    bool downhill; // speed and heat count, not gear and cadence
};
constexpr Table splitTable = {nullptr, false}, climbTable = {"climbs", false}, descentTable = {"descents", true},
                stretchTable = {"stretches of the plan", false};

void appendHeading(std::string& text, const Table& table, const CourseAnswer& answer)
{
    std::string title = table.title ? table.title : formatText("every %.0f km", answer.partLength / 1000);
    appendFormat(text, "\n %s\n\n\t from km      km  slope %%       time %9s     kph      W%s", title.c_str(),
                 answer.start ? "at " : "after",
                 table.downhill ? "  top kph  front Cel  rear Cel\n" : "     gear  rpm\n");
}

void appendPart(std::string& text, const Table& table, const Model& model, const CourseAnswer& answer,
                const CoursePart& part)
{
    appendFormat(text, "\t%8.2f %7.2f %8.1f  %s %s %7.1f %6.0f", part.from / 1000, part.metres() / 1000, part.slope(),
                 durationText(part.seconds).c_str(), clockText(answer, part.clock).c_str(), part.speed() * kphPerMps,
                 part.power);
    if (table.downhill)
        appendFormat(text, " %8.1f %10.0f %9.0f\n", part.topSpeed * kphPerMps, part.hottest[0], part.hottest[1]);
    else
        appendFormat(text, "  %s %4.0f%s\n", gearText(model, part.gear).c_str(), part.cadence,
                     part.walkSeconds > 0 ? "  on foot in part" : "");
}

void appendParts(Screens& screens, std::string& text, const Table& table, const Model& model,
                 const CourseAnswer& answer, const std::vector<CoursePart>& parts)
{
    if (parts.empty())
        return;
    appendHeading(text, table, answer);
    for (const CoursePart& part : parts) {
        appendPart(text, table, model, answer, part);
        handOverWhenLarge(screens, Pane::lower, text);
    }
}

void appendGain(std::string& text, const AnsweredCourse& a)
{
    const PlannedCourse& planned = a.planned;
    if (planned.even.movingSeconds <= 0)
        return;
    appendFormat(text, "\n against even power of %.0f W, which has the same normalised power : %s\n", planned.evenPower,
                 changeText(-a.answer.gain).c_str());
    if (planned.stretchSeconds > 0)
        appendFormat(text, " who keeps to the stretches alone : %s in motion\n",
                     durationText(planned.stretchSeconds).c_str());
}

void appendWhatIfs(std::string& text, const CourseAnswer& answer)
{
    text += "\n what if\n\n";
    for (size_t i = 0; i < answer.whatIf.size(); ++i) {
        const WhatIfAnswer& what = answer.whatIf[i];
        appendFormat(text, "\t%-16s: %s", whatIfNames[i], changeText(what.seconds).c_str());
        if (i == ifLowerGear && what.teeth > 0)
            appendFormat(text, ", with a sprocket of %d", what.teeth);
        if (i == ifLowerGear && what.lowestCadence > 0)
            appendFormat(text, "; lowest cadence %.0f rpm", what.lowestCadence);
        if (what.walkMetres > 0)
            appendFormat(text, ", %.0f m on foot", what.walkMetres);
        text += "\n";
    }
}

constexpr const char* ofTrack = "track";

} // namespace

void reportCourse(Screens& screens, const Model& model, const AnsweredCourse& a, const std::vector<std::string>& notes)
{
    const CourseAnswer& answer = a.answer;
    screens.setText(Pane::lower, "");
    std::string title = formatText("the course '%s' ahead", shownFileName(a.course.path).c_str());
    screens.setStatus("status : " + title);
    std::string text = "\n " + title + "\n\n";
    appendWhole(text, a);
    appendParts(screens, text, stretchTable, model, answer, answer.stretches);
    appendGain(text, a);
    appendParts(screens, text, climbTable, model, answer, answer.climbs);
    appendParts(screens, text, descentTable, model, answer, answer.descents);
    appendParts(screens, text, splitTable, model, answer, answer.parts);
    appendWhatIfs(text, answer);
    appendNotes(text, ofTrack, notes);
    handOver(screens, Pane::lower, text);
}

void reportNoCourse(Screens& screens, const AnsweredCourse& answered, StatusCode code,
                    const std::vector<std::string>& notes)
{
    const char* fault = planFault(code);
    const std::string& unfit = answered.planned.unfitRide.empty() ? answered.course.path : answered.planned.unfitRide;
    std::string text = formatText("'%s': %s", shownFileName(unfit).c_str(), fault ? fault : "");
    screens.setStatus("status : " + text);
    text = "\n\t" + text + "\n";
    appendNotes(text, ofTrack, notes);
    screens.setText(Pane::lower, text);
}

} // namespace torvane
