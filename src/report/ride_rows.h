// The tables of the commands as rows for programs.
#pragma once

#include "core/row_writer.h"
#include "gps/gps_record.h"
#include "gps/ride_comparison.h"
#include "report/fit_report.h"
#include "ride/ride_records.h"

namespace torvane {

// The steps of a run or the sectors of an intermittent braking; of what has neither, the points of its curves, where
// there are any.
void writeRideRows(RowWriter& rows, const RideRun& ride, const GraphSeries* curves);

// Each record of a ride that is in a sector. The columns do not depend on what the ride has.
void writeRecordRows(RowWriter& rows, const ReportedRide& ride, const GpsRecords& records, uint32_t predicted);

void writeComparisonRows(RowWriter& rows, const RideComparison& comparison);

} // namespace torvane
