// What a text pane does beyond its control: its menu, its keys, and whether the user may type into it.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Of a pane just made: it is read-only until a text is opened for editing.
void attachPane(HWND pane);

// A label of no size in front of the control that is made next: a screen reader knows the control by it.
HWND nameNext(HWND window, const wchar_t* name);

bool isEditable(HWND pane);
void setEditable(HWND pane, bool editable);

// While this lives the program writes into a pane that the user may not.
class PaneWriting {
public:
    explicit PaneWriting(HWND written);
    ~PaneWriting();
    PaneWriting(const PaneWriting&) = delete;
    PaneWriting& operator=(const PaneWriting&) = delete;

private:
    HWND pane;
    bool locked;
};

} // namespace torvane
