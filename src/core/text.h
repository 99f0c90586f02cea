// Text: printf-style formatting with C99 semantics on every platform, and names out of paths.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace torvane {

#if defined(__MINGW32__)
#define TORVANE_PRINTF(text, first) __attribute__((format(gnu_printf, text, first)))
#else
#define TORVANE_PRINTF(text, first) __attribute__((format(printf, text, first)))
#endif

// The one place where numbers become text, so that both front ends print the same characters. Lines of any length.
TORVANE_PRINTF(1, 2) std::string formatText(const char* format, ...);
TORVANE_PRINTF(2, 3) void appendFormat(std::string& text, const char* format, ...);

// For tables of many rows: the characters of "%*d" and "%*.*f", without a format to read. Width and decimals: 0 or
// above.
void appendInteger(std::string& text, int64_t value, int width = 0);
void appendFixed(std::string& text, double value, int width, int decimals);

// Writes the characters of "%d" into memory that has room for longestInt32 and may be overwritten as far. Returns their
// end.
constexpr int longestInt32 = 11;
char* writeInt32(char* to, int32_t value);

// The letters A to Z as a to z.
std::string asciiLower(std::string_view text);

#ifdef _WIN32
constexpr char pathSeparator = '\\';
#else
constexpr char pathSeparator = '/';
#endif
// Ending in a separator.
std::string asFolder(const std::string& path);

// Index of the last separator of a path, "\" on Windows and "/" elsewhere; npos where there is none.
size_t lastSeparator(std::string_view path);

// What stands behind the last separator, fit to be shown. A path without one loses its first character: reports have
// always named files by full paths, and the scan starts its result one behind the place where it stopped.
std::string reportedName(std::string_view path);

// What stands behind the last separator, or all of a path without one.
std::string_view fileName(std::string_view path);
// The same, fit to be shown.
std::string shownFileName(std::string_view path);

// As text of an XML document, which knows no control characters.
std::string xmlEscaped(std::string_view text);

// Where to cut a long text for a receiver that takes at most limit bytes at a time: behind the last line end within the
// limit, else between two characters of UTF-8. At least one byte of a text that is not empty.
size_t pieceLength(std::string_view text, size_t limit);

} // namespace torvane
