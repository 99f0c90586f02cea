// The two dialogs without a form.
#pragma once

#include "ui/win32.h"

namespace torvane {

void runAboutDialog(HWND owner);
bool confirmExit(HWND owner); // whether "okay" ended it

} // namespace torvane
