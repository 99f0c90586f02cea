// The analysed file: a rewrite of its source in which the records below the threshold are gone, the fields that the
// analysis supplies are added, and laps and sessions are summed up anew from the kept records.
// Order, local types, architecture, unknown messages and developer fields are the source's.
#pragma once

#include "gps/gps_record.h"

#include "core/parameter_block.h"
#include "fit/fit_image.h"

#include <string>

namespace torvane {

// Sets destination.dataSize to the size of the rewritten data block. 0, fitInvalid, or fitSizeMismatch where no file or
// definition can be as large. `addedFields`: what AddedFields the source lacks.
// The rows are those of the source's record messages, in file order; a message without a row is dropped.
StatusCode planRewrittenSize(FitImage& destination, const FitImage& source, const GpsRecords& records,
                             uint32_t addedFields);

// Allocates and writes destination.data by the planned size. totalTimer in ms, for the activity message.
// 0, fitInvalid, or fitSizeMismatch when the block does not end on the planned size.
StatusCode writeAnalysedFit(FitImage& destination, const FitImage& source, const GpsRecords& records,
                            uint32_t addedFields, const OutputChoice& options, uint32_t totalTimer);

// The two, and header and CRC around the block: the file as it is saved.
StatusCode makeAnalysedFile(FitImage& destination, const FitImage& source, const GpsRecords& records,
                            uint32_t addedFields, const OutputChoice& options, uint32_t totalTimer);

// The file written as it is made, without a place in memory for the whole of it. Their codes; fitSaveFailed where it
// cannot be written or could not be read again. What stood there stays unless all went well.
StatusCode saveAnalysedFile(const std::string& path, const FitImage& source, const GpsRecords& records,
                            uint32_t addedFields, const OutputChoice& options, uint32_t totalTimer, Flush flush);

} // namespace torvane
