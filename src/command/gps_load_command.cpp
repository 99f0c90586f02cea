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
        return reportStatus(fitInputFileName, code);
    screens.setStatus("");
    beginProgress();
    code = gatherActivity(image);
    endProgress();
    if (code != fitOk)
        return reportStatus(fitInputFileName, code);
    setFieldPresence();
    setReadiness();
    reportSummary(fitInventory, fitSummary, 0, fitInputFileName, reportLoaded);
    reportStatus(fitInputFileName, fitLoaded);
    return fitOk;
}

} // namespace torvane
