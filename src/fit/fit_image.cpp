#include "fit/fit_image.h"

#include "core/files.h"
#include "fit/fit_bytes.h"
#include "fit/fit_crc.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace torvane {

namespace {

constexpr size_t crcSize = 2;
constexpr size_t dataSizeOffset = 4;
constexpr size_t signatureOffset = 8;
constexpr size_t headerCrcOffset = 12;
constexpr char signature[] = {'.', 'F', 'I', 'T'};

StatusCode codeOf(FileResult result)
{
    if (result == FileResult::ok)
        return fitOk;
    return result == FileResult::cannotOpen ? fitCannotOpen : fitInvalid;
}

// Any header size but 14 counts as 12.
size_t storedHeaderSize(uint8_t firstByte)
{
    return firstByte == modernHeaderSize ? modernHeaderSize : legacyHeaderSize;
}

// Takes apart the bytes of a file, which become the image's data block.
StatusCode splitFile(FitImage& image, std::vector<uint8_t>&& bytes)
{
    size_t headerSize = bytes.empty() ? legacyHeaderSize : storedHeaderSize(bytes[0]);
    size_t dataSize = static_cast<size_t>(image.dataSize);
    if (bytes.size() < headerSize + dataSize + crcSize)
        return fitWrongCrc;
    image.headerBytes = {};
    std::copy_n(bytes.begin(), headerSize, image.headerBytes.begin());
    image.protocolVersion = image.headerBytes[1];
    image.profileVersion = readUint16(image.headerBytes, 2, false);
    image.fileCrc = readUint16(bytes, headerSize + dataSize, false);
    bytes.resize(headerSize + dataSize);
    bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(headerSize));
    image.data = std::move(bytes);
    return fitCrc(image) == image.fileCrc ? fitOk : fitWrongCrc;
}

std::array<uint8_t, crcSize> crcBytes(uint16_t crc)
{
    std::array<uint8_t, crcSize> bytes;
    writeUint16Field(bytes, crc, false);
    return bytes;
}

} // namespace

int checkFileExtension(std::string_view path)
{
    constexpr std::string_view extensions[] = {"fit", "tcx", "gpx", "kml"};
    size_t dot = path.rfind('.');
    if (dot == std::string_view::npos)
        return 0;
    auto known = std::find(std::begin(extensions), std::end(extensions), path.substr(dot + 1));
    return known == std::end(extensions) ? 0 : static_cast<int>(known - std::begin(extensions)) + 1;
}

StatusCode checkFitSignature(FitImage& image)
{
    if (std::memcmp(image.headerBytes.data() + signatureOffset, signature, sizeof signature) != 0)
        return fitNotSupported;
    image.dataSize = static_cast<int32_t>(readUint32(image.headerBytes, dataSizeOffset, false));
    return fitOk;
}

StatusCode readFitHeader(FitImage& image, const std::string& path)
{
    if (checkFileExtension(path) != 1)
        return fitNotSupported;
    std::vector<uint8_t> start;
    StatusCode code = codeOf(readFileStart(path, modernHeaderSize, start));
    if (code != fitOk)
        return code;
    image.headerBytes = {};
    std::copy(start.begin(), start.end(), image.headerBytes.begin());
    return checkFitSignature(image);
}

StatusCode readFitFile(FitImage& image, const std::string& path)
{
    image.data.clear();
    if (image.dataSize < 0) // above 2 GiB
        return fitWrongCrc;
    std::vector<uint8_t> bytes;
    size_t most = modernHeaderSize + static_cast<size_t>(image.dataSize) + crcSize;
    StatusCode code = codeOf(readFileStart(path, most, bytes));
    if (code == fitOk)
        code = splitFile(image, std::move(bytes));
    if (code != fitOk)
        std::vector<uint8_t>().swap(image.data);
    return code;
}

StatusCode loadFitImage(FitImage& image, const std::string& path)
{
    StatusCode code = readFitHeader(image, path);
    return code != fitOk ? code : readFitFile(image, path);
}

StatusCode takeFitImage(FitImage& image, std::vector<uint8_t>&& bytes)
{
    image = {};
    std::copy_n(bytes.begin(), std::min<size_t>(bytes.size(), modernHeaderSize), image.headerBytes.begin());
    if (StatusCode code = checkFitSignature(image))
        return code;
    return image.dataSize < 0 ? fitWrongCrc : splitFile(image, std::move(bytes));
}

StatusCode buildFitHeader(FitImage& destination, const FitImage& source, int32_t form)
{
    std::array<uint8_t, modernHeaderSize>& header = destination.headerBytes;
    std::copy_n(source.headerBytes.begin(), std::min<size_t>(source.headerBytes[0], header.size()), header.begin());
    if (form == formLegacy)
        header[0] = legacyHeaderSize;
    else if (form == formModern)
        header[0] = modernHeaderSize;
    writeUint32Field(std::span(header).subspan(dataSizeOffset, 4), static_cast<uint32_t>(destination.dataSize), false);
    uint16_t crc = extendFitCrc(0, std::span(header).first(headerCrcOffset));
    writeUint16Field(std::span(header).subspan(headerCrcOffset, 2), crc, false);
    return fitOk;
}

std::span<const uint8_t> headerOf(const FitImage& image)
{
    const std::span<const uint8_t> header = image.headerBytes;
    return header.first(std::min<size_t>(header[0], header.size()));
}

uint16_t fitCrc(const FitImage& image)
{
    return fitCrc(image.headerBytes, image.data);
}

std::vector<uint8_t> fitFileBytes(const FitImage& image)
{
    const std::span<const uint8_t> header = headerOf(image);
    const std::array<uint8_t, crcSize> crc = crcBytes(image.fileCrc);
    std::vector<uint8_t> bytes;
    bytes.reserve(header.size() + image.data.size() + crc.size());
    for (const std::span<const uint8_t> piece :
         {header, std::span<const uint8_t>(image.data), std::span<const uint8_t>(crc)})
        bytes.insert(bytes.end(), piece.begin(), piece.end());
    return bytes;
}

int writeFitFile(const FitImage& image, const std::string& path, Flush flush)
{
    return replaceFile(path, {headerOf(image), image.data, crcBytes(image.fileCrc)}, flush) == FileResult::ok ? 0 : 1;
}

int writeFitFile(const FitImage& image, const std::string& path, const std::function<bool(const WritePiece&)>& make,
                 Flush flush)
{
    FileResult result = replaceFile(
        path,
        [&](const WritePiece& write) {
            uint16_t crc = extendFitCrc(0, headerOf(image));
            WritePiece writeData = [&](std::span<const uint8_t> piece) {
                crc = extendFitCrc(crc, piece);
                return write(piece);
            };
            return write(headerOf(image)) && make(writeData) && write(crcBytes(crc));
        },
        flush);
    return result == FileResult::ok ? 0 : 1;
}

} // namespace torvane
