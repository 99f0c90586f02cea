#include "core/file_kind.h"

#include "core/files.h"
#include "core/parameter_block.h"
#include "core/parameter_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <vector>

namespace torvane {

namespace {

constexpr std::array<std::string_view, static_cast<size_t>(FileKind::count)> kindNames = {"nothing",
                                                                                          "a folder",
                                                                                          "a device",
                                                                                          "a pipe",
                                                                                          "an unreadable file",
                                                                                          "an empty file",
                                                                                          "a FIT file",
                                                                                          "a profile file",
                                                                                          "a parameter file",
                                                                                          "an SVG picture",
                                                                                          "an HTML page",
                                                                                          "a CSV table",
                                                                                          "a file of another kind"};
static_assert(!kindNames.back().empty());

static_assert(sizeof(ParameterBlock) < kindBytes && profileFileSize < kindBytes, "told by their sizes");

bool isFit(std::span<const uint8_t> start)
{
    constexpr size_t at = 8;
    return start.size() >= at + 4 && std::memcmp(start.data() + at, ".FIT", 4) == 0;
}

bool isProfile(std::span<const uint8_t> start)
{
    int32_t format = 0;
    if (start.size() != profileFileSize)
        return false;
    std::memcpy(&format, start.data(), sizeof format);
    return format == profileFormat;
}

// Without the bytes that no text has.
bool isText(std::span<const uint8_t> start)
{
    constexpr std::string_view breaks = "\t\n\f\r";
    return std::ranges::all_of(
        start, [&](uint8_t byte) { return byte >= ' ' || breaks.find(static_cast<char>(byte)) != breaks.npos; });
}

std::string_view behind(std::string_view text, std::string_view end)
{
    size_t found = text.find(end);
    return found == text.npos ? std::string_view() : text.substr(found + end.size());
}

// What stands behind the byte order mark, declarations and comments in front of the first element of an XML text.
std::string_view firstElement(std::string_view text)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.starts_with(mark))
        text.remove_prefix(mark.size());
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
        if (text.starts_with("<!--"))
            text = behind(text, "-->");
        else if (text.starts_with("<?") || text.starts_with("<!"))
            text = behind(text, ">");
        else
            return text;
    }
}

struct TextKind {
    std::string_view ending;
    FileKind kind;
};

constexpr TextKind textKinds[] = {{".csv", FileKind::csv}, {".tsv", FileKind::csv}, {".ndjson", FileKind::csv}};

bool endsWith(std::string_view path, std::string_view ending)
{
    auto alike = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; };
    return path.size() >= ending.size() && std::ranges::equal(path.substr(path.size() - ending.size()), ending, alike);
}

FileKind kindOfText(std::string_view text, std::string_view path)
{
    if (firstElement(text).starts_with("<svg"))
        return FileKind::svg;
    if (firstElement(text).starts_with("<html"))
        return FileKind::html;
    for (const TextKind& row : textKinds)
        if (endsWith(path, row.ending))
            return row.kind;
    return FileKind::unknown;
}

} // namespace

std::string_view kindName(FileKind kind)
{
    return kindNames[static_cast<size_t>(kind)];
}

FileKind kindOfContent(std::span<const uint8_t> start, std::string_view path)
{
    if (start.empty())
        return FileKind::empty;
    if (isFit(start))
        return FileKind::fit;
    if (isProfile(start))
        return FileKind::profile;
    if (isText(start))
        return kindOfText({reinterpret_cast<const char*>(start.data()), start.size()}, path);
    return start.size() == sizeof(ParameterBlock) ? FileKind::parameters : FileKind::unknown;
}

FileKind fileKind(const std::string& path)
{
    std::vector<uint8_t> start;
    switch (fileType(path)) {
    case FileType::nothing:
        return FileKind::nothing;
    case FileType::folder:
        return FileKind::folder;
    case FileType::device:
        return FileKind::device;
    case FileType::pipe:
        return FileKind::pipe;
    case FileType::file:
        break;
    }
    if (readFileStart(path, kindBytes, start) != FileResult::ok)
        return FileKind::unreadable;
    return kindOfContent(start, path);
}

} // namespace torvane
