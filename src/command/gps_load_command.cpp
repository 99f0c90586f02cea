#include "command/gps_load_command.h"

#include "core/screens.h"
#include "gps/gps_load.h"
#include "report/fit_report.h"

namespace torvane {

StatusCode loadGpsFile(Session& session)
{
    const std::string& path = session.chosenRide;
    LoadedRide ride = {{}, path};
    StatusCode code = loadFitImage(ride.image, path);
    if (code != fitOk)
        return reportStatus(session.screens, path, code);
    session.screens.setStatus("");
    beginProgress();
    code = gatherActivity(ride);
    endProgress();
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
