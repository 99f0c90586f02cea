#include "core/entry_file.h"

#include "core/files.h"
#include "core/text.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace torvane {

namespace {

constexpr size_t mostBytes = 1u << 20;
constexpr std::string_view blanks = " \t\r", byteOrderMark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text)
{
    size_t first = text.find_first_not_of(blanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string> linesOf(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

bool isUsersOwn(std::string_view line)
{
    std::string_view text = trimmed(line);
    return text.empty() || text[0] == '#';
}

} // namespace

std::string entryFilePath(const std::string& parameterPath)
{
    size_t nameLength = fileName(parameterPath).size();
    return parameterPath.substr(0, parameterPath.size() - nameLength) + "Torvane.settings";
}

bool readEntryFile(const std::string& path, EntryFile& file)
{
    file = {};
    if (!fileExists(path))
        return true;
    std::vector<uint8_t> bytes;
    if (readFileStart(path, mostBytes + 1, bytes) != FileResult::ok || bytes.size() > mostBytes ||
        std::ranges::find(bytes, 0) != bytes.end())
        return false;
    file.lines = linesOf({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return true;
}

bool writeEntryFile(const std::string& path, const EntryFile& file)
{
    std::string text;
    for (const std::string& line : file.lines)
        text += line + '\n';
    std::span<const uint8_t> bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    return replaceFile(path, {bytes}) == FileResult::ok;
}

std::pair<std::string_view, std::string_view> entryOf(std::string_view line)
{
    if (line.starts_with(byteOrderMark))
        line.remove_prefix(byteOrderMark.size());
    size_t sign = line.find('=');
    if (isUsersOwn(line) || sign == line.npos)
        return {};
    return {trimmed(line.substr(0, sign)), trimmed(line.substr(sign + 1))};
}

std::vector<std::string> brokenLines(const EntryFile& file)
{
    std::vector<std::string> broken;
    for (size_t i = 0; i < file.lines.size(); ++i)
        if (!isUsersOwn(file.lines[i]) && entryOf(file.lines[i]).first.empty())
            broken.push_back(formatText("%zu: ", i + 1) + std::string(trimmed(file.lines[i])));
    return broken;
}

std::string_view keptValue(const EntryFile& file, std::string_view name)
{
    for (size_t i = file.lines.size(); i-- > 0;)
        if (auto [own, value] = entryOf(file.lines[i]); own == name)
            return value;
    return {};
}

void keepValue(EntryFile& file, std::string_view name, std::string_view value)
{
    std::string line = std::string(name) + '=' + std::string(value);
    auto last = std::find_if(file.lines.rbegin(), file.lines.rend(),
                             [&](const std::string& each) { return entryOf(each).first == name; });
    if (last != file.lines.rend() && entryOf(*last).second == value)
        return;
    if (last != file.lines.rend())
        *last = line;
    else
        file.lines.push_back(line);
    file.changed = true;
}

} // namespace torvane
