// "Torvane.settings": what dialogs keep as default and no parameter file has room for, as lines NAME=VALUE that a user
// may write as well. Knows no entry and no limit. A line that is empty or starts with # is the user's own.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvane {

struct EntryFile {
    std::vector<std::string> lines = {}; // as they stand in the file, without their ends
    bool changed = false;                // since it was read
};

// In the folder of a parameter file.
std::string entryFilePath(const std::string& parameterPath);

// True where the file was read, or there is none; false where it is no text or cannot be read: it must not be written
// over.
bool readEntryFile(const std::string& path, EntryFile& file);

// Writes the whole file anew; false when that failed, and the old file stands.
bool writeEntryFile(const std::string& path, const EntryFile& file);

// Name and value of a line, blanks around them taken off; no name where it is none. Of several lines with one name the
// last one holds.
std::pair<std::string_view, std::string_view> entryOf(std::string_view line);

// The lines that are neither an entry nor the user's own, each with its number in front.
std::vector<std::string> brokenLines(const EntryFile& file);

// The value of a name; empty where there is none.
std::string_view keptValue(const EntryFile& file, std::string_view name);

// All else stays as it is: a line of that name takes the value in its place, else one is added.
void keepValue(EntryFile& file, std::string_view name, std::string_view value);

} // namespace torvane
