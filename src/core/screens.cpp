#include "core/screens.h"

#include <atomic>

namespace torvane {

Screens screens = {
    .setText = [](Pane, std::string_view) {},
    .appendText = [](Pane, std::string_view) {},
    .setStatus = [](std::string_view) {},
    .showProgress = [](bool) {},
    .setProgress = [](int) {},
    .showMessage = [](std::string_view, std::string_view) {},
};

namespace {
std::atomic<int> shownPercent = -1;
}

void reportProgress(int percent)
{
    if (shownPercent.exchange(percent) != percent)
        screens.setProgress(percent);
}

void beginProgress()
{
    shownPercent = 0;
    screens.showProgress(true);
    screens.setProgress(0);
}

void endProgress()
{
    screens.showProgress(false);
}

int progressPercent(double low, double high, double present)
{
    double percent = 100 * (present - low) / (high - low);
    if (!(percent > 0))
        return 0;
    return percent < 100 ? static_cast<int>(percent) : 100;
}

} // namespace torvane
