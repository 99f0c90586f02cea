// One private message for each Screens call, sent synchronously: the worker is held until the window thread has done
// it. The guard of a pane's gathered text is never held across a send.
#include "ui/screen_bridge.h"

#include "core/text.h"
#include "core/wide_text.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/pane_control.h"
#include "ui/pane_fill.h"
#include "ui/screen_set.h"
#include "ui/status_line.h"

#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace torvane {

namespace {

enum : UINT {
    messageSetText = WM_APP + 1, // wParam pane, lParam std::string_view*, as below
    messageAppendText,
    messageSetStatus,
    messageShowProgress, // wParam whether
    messageSetProgress,  // wParam percent
    messageShowBox,      // lParam Box*
};

constexpr size_t pieceLimit = 16 * 1024; // bytes; larger ones cost the control more for each line

struct Gathered {
    std::mutex guard;
    std::string text;
};

HWND target;
StopRequest stopRequest;
Gathered gathered[2]; // by Pane

Gathered& gatheredFor(Pane pane)
{
    return gathered[pane == Pane::lower];
}

void sendText(UINT message, Pane pane, std::string_view text)
{
    SendMessageW(target, message, pane == Pane::lower, reinterpret_cast<LPARAM>(&text));
}

void sendPieces(Pane pane, std::string_view text)
{
    while (!text.empty()) {
        size_t length = pieceLength(text, pieceLimit);
        sendText(messageAppendText, pane, text.substr(0, length));
        text.remove_prefix(length);
    }
}

std::string takeGathered(Pane pane)
{
    Gathered& from = gatheredFor(pane);
    std::lock_guard lock(from.guard);
    return std::exchange(from.text, {});
}

void flushPane(Pane pane)
{
    sendPieces(pane, takeGathered(pane));
}

void setPaneText(Pane pane, std::string_view text)
{
    takeGathered(pane); // replaced anyway
    sendText(messageSetText, pane, text);
}

void appendPaneText(Pane pane, std::string_view text)
{
    Gathered& to = gatheredFor(pane);
    bool full;
    {
        std::lock_guard lock(to.guard);
        to.text.append(text);
        full = to.text.size() >= pieceLimit;
    }
    if (full)
        flushPane(pane);
}

void setStatusText(std::string_view text)
{
    SendMessageW(target, messageSetStatus, 0, reinterpret_cast<LPARAM>(&text));
}

void showProgressBar(bool visible)
{
    SendMessageW(target, messageShowProgress, visible, 0);
}

void setProgressBar(int percent)
{
    SendMessageW(target, messageSetProgress, static_cast<WPARAM>(percent), 0);
}

void showBox(std::string_view title, std::string_view text)
{
    flushScreens();
    Box box = {std::string(title), std::string(text)};
    SendMessageW(target, messageShowBox, 0, reinterpret_cast<LPARAM>(&box));
}

Pane paneOf(WPARAM wParam)
{
    return wParam != 0 ? Pane::lower : Pane::upper;
}

const std::string_view& textOf(LPARAM lParam)
{
    return *reinterpret_cast<const std::string_view*>(lParam);
}

LRESULT onSetText(HWND, WPARAM wParam, LPARAM lParam)
{
    Pane pane = paneOf(wParam);
    clearPane(paneWindow(pane));
    setEditable(paneWindow(pane), false); // what was opened for editing is gone
    if (!textOf(lParam).empty())
        SetWindowTextW(paneWindow(pane), widen(textOf(lParam)).c_str());
    return 0;
}

LRESULT onAppendText(HWND, WPARAM wParam, LPARAM lParam)
{
    appendToPane(paneOf(wParam), widen(textOf(lParam)));
    return 0;
}

LRESULT onSetStatus(HWND, WPARAM, LPARAM lParam)
{
    setStatusLine(textOf(lParam));
    return 0;
}

LRESULT onShowProgress(HWND, WPARAM wParam, LPARAM)
{
    showStatusProgress(wParam != 0);
    return 0;
}

LRESULT onSetProgress(HWND, WPARAM wParam, LPARAM)
{
    setStatusProgress(static_cast<int>(wParam));
    return 0;
}

LRESULT onShowBox(HWND window, WPARAM, LPARAM lParam)
{
    const Box& box = *reinterpret_cast<const Box*>(lParam);
    showMessageBox(window, box.title, box.text);
    return 0;
}

constexpr MessageRow messages[] = {
    {messageSetText, onSetText},           {messageAppendText, onAppendText},   {messageSetStatus, onSetStatus},
    {messageShowProgress, onShowProgress}, {messageSetProgress, onSetProgress}, {messageShowBox, onShowBox},
};

} // namespace

void installScreens(HWND window)
{
    target = window;
    mainWindow.session.screens = {
        .setText = setPaneText,
        .appendText = appendPaneText,
        .setStatus = setStatusText,
        .showProgress = showProgressBar,
        .setProgress = setProgressBar,
        .showMessage = showBox,
        .stop = &stopRequest,
    };
}

void stopRun()
{
    stopRequest.ask();
}

void allowRun()
{
    stopRequest.withdraw();
}

void flushScreens()
{
    flushPane(Pane::upper);
    flushPane(Pane::lower);
}

std::span<const MessageRow> screenMessages()
{
    return messages;
}

} // namespace torvane
