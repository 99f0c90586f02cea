// The one dialog procedure behind every modal form.
#pragma once

#include "forms/form.h"
#include "ui/win32.h"

namespace torvane {

// Runs a form on the session's blocks, for the settings of a ride; true when its confirming button ended it, and
// the working block then holds its values.
bool runFormDialog(HWND owner, const Form& form, const LoadedRide& ride);

} // namespace torvane
