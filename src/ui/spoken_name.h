// What a screen reader says of a control whose own text does not tell what it is for.
#pragma once

#include "ui/win32.h"

#include <string>

namespace torvane {

// For as long as the control lives; nothing where the system has no such service.
void speakAs(HWND control, const std::wstring& name);

} // namespace torvane
