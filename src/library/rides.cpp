#include "library/rides.h"

#include "command/command_table.h"
#include "command/gps_load_command.h"
#include "core/command_ids.h"
#include "gps/prepare.h"
#include "library/errors.h"
#include "library/state.h"
#include "report/fit_figures.h"
#include "report/fit_report.h"
#include "report/prepare_report.h"

#include <utility>

namespace torvane::library {

namespace {

std::optional<Error> errorOf(int command, StatusCode code, Answer& answer)
{
    const Command& own = *findCommand(command);
    answer.command = consoleName(own);
    if (succeeded(own, code))
        return std::nullopt;
    return library::errorOf(own, code, answer.lower, answer.statusLine);
}

Error beyond(const char* entry, double least, double most, const char* unit)
{
    return {.kind = ErrorKind::beyondLimits,
            .text = std::string(entry) + " is beyond its limits",
            .entry = entry,
            .limits = Limits{least, most, unit}};
}

std::optional<Error> check(const Preparation& preparation)
{
    if (!(preparation.gapLimit >= leastGapLimit && preparation.gapLimit <= mostGapLimit))
        return beyond("gapLimit", leastGapLimit, mostGapLimit, "sec");
    if (!(preparation.jumpSpeed >= leastJumpSpeed && preparation.jumpSpeed <= mostJumpSpeed))
        return beyond("jumpSpeed", leastJumpSpeed, mostJumpSpeed, "m/s");
    return std::nullopt;
}

} // namespace

Error noRide()
{
    return {.kind = ErrorKind::incomplete, .text = "there is no ride in hand"};
}

std::optional<Error> takeRide(Session& session, StatusCode read, FitImage&& image, const std::string& name,
                              Answer& answer)
{
    Gathering gathering(session, answer);
    const StatusCode code =
        read != fitOk ? reportStatus(session.screens, name, read) : loadRideInMemory(session, std::move(image), name);
    takeFigures(session, answer);
    return errorOf(commandLoadRide, code, answer);
}

std::optional<Error> prepareInHand(Session& session, const Preparation& preparation, Answer& answer)
{
    if (!session.ride.inMemory)
        return noRide();
    if (std::optional<Error> error = check(preparation))
        return error;
    PrepareOptions options = {preparation.gapLimit, preparation.jumpSpeed, preparation.dropPower,
                              preparation.dropCadence};
    FitImage prepared = {};
    PrepareFindings findings;
    Gathering gathering(session, answer);
    std::string name = session.ride.path;
    StatusCode code = prepareActivity(*session.ride.inMemory, options, prepared, findings);
    code = code != fitOk ? reportStatus(session.screens, name, code)
                         : loadRideInMemory(session, std::move(prepared), name);
    session.ride.prepared = code == fitOk;
    if (code == fitOk) {
        addPreparationFigures(session.figures, findings);
        reportPreparation(session.screens, findings);
    }
    takeFigures(session, answer);
    return errorOf(commandPrepare, code, answer);
}

} // namespace torvane::library
