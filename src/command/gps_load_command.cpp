#include "command/gps_load_command.h"

#include "core/progress.h"
#include "gps/gps_load.h"
#include "report/fit_report.h"

namespace torvane {

namespace {

StatusCode gather(const Session& session, LoadedRide& ride)
{
    Progress progress(session.screens);
    ride.image.progress = &progress;
    const StatusCode code = gatherActivity(ride);
    ride.image.progress = nullptr;
    return code;
}

} // namespace

StatusCode loadGpsFile(Session& session)
{
    const std::string& path = session.chosenRide;
    LoadedRide ride = {{}, path};
    StatusCode code = loadFitImage(ride.image, path);
    if (code != fitOk)
        return reportStatus(session.screens, path, code);
    session.screens.setStatus("");
    code = gather(session, ride);
    if (code != fitOk)
        return reportStatus(session.screens, path, code);
    session.take(std::move(ride));
    const LoadedRide& loaded = session.ride;
    reportSummary(session.screens,
                  {path, reportLoaded, loaded.inventory, loaded.summary, loaded.presence, session.working});
    reportStatus(session.screens, path, fitLoaded);
    return fitOk;
}

} // namespace torvane
