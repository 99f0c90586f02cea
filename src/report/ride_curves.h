// The curves of a recorded ride for a graph: what its records hold and what was predicted, along the distance or the
// time, with the places for a map.
#pragma once

#include "gps/gps_record.h"
#include "gps/ridden_rows.h"
#include "report/fit_report.h"
#include "ride/graph_series.h"

#include <cstdint>
#include <memory>
#include <span>

namespace torvane {

// What curves are told from. They keep its owner, and that keeps these as they are, with the brakes of the ride.
struct CurveRows {
    std::shared_ptr<const void> owner; // null: the caller sees to it
    std::span<const GpsRecord> records;
    std::span<const MeasuredRow> measured = {}; // beside the prediction; may be empty
};

// Of the kept rows, told anew whenever they are asked for: of a long ride a table of them would be as large as three
// of its files. Series that the ride does not have are left out; where a row has no figure it is no number.
// `predicted` as in reportFields. With places, where the file has them, for a map.
GraphSeries rideCurves(const ReportedRide& ride, const CurveRows& rows, uint32_t predicted, bool places);

} // namespace torvane
