#include "gps/fit_parts.h"

#include "fit/base_type.h"
#include "fit/fit_bytes.h"
#include "fit/fit_crc.h"
#include "fit/fit_types.h"
#include "fit/fit_walk.h"
#include "fit/message_fields.h"

#include <algorithm>
#include <span>
#include <utility>

namespace torvane {

namespace {

using Bytes = std::span<const uint8_t>;

constexpr size_t crcSize = 2;

// One file of several, without its header.
struct Part {
    Bytes block;
    uint32_t firstTime = UINT32_MAX; // of its records
    uint8_t type = 0;
    bool hasRecords = false;
};

// A header and what it claims.
struct Claim {
    FitImage image = {}; // without data
    size_t headerSize = 0;
    size_t dataSize = 0;
};

bool readClaim(Bytes rest, Claim& claim)
{
    if (rest.size() < legacyHeaderSize)
        return false;
    claim = {};
    std::copy_n(rest.begin(), std::min<size_t>(rest.size(), modernHeaderSize), claim.image.headerBytes.begin());
    if (checkFitSignature(claim.image) != fitOk)
        return false;
    claim.headerSize = rest[0] == modernHeaderSize ? modernHeaderSize : legacyHeaderSize;
    claim.image.headerBytes[0] = static_cast<uint8_t>(claim.headerSize); // whatever it claims
    claim.dataSize = static_cast<uint32_t>(claim.image.dataSize);
    return claim.headerSize <= rest.size();
}

FitWalk walkOf(Bytes block)
{
    FitWalk walk;
    walk.block = block;
    walk.compressedFirst = true;
    return walk;
}

// Up to the first message that ends beyond the block or has no definition: from there on nothing is sure.
size_t readableLength(Bytes block)
{
    FitWalk walk = walkOf(block);
    FitMessage message;
    size_t end = 0;
    while (nextMessage(walk, message) == WalkStep::message && message.definition->defined())
        end = walk.position;
    return end;
}

// A device that writes into room made before leaves zeros behind its last message.
Bytes withoutEmptyRoom(Bytes block)
{
    constexpr size_t leastRoom = 256;
    size_t used = block.size();
    while (used > 0 && block[used - 1] == 0)
        --used;
    return block.size() - used < leastRoom ? block : block.first(used);
}

bool isSound(Bytes rest, const Claim& claim)
{
    size_t end = claim.headerSize + claim.dataSize;
    if (end + crcSize > rest.size())
        return false;
    return fitCrc(rest.first(claim.headerSize), rest.subspan(claim.headerSize, claim.dataSize)) ==
           readUint16(rest, end, false);
}

// All that can be read behind a header whose claim does not hold.
Bytes salvage(Bytes rest, const Claim& claim, SourceFindings& findings)
{
    Bytes behind = withoutEmptyRoom(rest.subspan(claim.headerSize));
    size_t readable = readableLength(behind);
    bool goesOn = claim.dataSize == 0 || readable > claim.dataSize;
    (claim.dataSize > behind.size() ? findings.cut : goesOn ? findings.neverClosed : findings.crcWrong) = true;
    size_t lost = behind.size() - readable;
    if (lost > crcSize) // else they are the checksum
        findings.bytesLost += lost;
    return behind.first(readable);
}

// The block of the first file in `rest`, which goes on behind it.
Bytes takePart(Bytes& rest, const Claim& claim, SourceFindings& findings)
{
    size_t whole = claim.headerSize + claim.dataSize + crcSize;
    Bytes block = rest.subspan(claim.headerSize, std::min(claim.dataSize, rest.size() - claim.headerSize));
    bool sound = isSound(rest, claim);
    if (!sound && claim.dataSize != 0 && whole <= rest.size() && readableLength(block) == block.size())
        sound = findings.crcWrong = true;
    if (!sound)
        block = salvage(rest, claim, findings);
    rest = sound ? rest.subspan(whole) : Bytes{};
    return block;
}

Part partOf(Bytes block)
{
    Part part = {block};
    FitWalk walk = walkOf(block);
    FitMessage message;
    while (part.firstTime == UINT32_MAX && nextMessage(walk, message) == WalkStep::message) {
        if (message.isData(messageFileId) && part.type == 0)
            part.type = fileTypeOf(message).value_or(0);
        if (!message.isData(messageRecord))
            continue;
        part.hasRecords = true;
        if (std::optional<int64_t> time = readValue(message.payload, findNumber(message, timestampField)))
            part.firstTime = static_cast<uint32_t>(*time);
    }
    return part;
}

void leaveOutOthers(std::vector<Part>& parts)
{
    auto isActivity = [](const Part& part) { return part.type == fileTypeActivity; };
    if (std::ranges::any_of(parts, isActivity))
        std::erase_if(parts, [&](const Part& part) { return !isActivity(part); });
    std::ranges::stable_sort(parts, {}, &Part::firstTime);
}

void join(const std::vector<Part>& parts, FitImage& image)
{
    for (const Part& part : parts)
        image.data.insert(image.data.end(), part.block.begin(), part.block.end());
    image.dataSize = static_cast<int32_t>(image.data.size());
    image.protocolVersion = image.headerBytes[1];
    image.profileVersion = readUint16(image.headerBytes, 2, false);
    image.fileCrc = fitCrc(image);
}

} // namespace

StatusCode takeFitParts(FitImage& image, std::vector<uint8_t>&& bytes, SourceFindings& findings)
{
    Claim claim;
    Bytes rest = bytes;
    std::vector<Part> parts;
    while (readClaim(rest, claim)) {
        if (parts.empty())
            image = claim.image;
        parts.push_back(partOf(takePart(rest, claim, findings)));
    }
    bool broken = findings.cut || findings.neverClosed || findings.crcWrong;
    bool readable = std::ranges::any_of(parts, &Part::hasRecords);
    if (parts.size() < 2 && (!broken || !readable))
        return takeFitImage(image, std::move(bytes));
    findings.parts = static_cast<uint32_t>(parts.size());
    leaveOutOthers(parts);
    join(parts, image);
    return fitOk;
}

} // namespace torvane
