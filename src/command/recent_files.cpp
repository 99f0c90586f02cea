#include "command/recent_files.h"

#include "core/text.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr std::string_view kindNames[] = {"recentRide", "recentProfile"};
constexpr std::string_view folderName = "folder";

std::string entryName(RecentKind kind, size_t place)
{
    return std::string(kindNames[static_cast<size_t>(kind)]) + std::to_string(place + 1);
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool samePath(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, [](char x, char y) { return lower(x) == lower(y); });
}

size_t folderLength(std::string_view path)
{
    size_t end = path.find_last_of("\\/");
    return end == path.npos ? 0 : end;
}

// As a menu shows it.
std::string doubled(std::string_view path)
{
    std::string text;
    for (char c : path)
        text.append(c == '&' ? 2 : 1, c);
    return text;
}

void keepIfNew(EntryFile& file, std::string_view name, std::string_view value)
{
    if (keptValue(file, name) != value)
        keepValue(file, name, value);
}

} // namespace

std::vector<std::string> recentFiles(const EntryFile& file, RecentKind kind)
{
    std::vector<std::string> paths;
    for (size_t place = 0; place < mostRecent; ++place)
        if (std::string_view path = keptValue(file, entryName(kind, place)); !path.empty())
            paths.emplace_back(path);
    return paths;
}

void rememberFile(EntryFile& file, RecentKind kind, std::string_view path)
{
    if (path.empty())
        return;
    std::vector<std::string> paths = recentFiles(file, kind);
    std::erase_if(paths, [&](const std::string& known) { return samePath(known, path); });
    paths.emplace(paths.begin(), path);
    paths.resize(std::min(paths.size(), mostRecent));
    for (size_t place = 0; place < paths.size(); ++place)
        keepIfNew(file, entryName(kind, place), paths[place]);
}

std::string recentLabel(size_t place, std::string_view path)
{
    size_t end = folderLength(path);
    std::string text = place + 1 < mostRecent ? formatText("&%d", static_cast<int>(place + 1)) : std::string("1&0");
    text += ' ' + doubled(path.substr(end == 0 ? 0 : end + 1));
    if (end != 0)
        text += "  (" + doubled(path.substr(0, end)) + ')';
    return text;
}

std::string keptFolder(const EntryFile& file, std::string_view use)
{
    return std::string(keptValue(file, std::string(folderName) + std::string(use)));
}

void keepFolderOf(EntryFile& file, std::string_view use, std::string_view path)
{
    if (size_t length = folderLength(path))
        keepIfNew(file, std::string(folderName) + std::string(use), path.substr(0, length));
}

} // namespace torvane
