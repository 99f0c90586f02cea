#include "command/gps_load_command.h"

#include "core/large_pages.h"
#include "core/progress.h"
#include "gps/gps_load.h"
#include "report/fit_figures.h"
#include "report/fit_report.h"

#include <utility>

namespace torvane {

namespace {

StatusCode gather(const Session& session, LoadedRide& ride)
{
    Progress progress(session.screens);
    ride.image.progress = &progress;
    StatusCode code = gatherActivity(ride);
    ride.image.progress = nullptr;
    return code;
}

// The session's ride comes last: until then a fault leaves the earlier one as it was.
StatusCode load(Session& session, LoadedRide&& ride)
{
    session.screens.setStatus("");
    StatusCode code = gather(session, ride);
    if (code != fitOk)
        return reportStatus(session.screens, ride.path, code);
    constexpr size_t worthGivingBack = 1 << 20;
    bool large = ride.image.data.size() >= worthGivingBack;
    session.take(std::move(ride));
    if (large)
        giveBackFreed(); // a file is read anew for each work on it, and its place is a little too narrow by then
    const LoadedRide& loaded = session.ride;
    ReportedRide reported = {
        loaded.path, reportLoaded,    loaded.inventory, loaded.summary, loaded.presence, session.working,
        0,           loaded.sessions, loaded.laps};
    session.figures = summaryFigures(reported);
    reportSummary(session.screens, reported);
    reportStatus(session.screens, loaded.path, fitLoaded);
    return fitOk;
}

} // namespace

StatusCode loadGpsFile(Session& session)
{
    LoadedRide ride = {{}, session.chosenRide};
    if (StatusCode code = loadFitImage(ride.image, ride.path))
        return reportStatus(session.screens, ride.path, code);
    return load(session, std::move(ride));
}

StatusCode loadRideInMemory(Session& session, FitImage&& image, const std::string& name)
{
    LoadedRide ride = {image, name};
    ride.inMemory = std::make_shared<const FitImage>(std::move(image));
    return load(session, std::move(ride));
}

} // namespace torvane
