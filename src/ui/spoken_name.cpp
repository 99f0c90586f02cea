// The system keeps the name beside the control, and wants it taken back before the control goes.
#include "ui/spoken_name.h"

#include <oleacc.h>

namespace torvane {

namespace {

template <class Act>
void annotate(Act act)
{
    IAccPropServices* services = nullptr;
    if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                                reinterpret_cast<void**>(&services))))
        return;
    act(*services);
    services->Release();
}

LRESULT CALLBACK forgetAtEnd(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == WM_DESTROY)
        annotate([=](IAccPropServices& services) {
            services.ClearHwndProps(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &PROPID_ACC_NAME, 1);
        });
    return DefSubclassProc(control, message, wParam, lParam);
}

} // namespace

void speakAs(HWND control, const std::wstring& name)
{
    SetWindowSubclass(control, forgetAtEnd, 1, 0);
    annotate([&](IAccPropServices& services) {
        services.SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME, name.c_str());
    });
}

} // namespace torvane
