#include "gps/ride_source.h"

#include "core/file_kind.h"
#include "core/files.h"
#include "gps/fit_parts.h"
#include "gps/track_import.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace torvane {

namespace {

constexpr size_t mostUnpacked = size_t{1} << 30; // bytes

enum class Content { other, fit, xml };

bool startsAsFit(std::span<const uint8_t> start)
{
    constexpr char signature[] = {'.', 'F', 'I', 'T'};
    constexpr size_t place = 8;
    return start.size() >= place + sizeof signature &&
           std::memcmp(start.data() + place, signature, sizeof signature) == 0;
}

// Behind blanks and the marks of encodings, XML begins with "<".
bool startsAsXml(std::span<const uint8_t> start)
{
    constexpr uint8_t skipped[] = {0xEF, 0xBB, 0xBF, 0xFE, 0xFF, 0, ' ', '\t', '\r', '\n'};
    const auto* first = std::ranges::find_if(start.data(), start.data() + start.size(), [&](uint8_t byte) {
        return std::ranges::find(skipped, byte) == std::end(skipped);
    });
    return first != start.data() + start.size() && *first == '<';
}

StatusCode codeOf(SourceFault fault)
{
    switch (fault) {
    case SourceFault::none:
        return fitOk;
    case SourceFault::cannotOpen:
        return fitCannotOpen;
    case SourceFault::tooLarge:
        return fitTooLarge;
    default:
        return fitInvalid;
    }
}

StatusCode codeOf(const TrackReading& reading)
{
    switch (reading.result) {
    case TrackResult::ok:
        return fitOk;
    case TrackResult::empty:
        return fitWithoutPoints;
    case TrackResult::sourceFault:
        return codeOf(reading.fault);
    case TrackResult::otherRoot:
    case TrackResult::noParser:
        return fitNotSupported;
    case TrackResult::doctype:
        return fitDoctype;
    default:
        return fitXmlBroken;
    }
}

StatusCode loadTracks(NextPiece pieces, RideSource& source)
{
    TrackReading reading = readTracks(std::move(pieces));
    source.isTrack = true;
    source.tracks = std::move(reading.tracks);
    return codeOf(reading);
}

StatusCode loadPacked(FitImage& image, const NextPiece& pieces, SourceFindings& findings)
{
    std::vector<uint8_t> bytes, piece;
    do {
        if (StatusCode code = codeOf(pieces(piece)))
            return code;
        bytes.insert(bytes.end(), piece.begin(), piece.end());
    } while (!piece.empty());
    return takeFitParts(image, std::move(bytes), findings);
}

// Read at once.
StatusCode loadPlainFit(FitImage& image, const std::string& path, SourceFindings& findings)
{
    std::vector<uint8_t> bytes;
    if (readFileStart(path, largestFitFile, bytes) != FileResult::ok)
        return fitCannotOpen;
    return takeFitParts(image, std::move(bytes), findings);
}

} // namespace

StatusCode openRideSource(const std::string& path, RideSource& source)
{
    std::vector<uint8_t> start;
    if (readFileStart(path, kindBytes, start) == FileResult::ok && startsAsFit(start))
        return loadPlainFit(source.image, path, source.findings);
    NextPiece look = unpacked(piecesOfFile(path), mostUnpacked);
    if (StatusCode code = codeOf(look(start)))
        return code;
    NextPiece pieces = unpacked(piecesOfFile(path), mostUnpacked);
    if (startsAsFit(start))
        return loadPacked(source.image, pieces, source.findings);
    if (startsAsXml(start))
        return loadTracks(std::move(pieces), source);
    return loadFitImage(source.image, path);
}

StatusCode loadRideSource(FitImage& image, const std::string& path, uint8_t sport, SourceFindings& findings)
{
    RideSource source;
    StatusCode code = openRideSource(path, source);
    findings = source.findings;
    if (code == fitOk && source.isTrack)
        return source.tracks.planned ? fitPlanned : importTracks(source.tracks, sport, image, findings);
    image = std::move(source.image);
    return code;
}

} // namespace torvane
