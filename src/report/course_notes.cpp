// The sentences about a planned course.
#include "report/course_report.h"

#include "core/text.h"
#include "core/units.h"

namespace torvane {

namespace {

using Notes = std::vector<std::string>;

std::string placesText(const std::vector<CourseGap>& gaps)
{
    constexpr size_t mostTold = 3;
    std::string text;
    for (size_t i = 0; i < gaps.size() && i < mostTold; ++i)
        appendFormat(text, "%s%.1f km (%.2f km wide)", i == 0 ? "" : ", ", gaps[i].distance / 1000,
                     gaps[i].metres / 1000);
    if (gaps.size() > mostTold)
        appendFormat(text, " and %zu more", gaps.size() - mostTold);
    return text;
}

void addPoints(Notes& notes, const CourseFindings& f)
{
    if (f.pointsWithoutPlace != 0)
        notes.push_back(
            formatText("%zu of %zu points have no place and are left out", f.pointsWithoutPlace, f.pointsRead));
    if (f.pointsWithoutAltitude != 0)
        notes.push_back(formatText("%zu of %zu points have no altitude and lie between their neighbours",
                                   f.pointsWithoutAltitude, f.pointsRead));
    if (!f.hasPlaces)
        notes.emplace_back("the track has no positions: there are no bends, and wind has no direction");
}

void addGaps(Notes& notes, const CourseFindings& f)
{
    if (!f.gaps.empty())
        notes.push_back("segments of the track do not touch; what lies between is not ridden: at " +
                        placesText(f.gaps));
    if (!f.straights.empty())
        notes.push_back("points of the track lie far apart, and the road between them counts as straight: at " +
                        placesText(f.straights));
}

void addHeights(Notes& notes, const CourseFindings& f)
{
    if (f.smoothedMore)
        notes.push_back(
            formatText("the altitudes are noisy and smoothed over %.0f m: %.0f m climbed before, %.0f m after",
                       f.smoothing, f.climbedRaw, f.climbed));
    if (f.noisy)
        notes.emplace_back("even so they are rough: the time may be off by more than 3 %");
}

void addRiding(Notes& notes, const PlannedCourse& planned)
{
    const CourseRide& ride = planned.ride;
    if (ride.walkMetres > 0)
        notes.push_back(formatText("%.0f m are walked: the lowest gear cannot be held there", ride.walkMetres));
    if (planned.stopsLeftOut != 0)
        notes.push_back(
            formatText("stops at the end of the course, or beyond, are left out: %zu", planned.stopsLeftOut));
    if (planned.onAnotherRoad)
        notes.emplace_back(
            "the ride to ride as went along another road: most of this course lies more than 200 m from it");
    if (planned.coveredShare < 1)
        notes.push_back(
            formatText("the ride to ride as has power on %.0f %% of the course; its mean stands for the rest",
                       planned.coveredShare * 100));
}

} // namespace

std::vector<std::string> courseNotes(const AnsweredCourse& answered, StatusCode code)
{
    Notes notes;
    const CourseFindings& findings = answered.course.findings;
    if (findings.pointsRead == 0)
        return notes;
    addPoints(notes, findings);
    addGaps(notes, findings);
    addHeights(notes, findings);
    if (code == fitOk)
        addRiding(notes, answered.planned);
    return notes;
}

} // namespace torvane
