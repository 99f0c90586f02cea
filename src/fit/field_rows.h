// The fields of a FIT file one by one, as rows: what the field dump writes, for programs.
#pragma once

#include "core/row_writer.h"
#include "fit/fit_codes.h"

#include <string>

namespace torvane {

// A row for each field of each data message, with the numbers as they are stored; a list of numbers as a text of them,
// an "invalid" marker as an empty cell. 0, or a code of loading.
StatusCode writeFieldRows(RowWriter& rows, const std::string& path);

} // namespace torvane
