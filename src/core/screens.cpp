#include "core/screens.h"

#include <atomic>

namespace torvane {

Screens theScreens;

namespace {
std::atomic<int> shownPercent = -1;
}

void reportProgress(int percent)
{
    if (shownPercent.exchange(percent) != percent)
        theScreens.setProgress(percent);
}

void beginProgress()
{
    shownPercent = 0;
    theScreens.showProgress(true);
    theScreens.setProgress(0);
}

void endProgress()
{
    theScreens.showProgress(false);
}

int progressPercent(double low, double high, double present)
{
    double percent = 100 * (present - low) / (high - low);
    if (!(percent > 0))
        return 0;
    return percent < 100 ? static_cast<int>(percent) : 100;
}

} // namespace torvane
