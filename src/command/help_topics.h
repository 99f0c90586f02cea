// Where the manual tells of a command or a dialog.
#pragma once

#include <string_view>

namespace torvane {

// The anchor of a heading of the manual; empty: its beginning. 0 is no command.
std::string_view manualAnchor(int commandId);
// Of a form: a dialog's command, a page's sheet, what a button of another opens as that.
std::string_view manualAnchorOfForm(int formId);

} // namespace torvane
