#include "command/course_command.h"

#include "core/files.h"
#include "core/progress.h"
#include "core/text.h"
#include "fit/fit_output.h"
#include "fit/fit_tools.h"
#include "page/course_page.h"
#include "plan/course_answer.h"
#include "plan/course_file.h"
#include "plan/course_gpx.h"
#include "report/course_figures.h"
#include "report/course_report.h"
#include "report/fit_report.h"

#include <memory>
#include <utility>

namespace torvane {

namespace {

bool isGpx(const std::string& path)
{
    return checkFileExtension(path) == 3 || path.ends_with(".GPX");
}

// "2026.05.01 climb" of "/rides/2026.05.01 climb.gpx.gz".
std::string courseName(const std::string& path)
{
    std::string name = shownFileName(path); // fit for XML as well
    if (name.ends_with(".gz"))
        name.resize(name.size() - 3);
    size_t extension = name.rfind('.');
    return name.substr(0, extension == 0 ? std::string::npos : extension);
}

bool saveFit(const PlannedFile& planned, int32_t fileType, const std::string& path)
{
    FitImage image = {};
    if (fileType == planActivityFile)
        makePlannedActivity(planned, image);
    else
        makeCourseFile(planned, image);
    return saveFitFile(image, path);
}

bool saveGpx(const PlannedFile& planned, const std::string& path)
{
    std::string text = courseGpx(planned);
    std::span<const uint8_t> bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    return replaceFile(path, {bytes}) == FileResult::ok;
}

StatusCode write(Session& session, const AnsweredCourse& answered, std::vector<PlannedSecond> seconds,
                 const std::string& path)
{
    if (!answered.course.findings.hasPlaces)
        return reportUnsaved(session.screens, "the track has no positions, and a course to follow cannot be without");
    PlannedFile planned = plannedFile(answered, std::move(seconds), courseName(answered.course.path));
    bool saved = isGpx(path) ? saveGpx(planned, path) : saveFit(planned, session.plan.fileType, path);
    if (!saved)
        return reportUnsaved(session.screens,
                             formatText("failed to save the planned course as '%s'", reportedName(path).c_str()));
    session.screens.setStatus("status : saved the planned course as '" + reportedName(path) + "'");
    return fitOk;
}

void tell(Session& session, const AnsweredCourse& answered, const std::vector<PlannedSecond>& seconds,
          const std::vector<std::string>& notes)
{
    session.figures = courseFigures(session.model, answered);
    session.graph = courseCurves(seconds);
    if (session.rows)
        writeCourseRows(*session.rows, seconds);
    if (session.wantsPage) {
        session.shownPlan = std::make_shared<ShownPlan>(ShownPlan{answered, seconds});
        session.page = coursePage(session.model, *session.shownPlan, notes, session.against.get());
    }
    reportCourse(session.screens, session.model, answered, notes);
}

} // namespace

ResultStatus planCommand(Session& session)
{
    AnsweredCourse answered;
    session.screens.setStatus("");
    session.graph.reset();
    Progress progress(session.screens);
    const std::string& track = session.inputs.files[0].path;
    StatusCode code = answerCourse(session.model, session.working, track, session.plan, answered, &progress);
    answered.course.path = track;
    std::vector<std::string> notes = courseNotes(answered, code);
    for (const std::string& note : notes)
        session.screens.tellNote(note);
    if (code != fitOk) {
        reportNoCourse(session.screens, answered, code, notes);
        return code;
    }
    std::vector<PlannedSecond> seconds = secondsOf(answered.course, answered.planned.ride);
    tell(session, answered, seconds, notes);
    const std::string& destination = session.inputs.files[toolDestination].path;
    return destination.empty() ? fitOk : write(session, answered, std::move(seconds), destination);
}

} // namespace torvane
