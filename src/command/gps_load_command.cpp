#include "command/gps_load_command.h"

#include "core/screens.h"
#include "gps/gps_load.h"
#include "report/fit_report.h"

namespace torvane {

StatusCode loadGpsFile(Session& session)
{
    FitImage image;
    StatusCode code = loadFitImage(image, fitInputFileName);
    if (code != fitOk)
        return reportStatus(session.screens, fitInputFileName, code);
    session.screens.setStatus("");
    beginProgress();
    code = gatherActivity(image);
    endProgress();
    if (code != fitOk)
        return reportStatus(session.screens, fitInputFileName, code);
    setFieldPresence();
    setReadiness();
    reportSummary(session.screens, fitInventory, fitSummary, 0, fitInputFileName, reportLoaded);
    reportStatus(session.screens, fitInputFileName, fitLoaded);
    return fitOk;
}

} // namespace torvane
