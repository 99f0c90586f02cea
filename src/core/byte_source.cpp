#include "core/byte_source.h"

#include "core/files.h"

#include <zlib.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace torvane {

namespace {

SourceFault faultOf(FileResult result)
{
    switch (result) {
    case FileResult::ok:
        return SourceFault::none;
    case FileResult::cannotOpen:
        return SourceFault::cannotOpen;
    default:
        return SourceFault::readFailed;
    }
}

// zlib's state, ended on every way out.
class Unpacking {
public:
    Unpacking(NextPiece packedPieces, size_t mostBytes) : packed(std::move(packedPieces)), limit(mostBytes) {}
    Unpacking(const Unpacking&) = delete;
    Unpacking& operator=(const Unpacking&) = delete;
    ~Unpacking()
    {
        if (begun)
            inflateEnd(&stream);
    }

    SourceFault next(std::vector<uint8_t>& piece)
    {
        piece.clear();
        if (fault == SourceFault::none)
            fault = unpackNext(piece);
        if (given + piece.size() > limit) {
            piece.resize(limit - given);
            fault = SourceFault::tooLarge;
        }
        given += piece.size();
        return piece.empty() ? fault : SourceFault::none; // a fault is told behind what could be had
    }

private:
    SourceFault unpackNext(std::vector<uint8_t>& piece)
    {
        if (!looked)
            if (SourceFault first = look(); first != SourceFault::none)
                return first;
        if (!begun)
            return passOn(piece);
        while (piece.empty() && !ended) {
            if (SourceFault more = refill(); more != SourceFault::none)
                return more;
            if (SourceFault unpackFault = inflateInto(piece); unpackFault != SourceFault::none)
                return unpackFault;
        }
        return SourceFault::none;
    }

    // Whether it begins as gzip does.
    SourceFault look()
    {
        looked = true;
        if (SourceFault first = packed(input); first != SourceFault::none)
            return first;
        constexpr uint8_t mark[] = {0x1F, 0x8B};
        if (input.size() < std::size(mark) || !std::equal(std::begin(mark), std::end(mark), input.begin()))
            return SourceFault::none;
        constexpr int windowBits = 15, gzipAlone = 16;
        if (inflateInit2(&stream, windowBits + gzipAlone) != Z_OK)
            return SourceFault::readFailed;
        begun = true;
        return SourceFault::none;
    }

    SourceFault passOn(std::vector<uint8_t>& piece)
    {
        piece = std::exchange(input, {});
        return piece.empty() ? packed(piece) : SourceFault::none;
    }

    SourceFault refill()
    {
        if (stream.avail_in != 0)
            return SourceFault::none;
        if (!lookedAt)
            if (SourceFault more = packed(input); more != SourceFault::none)
                return more;
        lookedAt = false;
        stream.next_in = input.data();
        stream.avail_in = static_cast<uInt>(input.size());
        if (!input.empty())
            return SourceFault::none;
        ended = true;
        return inMember ? SourceFault::damaged : SourceFault::none;
    }

    SourceFault inflateInto(std::vector<uint8_t>& piece)
    {
        if (ended)
            return SourceFault::none;
        piece.resize(pieceSize);
        stream.next_out = piece.data();
        stream.avail_out = static_cast<uInt>(piece.size());
        bool isFirst = members == 0;
        inMember = true;
        int result = inflate(&stream, Z_NO_FLUSH);
        piece.resize(piece.size() - stream.avail_out);
        if (result == Z_STREAM_END) {
            inMember = false;
            ++members;
            return inflateReset(&stream) == Z_OK ? SourceFault::none : SourceFault::damaged;
        }
        if (result == Z_DATA_ERROR && !isFirst && stream.total_out == 0)
            ended = true; // what stands behind the last member and is none, does not count
        return ended || result == Z_OK || result == Z_BUF_ERROR ? SourceFault::none : SourceFault::damaged;
    }

    NextPiece packed;
    size_t limit, given = 0;
    std::vector<uint8_t> input;
    z_stream stream = {};
    int members = 0;
    bool looked = false, begun = false, lookedAt = true, inMember = false, ended = false;
    SourceFault fault = SourceFault::none;
};

} // namespace

NextPiece piecesOfFile(const std::string& path)
{
    return [path, from = size_t{0}](std::vector<uint8_t>& piece) mutable {
        SourceFault fault = faultOf(readFilePart(path, from, pieceSize, piece));
        from += piece.size();
        return fault;
    };
}

NextPiece piecesOfMemory(std::span<const uint8_t> bytes)
{
    return [rest = bytes](std::vector<uint8_t>& piece) mutable {
        std::span<const uint8_t> part = rest.first(std::min(rest.size(), pieceSize));
        piece.assign(part.begin(), part.end());
        rest = rest.subspan(part.size());
        return SourceFault::none;
    };
}

NextPiece unpacked(NextPiece packed, size_t limit)
{
    return [unpacking = std::make_shared<Unpacking>(std::move(packed), limit)](std::vector<uint8_t>& piece) {
        return unpacking->next(piece);
    };
}

} // namespace torvane
