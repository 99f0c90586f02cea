// The page set-up dialog's answer, carried into the printer's own settings.
#include "ui/page_setup.h"

#include "ui/message_box.h"

#include <string>
#include <vector>

namespace torvane {

namespace {

// Orientation, paper size, length and width, scale, copies, source, and resolution with its kin.
constexpr DWORD settledFields = 0x1E0F;

bool fail(HWND owner, const char* text)
{
    showMessageBox(owner, "error", text);
    return false;
}

void copySettings(DEVMODEW& to, const DEVMODEW& from)
{
    to.dmFields = settledFields;
    to.dmOrientation = from.dmOrientation;
    to.dmPaperSize = from.dmPaperSize;
    to.dmPaperLength = from.dmPaperLength;
    to.dmPaperWidth = from.dmPaperWidth;
    to.dmScale = from.dmScale;
    to.dmCopies = from.dmCopies;
    to.dmDefaultSource = from.dmDefaultSource;
}

bool storeInPrinter(HWND owner, HANDLE printer, wchar_t* name, const DEVMODEW& chosen)
{
    DWORD size = 0;
    GetPrinterW(printer, 2, nullptr, 0, &size);
    std::vector<uint8_t> block(size);
    if (size < sizeof(PRINTER_INFO_2W) || !GetPrinterW(printer, 2, block.data(), size, &size))
        return fail(owner, "failed to GetPrinter");
    auto& information = *reinterpret_cast<PRINTER_INFO_2W*>(block.data());
    if (information.pDevMode == nullptr)
        return fail(owner, "failed to GetPrinter");
    copySettings(*information.pDevMode, chosen);
    if (DocumentPropertiesW(owner, printer, name, information.pDevMode, information.pDevMode,
                            DM_IN_BUFFER | DM_OUT_BUFFER) != IDOK)
        return fail(owner, "failed to set DocumentProperties");
    information.pSecurityDescriptor = nullptr; // stays as it is
    if (!SetPrinterW(printer, 2, block.data(), 0))
        return fail(owner, "failed to SetPrinter");
    return true;
}

bool storeChoice(HWND owner, const DEVNAMES& names, const DEVMODEW& chosen)
{
    std::wstring name = reinterpret_cast<const wchar_t*>(&names) + names.wDeviceOffset;
    PRINTER_DEFAULTSW access = {nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE printer = nullptr;
    if (!OpenPrinterW(name.data(), &printer, &access))
        return fail(owner, "failed to OpenPrinter");
    bool stored = storeInPrinter(owner, printer, name.data(), chosen);
    ClosePrinter(printer);
    return stored;
}

// Locks what the dialog returned for the time of the copy.
bool storeAnswer(HWND owner, const PAGESETUPDLGW& dialog)
{
    auto* names = static_cast<const DEVNAMES*>(GlobalLock(dialog.hDevNames));
    auto* chosen = static_cast<const DEVMODEW*>(GlobalLock(dialog.hDevMode));
    bool stored = names != nullptr && chosen != nullptr ? storeChoice(owner, *names, *chosen)
                                                        : fail(owner, "failed to GlobalLock");
    if (chosen != nullptr)
        GlobalUnlock(dialog.hDevMode);
    if (names != nullptr)
        GlobalUnlock(dialog.hDevNames);
    return stored;
}

} // namespace

bool pageSetUp(HWND owner)
{
    PAGESETUPDLGW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.Flags = PSD_DISABLEMARGINS; // the margins are one inch, always
    if (!PageSetupDlgW(&dialog))
        return false;
    bool stored = storeAnswer(owner, dialog);
    if ((dialog.hDevMode != nullptr && GlobalFree(dialog.hDevMode) != nullptr) ||
        (dialog.hDevNames != nullptr && GlobalFree(dialog.hDevNames) != nullptr))
        return fail(owner, "failed to page setup of printer");
    return stored;
}

} // namespace torvane
