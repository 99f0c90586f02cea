// The control streams through memory: a file is written whole and beside the old one, so that a save that fails leaves
// the old file as it was and the pane marked as modified. Plain text files are UTF-8.
#include "ui/screen_files.h"

#include "core/files.h"
#include "core/shown_text.h"
#include "core/text.h"
#include "core/wide_text.h"
#include "ui/file_prompts.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/pane_control.h"
#include "ui/pane_fill.h"
#include "ui/screen_set.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <string>
#include <vector>

namespace torvane {

namespace {

constexpr DWORD richTextFormat = 1; // filter index of the prompts
constexpr DWORD plainTextFormat = 2;
constexpr int openFailed = 65535;
struct ScreenFile {
    std::string name; // path of the last save or open, UTF-8; empty: nothing was saved yet
    DWORD format;
};

ScreenFile screenFile;

using Bytes = std::vector<uint8_t>;

DWORD CALLBACK appendToBytes(DWORD_PTR cookie, LPBYTE buffer, LONG length, LONG* written)
{
    Bytes& bytes = *reinterpret_cast<Bytes*>(cookie);
    bytes.insert(bytes.end(), buffer, buffer + length);
    *written = length;
    return 0;
}

DWORD CALLBACK takeFromSpan(DWORD_PTR cookie, LPBYTE buffer, LONG length, LONG* read)
{
    auto& rest = *reinterpret_cast<std::span<const uint8_t>*>(cookie);
    size_t count = std::min(static_cast<size_t>(length), rest.size());
    memcpy(buffer, rest.data(), count);
    rest = rest.subspan(count);
    *read = static_cast<LONG>(count);
    return 0;
}

Bytes streamOut(HWND pane, WPARAM format)
{
    Bytes bytes;
    EDITSTREAM stream = {reinterpret_cast<DWORD_PTR>(&bytes), 0, appendToBytes};
    SendMessageW(pane, EM_STREAMOUT, format, reinterpret_cast<LPARAM>(&stream));
    return bytes;
}

bool streamIn(HWND pane, WPARAM format, std::span<const uint8_t> bytes)
{
    EDITSTREAM stream = {reinterpret_cast<DWORD_PTR>(&bytes), 0, takeFromSpan};
    SendMessageW(pane, EM_STREAMIN, format, reinterpret_cast<LPARAM>(&stream));
    return stream.dwError == 0;
}

// The control offers code pages, which lack letters, or UTF-8 under a head of its own, which hardly another program
// reads. This is the latter under the common head, with letters beyond ASCII by their numbers.
Bytes richBytes(HWND pane)
{
    constexpr std::string_view ownHead = "{\\urtf", commonHead = "{\\rtf1\\ansi\\uc1";
    Bytes bytes = streamOut(pane, SF_RTF | SF_USECODEPAGE | CP_UTF8 << 16);
    std::string_view utf8(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::string text;
    if (utf8.starts_with(ownHead)) {
        text = commonHead;
        utf8.remove_prefix(std::min(utf8.find('\\', ownHead.size()), utf8.size()));
    }
    for (wchar_t unit : widen(utf8))
        if (unit < 0x80)
            text += static_cast<char>(unit);
        else
            text += formatText("\\u%d?", static_cast<int16_t>(unit));
    return Bytes(text.begin(), text.end());
}

Bytes plainBytes(HWND pane)
{
    Bytes wide = streamOut(pane, SF_TEXT | SF_UNICODE);
    std::wstring text(wide.size() / sizeof(wchar_t), L'\0');
    memcpy(text.data(), wide.data(), text.size() * sizeof(wchar_t));
    std::string narrowed = narrow(text);
    return Bytes(narrowed.begin(), narrowed.end());
}

// A file of another program may be in the system's code page instead.
std::wstring decode(const Bytes& bytes)
{
    const char* text = reinterpret_cast<const char*>(bytes.data());
    int length = static_cast<int>(bytes.size());
    for (auto [codePage, flags] : {std::pair<UINT, DWORD>{CP_UTF8, MB_ERR_INVALID_CHARS}, {CP_ACP, 0}}) {
        int needed = MultiByteToWideChar(codePage, flags, text, length, nullptr, 0);
        std::wstring wide(static_cast<size_t>(needed), L'\0');
        if (needed > 0 && MultiByteToWideChar(codePage, flags, text, length, wide.data(), needed) > 0)
            return wide;
    }
    return {};
}

void markSaved(HWND pane)
{
    SendMessageW(pane, EM_SETMODIFY, FALSE, 0);
}

bool mayReplaceContents(HWND pane)
{
    if (!SendMessageW(pane, EM_GETMODIFY, 0, 0))
        return true;
    int answer = MessageBoxW(mainWindow.window, L"contents has been exchanged.\nsave it?", L"attention", MB_OKCANCEL);
    if (answer == IDOK && saveScreen(pane) != 0)
        return false;
    SetFocus(pane);
    return true;
}

int readIntoPane(HWND pane)
{
    Bytes bytes;
    if (readWholeFile(screenFile.name, bytes) != FileResult::ok) {
        showMessageBox(mainWindow.window, "error", "invalid file handle for open rich text");
        return openFailed;
    }
    if (screenFile.format != richTextFormat && screenFile.format != plainTextFormat)
        return openFailed;
    bool upper = pane == screenSet.upperScreen;
    clearPane(pane);
    pane = upper ? screenSet.upperScreen : screenSet.lowerScreen;
    setEditable(pane, true);
    bool read = true;
    if (screenFile.format == richTextFormat) {
        read = streamIn(pane, SF_RTF, bytes);
        keepFormats(pane);
    } else {
        appendToPane(upper ? Pane::upper : Pane::lower, decode(bytes));
    }
    markSaved(pane);
    return read ? 0 : openFailed;
}

} // namespace

int saveScreen(HWND pane)
{
    if (screenFile.name.empty())
        return saveScreenAs(pane);
    finishFill(pane);
    Bytes bytes = screenFile.format == richTextFormat ? richBytes(pane) : plainBytes(pane);
    if (replaceFile(screenFile.name, {bytes}) != FileResult::ok) {
        showMessageBox(mainWindow.window, "error", "failed to write a file '" + shownText(screenFile.name) + "'");
        return 1;
    }
    markSaved(pane);
    return 0;
}

int saveScreenAs(HWND pane)
{
    if (!promptSaveText(mainWindow.window, screenFile.name, screenFile.format))
        return 1;
    return saveScreen(pane);
}

int openScreen(HWND pane)
{
    if (!mayReplaceContents(pane) || !promptOpenText(mainWindow.window, screenFile.name, screenFile.format))
        return 0;
    return readIntoPane(pane);
}

std::wstring paneText(HWND pane)
{
    GETTEXTLENGTHEX lengthRequest = {GTL_NUMCHARS | GTL_PRECISE, 1200};
    LRESULT length = SendMessageW(pane, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&lengthRequest), 0);
    std::wstring text(static_cast<size_t>(std::max<LRESULT>(length, 0)), L'\0');
    GETTEXTEX request = {};
    request.cb = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    request.codepage = 1200;
    LRESULT taken =
        SendMessageW(pane, EM_GETTEXTEX, reinterpret_cast<WPARAM>(&request), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(std::max<LRESULT>(taken, 0)));
    return text;
}

} // namespace torvane
