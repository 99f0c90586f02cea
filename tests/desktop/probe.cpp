// The test driver's eyes inside Wine: looks at the windows of other processes. Reads one command per line from standard
// input and answers with one line of JSON. Presses nothing itself: keys and clicks come from outside.
//   windows           visible top-level windows
//   children WINDOW   controls of a window, in tab order
//   text WINDOW       its whole text
//   items WINDOW      entries of a combo box
//   focus             the window that has the keyboard; one without a number while none has it
//   front             the top-level window that the keyboard is in
//   moving            whether the window in front follows the mouse, which takes all keys then
//   screen WINDOW     the number that the display knows it by
//   next WINDOW       gives a dialog's control the keyboard as Tab would
//   page WINDOW N     turns a property sheet to page N
//   close WINDOW      posts the close message
//   command WINDOW ID posts a command message, as a menu entry does
//   drop WINDOW PATH  drops a file onto a window, as the desktop does; the path is Windows' own
#include "core/json.h"
#include "core/wide_text.h"

#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

using torvane::JsonList;
using torvane::jsonString;

namespace {

HWND handleFrom(std::istream& line)
{
    uintptr_t number = 0;
    line >> number;
    return reinterpret_cast<HWND>(number);
}

std::string windowText(HWND window)
{
    LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
    std::vector<wchar_t> text(static_cast<size_t>(length) + 1);
    LRESULT taken = SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return torvane::narrow({text.data(), static_cast<size_t>(taken)});
}

std::string className(HWND window)
{
    wchar_t name[128] = {};
    GetClassNameW(window, name, 128);
    return torvane::narrow(name);
}

std::string describe(HWND window)
{
    RECT place;
    GetWindowRect(window, &place);
    std::string kind = className(window);
    JsonList rect('['), json('{');
    for (LONG edge : {place.left, place.top, place.right, place.bottom})
        rect.element(std::to_string(edge));
    json.member("handle", std::to_string(reinterpret_cast<uintptr_t>(window)));
    json.member("id", std::to_string(GetDlgCtrlID(window)));
    json.member("enabled", std::to_string(IsWindowEnabled(window) != FALSE));
    json.member("visible", std::to_string(IsWindowVisible(window) != FALSE));
    json.member("style", std::to_string(GetWindowLongW(window, GWL_STYLE)));
    json.member("rect", rect.close());
    json.member("class", jsonString(kind));
    if (kind == "Button")
        json.member("checked", std::to_string(SendMessageW(window, BM_GETCHECK, 0, 0)));
    if (kind == "ComboBox")
        json.member("selected", std::to_string(SendMessageW(window, CB_GETCURSEL, 0, 0)));
    if (kind.rfind("RichEdit", 0) != 0)
        json.member("text", jsonString(windowText(window)));
    return json.close();
}

BOOL CALLBACK collect(HWND window, LPARAM list)
{
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::string describeAll(const std::vector<HWND>& windows, bool visibleOnly)
{
    JsonList json('[');
    for (HWND window : windows)
        if (!visibleOnly || IsWindowVisible(window))
            json.element(describe(window));
    return json.close();
}

std::string answerWindows(std::istream&)
{
    std::vector<HWND> windows;
    EnumWindows(collect, reinterpret_cast<LPARAM>(&windows));
    return describeAll(windows, true);
}

std::string answerChildren(std::istream& line)
{
    std::vector<HWND> windows;
    EnumChildWindows(handleFrom(line), collect, reinterpret_cast<LPARAM>(&windows));
    return describeAll(windows, false);
}

std::string answerText(std::istream& line)
{
    return jsonString(windowText(handleFrom(line)));
}

std::string answerItems(std::istream& line)
{
    HWND combo = handleFrom(line);
    JsonList json('[');
    LRESULT count = SendMessageW(combo, CB_GETCOUNT, 0, 0);
    for (WPARAM i = 0; i < static_cast<WPARAM>(count); ++i) {
        std::vector<wchar_t> text(static_cast<size_t>(SendMessageW(combo, CB_GETLBTEXTLEN, i, 0)) + 1);
        SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        json.element(jsonString(torvane::narrow(text.data())));
    }
    return json.close();
}

GUITHREADINFO threadInFront()
{
    GUITHREADINFO information = {};
    information.cbSize = sizeof information;
    GetGUIThreadInfo(GetWindowThreadProcessId(GetForegroundWindow(), nullptr), &information);
    return information;
}

std::string answerMoving(std::istream&)
{
    return (threadInFront().flags & GUI_INMOVESIZE) != 0 ? "true" : "false";
}

std::string answerFocus(std::istream&)
{
    HWND focus = threadInFront().hwndFocus;
    return focus != nullptr ? describe(focus) : R"({"id": 0, "handle": 0})";
}

std::string answerFront(std::istream&)
{
    return std::to_string(reinterpret_cast<uintptr_t>(GetAncestor(threadInFront().hwndFocus, GA_ROOT)));
}

std::string answerScreen(std::istream& line)
{
    return std::to_string(reinterpret_cast<uintptr_t>(GetPropW(handleFrom(line), L"__wine_x11_whole_window")));
}

std::string answerNext(std::istream& line)
{
    HWND control = handleFrom(line);
    SendMessageW(GetParent(control), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    return "true";
}

std::string answerPage(std::istream& line)
{
    HWND sheet = handleFrom(line);
    WPARAM page = 0;
    line >> page;
    SendMessageW(sheet, PSM_SETCURSEL, page, 0);
    return "true";
}

std::string answerClose(std::istream& line)
{
    PostMessageW(handleFrom(line), WM_CLOSE, 0, 0);
    return "true";
}

std::string answerCommand(std::istream& line)
{
    HWND window = handleFrom(line);
    WPARAM id = 0;
    line >> id;
    PostMessageW(window, WM_COMMAND, id, 0);
    return "true";
}

// The receiver reads the list of files from its own memory.
std::string answerDrop(std::istream& line)
{
    HWND window = handleFrom(line);
    std::string path;
    std::getline(line >> std::ws, path);
    std::wstring wide = torvane::widen(path) + std::wstring(2, L'\0');
    DROPFILES head = {};
    head.pFiles = sizeof head;
    head.fWide = TRUE;
    std::vector<uint8_t> bytes(sizeof head + wide.size() * sizeof(wchar_t));
    memcpy(bytes.data(), &head, sizeof head);
    memcpy(bytes.data() + sizeof head, wide.data(), bytes.size() - sizeof head);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    HANDLE owner = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_WRITE, FALSE, process);
    void* there = VirtualAllocEx(owner, nullptr, bytes.size(), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    bool written = WriteProcessMemory(owner, there, bytes.data(), bytes.size(), nullptr) != 0;
    CloseHandle(owner);
    bool posted = written && PostMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(there), 0) != 0;
    return posted ? "true" : "false";
}

std::string clipboardText()
{
    HANDLE data = GetClipboardData(CF_UNICODETEXT);
    const void* text = data != nullptr ? GlobalLock(data) : nullptr;
    std::string narrowed = text != nullptr ? torvane::narrow(static_cast<const wchar_t*>(text)) : std::string();
    if (text != nullptr)
        GlobalUnlock(data);
    return narrowed;
}

std::string answerClipboard(std::istream&)
{
    if (!OpenClipboard(nullptr))
        return "null";
    JsonList json('{');
    json.member("text", jsonString(clipboardText()));
    if (HANDLE data = GetClipboardData(CF_DIB)) {
        auto* header = static_cast<const BITMAPINFOHEADER*>(GlobalLock(data));
        json.member("picture", '[' + std::to_string(header->biWidth) + ',' + std::to_string(header->biHeight) + ']');
        GlobalUnlock(data);
    }
    CloseClipboard();
    return json.close();
}

BOOL CALLBACK collectWithChildren(HWND window, LPARAM list)
{
    collect(window, list);
    return EnumChildWindows(window, collect, list), TRUE;
}

// What of a program is alive: pens, brushes, fonts, bitmaps as it tells itself, and all windows of its thread.
std::string answerCounts(std::istream& line)
{
    HWND window = handleFrom(line);
    UINT message = RegisterWindowMessageW(L"Torvane.counts");
    JsonList json('[');
    for (WPARAM kind = 0; kind < 4; ++kind)
        json.element(std::to_string(SendMessageW(window, message, kind, 0)));
    std::vector<HWND> windows;
    EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), collectWithChildren,
                      reinterpret_cast<LPARAM>(&windows));
    json.element(std::to_string(windows.size()));
    return json.close();
}

