// What every operation on recorded rides and every FIT tool answers. Only the reports turn a code into words.
#pragma once

#include "core/result_status.h"

namespace torvane {

using StatusCode = ResultStatus;

constexpr StatusCode fitOk = 0;
constexpr StatusCode fitNotSupported = 1;    // extension is not "fit", or no ".FIT" signature
constexpr StatusCode fitCannotOpen = 2;      // missing, a folder, or no right to read it
constexpr StatusCode fitInvalid = 4;         // read failed, or the messages do not end where the data block ends
constexpr StatusCode fitWrongCrc = 8;        // file CRC differs, or the file is shorter than its header claims
constexpr StatusCode fitNotLoaded = 0x10;    // a command needs a loaded file
constexpr StatusCode fitNoSector = 0x20;     // nothing left above the threshold speed
constexpr StatusCode fitSizeMismatch = 0x40; // a rewritten data block has not the planned size
constexpr StatusCode fitSaveFailed = 0x80;   // the analysed file could not be written
constexpr StatusCode fitCombineFailed = 0x100;
constexpr StatusCode fitConvertFailed = 0x200;
constexpr StatusCode fitAddFailed = 0x400;
constexpr StatusCode fitDivideFailed = 0x800;
constexpr StatusCode fitPrepareFailed = 0x1000;
constexpr StatusCode fitNotComparable = 0x2000; // two rides without a common second of power
constexpr StatusCode fitTooLarge = 0x4000;      // what would be made of a file is beyond size_limits.h

constexpr StatusCode fitTooShort = 0x10000; // a ride without five minutes in motion
// A document of tracks that holds no ride.
constexpr StatusCode fitPlanned = 0x4100;       // a route or a course: nobody rode it
constexpr StatusCode fitWithoutPoints = 0x4200; // well-formed, but no point of a track
constexpr StatusCode fitWithoutTimes = 0x4400;  // no point has a time
constexpr StatusCode fitXmlBroken = 0x4800;     // not well-formed, cut off, or nested too deep
constexpr StatusCode fitDoctype = 0x5000;       // declares a document type, which no track file needs

constexpr StatusCode fitLoaded = 0x7FF0;
constexpr StatusCode fitExpressed = 0x7FF1;
constexpr StatusCode fitPredictionSaved = 0x7FF2;
constexpr StatusCode fitCombined = 0x7FF3;
constexpr StatusCode fitConverted = 0x7FF4;
constexpr StatusCode fitAdded = 0x7FF5;
constexpr StatusCode fitDivided = 0x7FF6;
constexpr StatusCode fitPrepared = 0x7FF7;

// A file that cannot be treated as one ride: 0x8000 with one or two of the reasons.
constexpr StatusCode fitIncoherent = 0x8000;
constexpr StatusCode fitSessionSportsDiffer = 0x8001;
constexpr StatusCode fitLapSportsDiffer = 0x8002;
constexpr StatusCode fitRecordFieldsDiffer = 0x8004;

} // namespace torvane
