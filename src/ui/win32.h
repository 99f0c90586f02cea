// The Windows headers, in their wide form and without the macros that hide C++ names.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <richedit.h>
#include <winspool.h>

namespace torvane {

// Frees a GDI object with the scope that made it.
template <typename Handle>
class GdiObject {
public:
    explicit GdiObject(Handle made) : handle(made) {}
    ~GdiObject()
    {
        DeleteObject(handle);
    }
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    operator Handle() const
    {
        return handle;
    }

private:
    Handle handle;
};

// A message and the function that answers it: a window procedure is a table of these.
struct MessageRow {
    UINT message;
    LRESULT (*handle)(HWND window, WPARAM wParam, LPARAM lParam);
};

} // namespace torvane