struct Question {
    const char* name;
    std::string (*answer)(std::istream& line);
};

constexpr Question questions[] = {
    {"windows", answerWindows}, {"children", answerChildren}, {"text", answerText},     {"items", answerItems},
    {"focus", answerFocus},     {"front", answerFront},       {"next", answerNext},     {"page", answerPage},
    {"close", answerClose},     {"command", answerCommand},   {"drop", answerDrop},     {"clipboard", answerClipboard},
    {"counts", answerCounts},   {"screen", answerScreen},     {"moving", answerMoving},
};

std::string answer(const std::string& text)
{
    std::istringstream line(text);
    std::string name;
    line >> name;
    for (const Question& question : questions)
        if (name == question.name)
            return question.answer(line);
    return "null";
}

} // namespace

// In place of a browser: leaves what it was asked to open beside itself.
int noteAddress(const char* program, const char* address)
{
    std::string path = program;
    std::ofstream(path.substr(0, path.find_last_of("\\/") + 1) + "opened.txt") << address;
    return 0;
}

int main(int count, char** words)
{
    if (count > 1)
        return noteAddress(words[0], words[1]);
    std::string line;
    while (std::getline(std::cin, line)) {
        std::string reply = answer(line) + "\n";
        fwrite(reply.data(), 1, reply.size(), stdout);
        fflush(stdout);
    }
}
