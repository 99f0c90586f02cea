#include "core/progress.h"

#include <utility>

namespace torvane {

Progress::Progress(const Screens& toScreens) : screens(&toScreens)
{
    screens->showProgress(true);
    screens->setProgress(0);
}

Progress::~Progress()
{
    if (screens != nullptr)
        screens->showProgress(false);
}

void Progress::report(int percent)
{
    look();
    if (screens != nullptr && std::exchange(shown, percent) != percent)
        screens->setProgress(percent);
}

void Progress::look() const
{
    if (mayStop && screens != nullptr && screens->stop != nullptr && screens->stop->isAsked())
        throw Stopped();
}

void Progress::goToTheEnd()
{
    mayStop = false;
}

void reportProgress(Progress* progress, int percent)
{
    if (progress != nullptr)
        progress->report(percent);
}

void lookForStop(const Progress* progress)
{
    if (progress != nullptr)
        progress->look();
}

int progressPercent(double low, double high, double present)
{
    double percent = 100 * (present - low) / (high - low);
    if (!(percent > 0))
        return 0;
    return percent < 100 ? static_cast<int>(percent) : 100;
}

} // namespace torvane
