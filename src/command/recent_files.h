// The files that were worked on last and the folders that prompts were in, kept in the entry file.
#pragma once

#include "core/entry_file.h"

#include <string>
#include <string_view>
#include <vector>

namespace torvane {

enum class RecentKind { rides, profiles };

constexpr size_t mostRecent = 10;

// The latest first; UTF-8 paths.
std::vector<std::string> recentFiles(const EntryFile& file, RecentKind kind);

// A file comes to the front; one that is there already moves there, whatever the case of its letters. An empty path
// changes nothing.
void rememberFile(EntryFile& file, RecentKind kind, std::string_view path);

// "&1 morning.fit  (C:\rides)" of the first one, a menu's entry: & marks a key.
std::string recentLabel(size_t place, std::string_view path);

// The folder that a prompt of this use was left in; empty: none yet. "C:\rides" of "C:\rides\morning.fit".
std::string keptFolder(const EntryFile& file, std::string_view use);
void keepFolderOf(EntryFile& file, std::string_view use, std::string_view path);

} // namespace torvane
