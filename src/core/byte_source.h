// Bytes that come one piece after the other: a file that need not be in memory as a whole, unpacked on its way where it
// is packed, and turned into UTF-8 where it is a text in another encoding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace torvane {

enum class SourceFault {
    none,
    cannotOpen, // missing, a folder, a device, a pipe, or not readable
    readFailed, // opened, but the bytes could not be had
    damaged,    // packed, but its packing is broken or cut off
    tooLarge,   // beyond the limit when unpacked
};

// Replaces `piece` by the next bytes; an empty one is the end, or where there is a fault the end of what could be had.
using NextPiece = std::function<SourceFault(std::vector<uint8_t>& piece)>;

constexpr size_t pieceSize = 256 * 1024; // bytes, of a file

NextPiece piecesOfFile(const std::string& path);
NextPiece piecesOfMemory(std::span<const uint8_t> bytes); // which have to outlive it

// What comes out of gzip, of one or several members, and anything else as it is. More than `limit` bytes are tooLarge.
NextPiece unpacked(NextPiece packed, size_t limit);

// A text of an XML document as UTF-8, without a byte order mark and without its declaration. By its mark it may be
// UTF-16, by its declaration ISO 8859-1 or Windows-1252; everything else goes through as it is. What is no character
// becomes U+FFFD.
NextPiece asUtf8(NextPiece text);

} // namespace torvane
