#include "ui/status_line.h"

#include "core/text.h"
#include "core/wide_text.h"
#include "ui/screen_set.h"

#include <string>

namespace torvane {

namespace {

struct StatusLine {
    std::string status, waiting, notice, hint;
    bool inProgress;
    int percent;
};

StatusLine line;

std::string shownText()
{
    if (!line.hint.empty())
        return " " + line.hint;
    if (!line.notice.empty())
        return line.notice;
    if (line.waiting.empty())
        return line.status;
    return line.inProgress ? line.waiting + formatText(" (%d %%)", line.percent) : line.waiting;
}

void refresh()
{
    SetWindowTextW(screenSet.statusBar, widen(shownText()).c_str());
    ShowWindow(screenSet.progressBar, line.inProgress && line.waiting.empty() && line.hint.empty() ? SW_SHOW : SW_HIDE);
    ShowWindow(screenSet.stopButton, line.inProgress ? SW_SHOW : SW_HIDE);
    UpdateWindow(screenSet.progressBar);
}

} // namespace

void setStatusLine(std::string_view status)
{
    line.status = status;
    refresh();
}

void showStatusProgress(bool visible)
{
    line.inProgress = visible;
    refresh();
}

void setStatusProgress(int percent)
{
    line.percent = percent;
    SendMessageW(screenSet.progressBar, PBM_SETPOS, static_cast<WPARAM>(percent), 0);
    if (!line.waiting.empty())
        refresh();
}

bool isProgressShown()
{
    return line.inProgress;
}

void setHintLine(std::string_view hint)
{
    line.hint = hint;
    refresh();
}

void setNoticeLine(std::string_view notice)
{
    line.notice = notice;
    refresh();
}

void setWaitingLine(std::string_view waiting)
{
    line.waiting = waiting;
    refresh();
}

} // namespace torvane
