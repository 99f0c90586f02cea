// Moves text between the controls of a dialog or page and a FormState, and enables the controls, by the rows alone.
// Knows no form in particular and no limit.
#pragma once

#include "forms/form.h"
#include "ui/win32.h"

#include <string>

namespace torvane {

// A form on screen.
struct FormWindow {
    HWND window = nullptr;
    FormState state;
    bool refreshing = false; // texts that the program sets are not the user's
    std::wstring hint = {};  // as it is shown
};

// After openForm: attaches the up-down controls, bounds the edit boxes, and shows everything.
void initializeControls(FormWindow& form);
// Shows every row anew; the edit box that the user is typing in, if any, is left alone.
void refreshControls(FormWindow& form, int typedId = 0);

// The present row that a control belongs to, as the row's own control, one of its radio buttons, or what stands beside
// it; null for none.
const Row* rowOfControl(const FormWindow& form, int id);

// Puts the keyboard into the entry that the last confirmation refused, its text selected.
void focusRefused(const FormWindow& form);

// A notification of a control, and a press of an up-down control. True when it changed the form's state.
bool handleControl(FormWindow& form, int id, int code);
bool handleSpin(FormWindow& form, const NMUPDOWN& press);

} // namespace torvane
