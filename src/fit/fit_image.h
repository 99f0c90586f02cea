// One FIT file in memory: its header and the raw bytes of its data block. Reading, verifying, writing.
// Knows nothing of messages (fit_walk.h).
#pragma once

#include "core/files.h"
#include "core/fit_choices.h"
#include "core/progress.h"
#include "fit/fit_codes.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace torvane {

// Bytes of a header: 0 its size (12 or 14), 1 protocol version, 2 to 3 profile version, 4 to 7 size of the data block,
// 8 to 11 ".FIT", 12 to 13 header CRC. Numbers are little-endian.
constexpr int legacyHeaderSize = 12; // without the header CRC
constexpr int modernHeaderSize = 14;

// In bytes: no header can claim more.
constexpr size_t largestFitFile = modernHeaderSize + size_t{0x7FFFFFFF} + 2;

struct FitImage {
    int32_t dataSize = 0; // of the data block; of a destination: as planned
    std::array<uint8_t, modernHeaderSize> headerBytes = {};
    std::vector<uint8_t> data; // the data block
    uint16_t fileCrc = 0;      // as read, or as computed for a destination
    uint8_t protocolVersion = 0;
    uint16_t profileVersion = 0;
    Progress* progress = nullptr; // moved by every walk over the data
};

// What stands behind the last "." of a path, in exact case: 1 "fit", 2 "tcx", 3 "gpx", 4 "kml", 0 anything else.
int checkFileExtension(std::string_view path);

// fitNotSupported without the signature; else sets dataSize from the header and returns 0.
StatusCode checkFitSignature(FitImage& image);

// Checks extension and signature and makes header and dataSize known. Leaves data alone.
StatusCode readFitHeader(FitImage& image, const std::string& path);

// Reads header, data block and CRC of a file whose dataSize readFitHeader has found, and verifies the file CRC.
// Allocates data itself, and only when the file holds as much as the header claims; empties it on failure.
// The header CRC of a 14-byte header is never verified. Codes: 0, fitCannotOpen, fitInvalid, fitWrongCrc.
StatusCode readFitFile(FitImage& image, const std::string& path);

// readFitHeader, then readFitFile.
StatusCode loadFitImage(FitImage& image, const std::string& path);

// The same of a file's bytes, which become the image's data. Nothing is asked of a name.
StatusCode takeFitImage(FitImage& image, std::vector<uint8_t>&& bytes);

// Header of a rewritten file: the source's, with the form asked for, the destination's dataSize (to be set before) and
// its own CRC. Returns 0.
StatusCode buildFitHeader(FitImage& destination, const FitImage& source, int32_t form);

// The form that a tool's format choice asks for.
constexpr int32_t headerForm(int32_t convertEnabled, int32_t fitFormat)
{
    if (convertEnabled == 0)
        return formOfSource;
    return fitFormat != formLegacy ? formModern : formLegacy;
}

// CRC of header and data, as fileCrc is to hold it.
uint16_t fitCrc(const FitImage& image);

// The header as it stands in the file.
std::span<const uint8_t> headerOf(const FitImage& image);

// The bytes of the file, header and CRC included.
std::vector<uint8_t> fitFileBytes(const FitImage& image);

// Creates or replaces the file, as a whole or not at all. 0, or 1 when that failed.
int writeFitFile(const FitImage& image, const std::string& path, Flush flush = Flush::each);

// The same of a file with this image's header whose data block `make` hands over in pieces, and false to let the old
// file stand.
int writeFitFile(const FitImage& image, const std::string& path, const std::function<bool(const WritePiece&)>& make,
                 Flush flush);

} // namespace torvane
