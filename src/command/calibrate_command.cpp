#include "command/calibrate_command.h"

#include "core/parameter_file.h"
#include "core/progress.h"
#include "fit/fit_tools.h"
#include "report/calibration_figures.h"
#include "report/calibration_notes.h"
#include "report/calibration_report.h"
#include "report/fit_report.h"

namespace torvane {

namespace {

// The rides that were read go into `rides`.
CalibrationAnswer readAndCalibrate(Session& session, std::vector<MeasuredRide>& rides)
{
    Progress progress(session.screens);
    for (size_t i = 0; i < toolSourceCount; ++i)
        if (const std::string& path = session.inputs.files[i].path; !path.empty())
            rides.push_back(readMeasuredRide(session.working, path, session.preparation.options, &progress));
    return calibrateRides(session.model, rides, session.calibration, &progress);
}

// The profile as it is to be saved.
StatusCode taughtProfile(const Session& session, const CalibrationAnswer& answer, ModelState& state,
                         Calibration& calibration)
{
    if (answer.doubts & doubtUncertain)
        return calibrateUncertain;
    state = session.model.state;
    calibration = calibrationOf(answer);
    if (session.calibration.asAngle == 0)
        return hasDragFactor(calibration) ? fitOk : calibrateBeyond;
    if (!answer.angle)
        return calibrateNoAngle;
    state.position = positionTorsoAngle;
    state.torsoAngle = *answer.angle;
    calibration = {};
    return fitOk;
}

StatusCode save(Session& session, const CalibrationAnswer& answer)
{
    const std::string& path = session.inputs.files[toolDestination].path;
    ModelState state;
    Calibration calibration;
    if (path.empty())
        return fitOk;
    if (StatusCode code = taughtProfile(session, answer, state, calibration))
        return code;
    ParameterBlock block = session.working; // takes the file's name
    return saveProfile(session.screens, state, calibration, block, path) == 0 ? fitOk : calibrateNotWritten;
}

StatusCode codeOf(const CalibrationAnswer& answer, const std::vector<MeasuredRide>& rides)
{
    if (answer.ridesUsed != 0)
        return fitOk;
    return rides.size() == 1 && rides[0].code != fitOk ? rides[0].code : calibrateNothingUsed;
}

void tellAnswer(Session& session, const CalibrationAnswer& answer)
{
    session.screens.setStatus("status : what the power meter teaches of your air drag");
    session.figures = calibrationFigures(answer);
    session.graph = calibrationGraph(answer);
    if (session.rows)
        writeCalibrationRows(*session.rows, answer);
}

} // namespace

ResultStatus calibrateCommand(Session& session)
{
    Screens& screens = session.screens;
    screens.setStatus("");
    std::vector<MeasuredRide> rides;
    CalibrationAnswer answer = readAndCalibrate(session, rides);
    std::vector<std::string> notes = calibrationNotes(answer, rides);
    StatusCode code = codeOf(answer, rides);
    if (code == fitOk) {
        tellAnswer(session, answer);
        code = save(session, answer);
    }
    if (session.calibration.asAngle != 0 && session.inputs.files[toolDestination].path.empty())
        notes.emplace_back("asAngle has no effect where no profile is saved");
    if (std::string why = calibrationFailure(answer, session.model, code); !why.empty())
        notes.push_back(why);
    for (const std::string& note : notes)
        screens.tellNote(note);
    reportCalibration(screens, answer, rides, notes);
    if (code != fitOk)
        screens.setStatus("status : " + notes.back());
    return code;
}

} // namespace torvane
