// The page of the last answer: saved where the user wants it, then shown by the browser.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Nothing where the last answer has no page; the menu is greyed then.
void showPage(HWND owner);

} // namespace torvane
