// What an entry means, beside a mouse pointer that rests on it: the same words as in help and manual.
#pragma once

#include "ui/form_controls.h"

namespace torvane {

// Once the form's controls are there. What tells the hints goes with the dialog.
void attachHints(const FormWindow& form);

// Fills in the hint that the system asks for by TTN_GETDISPINFO.
void tellHint(FormWindow& form, NMTTDISPINFOW& asked);

} // namespace torvane
