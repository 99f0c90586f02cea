#include "ui/graph_output.h"

#include "core/files.h"
#include "core/shown_text.h"
#include "plot/svg.h"
#include "ui/file_prompts.h"
#include "ui/graph_canvas.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/paint_picture.h"
#include "ui/png.h"
#include "ui/print_pane.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace torvane {

namespace {

GdiObject<HBITMAP> bitmapOf(HWND window, const Graph& graph, SIZE size)
{
    HDC screen = GetDC(window);
    GdiObject<HBITMAP> bitmap = drawGraphBitmap(screen, graph, size, {});
    ReleaseDC(window, screen);
    return bitmap;
}

BITMAPINFOHEADER headerOf(SIZE size)
{
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof header;
    header.biWidth = size.cx;
    header.biHeight = size.cy;
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biSizeImage = static_cast<DWORD>(size.cx * size.cy * 4);
    return header;
}

// As the clipboard takes it, which owns it from then on; null when there is no memory.
HGLOBAL deviceIndependent(HWND window, HBITMAP bitmap, SIZE size)
{
    BITMAPINFOHEADER header = headerOf(size);
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, sizeof header + header.biSizeImage);
    if (memory == nullptr)
        return nullptr;
    auto* bytes = static_cast<uint8_t*>(GlobalLock(memory));
    memcpy(bytes, &header, sizeof header);
    HDC screen = GetDC(window);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(size.cy), bytes + sizeof header,
              reinterpret_cast<BITMAPINFO*>(bytes), DIB_RGB_COLORS);
    ReleaseDC(window, screen);
    GlobalUnlock(memory);
    return memory;
}

std::vector<uint8_t> fileOf(HWND window, const Graph& graph, SIZE size, const std::string& path)
{
    if (!path.ends_with(".svg"))
        return pngOf(bitmapOf(window, graph, size));
    std::string text = svgText(graphPicture(graph, size));
    return {text.begin(), text.end()};
}

// As large as the paper has room inside a margin, in the shape that the window has.
RECT placeOnPaper(HDC printer, SIZE size)
{
    constexpr int marginPart = 12; // of the paper's width
    int width = GetDeviceCaps(printer, HORZRES), height = GetDeviceCaps(printer, VERTRES);
    int margin = width / marginPart;
    int across = width - 2 * margin;
    int down = std::min(MulDiv(across, size.cy, size.cx), height - 2 * margin);
    across = std::min(across, MulDiv(down, size.cx, size.cy));
    return {margin, margin, margin + across, margin + down};
}

// The main window's commands would close the graph under a dialog of its own.
class MainWindowHeld {
public:
    MainWindowHeld()
    {
        EnableWindow(mainWindow.window, FALSE);
    }
    ~MainWindowHeld()
    {
        EnableWindow(mainWindow.window, TRUE);
    }
};

} // namespace

void copyGraph(HWND window, const Graph& graph, SIZE size)
{
    if (!OpenClipboard(window))
        return showMessageBox(window, "error", "the clipboard is in use");
    HGLOBAL copied = deviceIndependent(window, bitmapOf(window, graph, size), size);
    EmptyClipboard();
    if (copied != nullptr)
        SetClipboardData(CF_DIB, copied);
    CloseClipboard();
}

void saveGraph(HWND window, const Graph& graph, SIZE size)
{
    std::string path;
    bool chosen;
    {
        MainWindowHeld held;
        chosen = promptSavePicture(window, path);
    }
    if (!chosen)
        return;
    std::vector<uint8_t> bytes = fileOf(window, graph, size, path);
    if (bytes.empty() || replaceFile(path, {bytes}) != FileResult::ok)
        showMessageBox(window, "error", "failed to write a file '" + shownText(path) + "'");
}

void printGraph(HWND window, const Graph& graph, SIZE size)
{
    MainWindowHeld held;
    HDC printer = askPrinter(window, PD_NOSELECTION | PD_NOPAGENUMS | PD_USEDEVMODECOPIESANDCOLLATE);
    if (printer == nullptr)
        return;
    DOCINFOW document = {};
    document.cbSize = sizeof document;
    document.lpszDocName = L"Torvane graph";
    if (StartDocW(printer, &document) > 0) {
        StartPage(printer);
        paintPicture(printer, graphPicture(graph, size), placeOnPaper(printer, size));
        EndPage(printer);
        EndDoc(printer);
    }
    DeleteDC(printer);
}

} // namespace torvane
