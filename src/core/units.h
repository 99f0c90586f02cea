// Units that users read against those of the records.
#pragma once

namespace torvane {

constexpr double kphPerMps = 3.6;

} // namespace torvane
