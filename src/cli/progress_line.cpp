#include "cli/progress_line.h"

#include "core/text.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double silentSeconds = 1;
constexpr double leastKnown = 0.1; // of the work, from which on the time left is told

} // namespace

std::string progressText(double done, double seconds, std::string_view told)
{
    constexpr size_t width = 24;
    size_t filled = static_cast<size_t>(std::clamp(done, 0.0, 1.0) * width);
    std::string text = formatText("[%s%s] %3d %%", std::string(filled, '=').c_str(),
                                  std::string(width - filled, ' ').c_str(), static_cast<int>(done * 100));
    if (!told.empty())
        text += "  " + std::string(told);
    if (done < leastKnown)
        return text;
    int left = static_cast<int>(std::lround(seconds / done * (1 - done)));
    return text + formatText(told.empty() ? "  %d:%02d left" : ", %d:%02d left", left / 60, left % 60);
}

void ProgressLine::show(double done, std::string_view told)
{
    if (!streams.terminal)
        return;
    if (done < last)
        begun = Clock::now();
    last = done;
    double seconds = std::chrono::duration<double>(Clock::now() - begun).count();
    if (seconds < silentSeconds)
        return;
    std::string next = progressText(done, seconds, told);
    next.resize(std::max(next.size(), text.size()), ' '); // over what stood there
    if (next == text)
        return;
    text = next;
    streams.err << '\r' << text << std::flush;
}

void ProgressLine::hide()
{
    if (!text.empty())
        streams.err << '\r' << std::string(text.size(), ' ') << '\r' << std::flush;
    text.clear();
}

} // namespace torvane
