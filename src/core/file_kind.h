// What a file is, told by its first bytes: so that nothing is written over a file of another kind, or read as one.
// Knows the kinds that this program writes; whatever else there is, is unknown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace torvane {

enum class FileKind {
    nothing, // no such path
    folder,
    device,
    pipe,
    unreadable, // it is there, and that is all there is to know
    empty,      // a file without a byte, of any kind
    fit,        // by its signature, whatever stands behind it
    profile,    // by format and size
    parameters, // by its size; older versions wrote less, which tells nothing
    svg,        // by its first element
    html,       // likewise
    csv,        // a text; these have no signature, so its name decides
    unknown,
    count
};

// With its article, for messages: "a FIT file".
std::string_view kindName(FileKind kind);

// Of the file at a path, over links.
FileKind fileKind(const std::string& path);

// Of a file whose first bytes are these: kindBytes of them, or all that it has.
constexpr size_t kindBytes = 4096;
FileKind kindOfContent(std::span<const uint8_t> start, std::string_view path);

} // namespace torvane
