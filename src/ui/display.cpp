#include "ui/display.h"

#include "ui/win32.h"

namespace torvane {

int displayDots()
{
    HDC screen = GetDC(nullptr);
    int dots = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dots;
}

int scaled(int pixels)
{
    return MulDiv(pixels, displayDots(), USER_DEFAULT_SCREEN_DPI);
}

int unscaled(int pixels)
{
    return MulDiv(pixels, USER_DEFAULT_SCREEN_DPI, displayDots());
}

} // namespace torvane
