// The one dialog procedure behind every modal form.
#pragma once

#include "forms/form.h"
#include "ui/win32.h"

namespace torvane {

// Runs a form on savedBlock and workingBlock, for the settings of a ride; true when its confirming button ended it, and
// workingBlock then holds its values.
bool runFormDialog(HWND owner, const Form& form, const LoadedRide& ride);

} // namespace torvane
