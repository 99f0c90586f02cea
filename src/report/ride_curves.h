// The curves of a recorded ride for a graph: what its records hold and what was predicted, along the distance or the
// time, with the places for a map.
#pragma once

#include "gps/gps_record.h"
#include "gps/ridden_rows.h"
#include "report/fit_report.h"
#include "ride/graph_series.h"

#include <cstdint>
#include <span>

namespace torvane {

// Of the kept rows. Series that the ride does not have are left out; where a row has no figure it is no number.
// `predicted` as in reportFields; `measured`, rising by time, stands beside the prediction and may be empty.
GraphSeries rideCurves(const ReportedRide& ride, const GpsRecords& records, uint32_t predicted,
                       std::span<const MeasuredRow> measured = {});

} // namespace torvane
