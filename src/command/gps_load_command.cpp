#include "command/gps_load_command.h"

#include "core/screens.h"
#include "gps/gps_load.h"
#include "report/fit_report.h"

namespace torvane {

StatusCode loadGpsFile()
{
    FitImage image;
    StatusCode code = loadFitImage(image, fitInputFileName);
    if (code != fitOk)
        return reportStatus(theScreens, fitInputFileName, code);
    theScreens.setStatus("");
    beginProgress();
    code = gatherActivity(image);
    endProgress();
    if (code != fitOk)
        return reportStatus(theScreens, fitInputFileName, code);
    setFieldPresence();
    setReadiness();
    reportSummary(theScreens, fitInventory, fitSummary, 0, fitInputFileName, reportLoaded);
    reportStatus(theScreens, fitInputFileName, fitLoaded);
    return fitOk;
}

} // namespace torvane
