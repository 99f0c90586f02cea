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

// A message and the function that answers it: a window procedure is a table of these.
struct MessageRow {
    UINT message;
    LRESULT (*handle)(HWND window, WPARAM wParam, LPARAM lParam);
};

} // namespace torvane
