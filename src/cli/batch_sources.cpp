#include "cli/batch_sources.h"

#include "cli/standard_input.h"
#include "core/files.h"
#include "core/text.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>

namespace torvane {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view rideEndings[] = {".fit", ".gpx", ".tcx"};

fs::path nativePath(const std::string& path)
{
    return std::u8string(path.begin(), path.end());
}

std::string textOf(const fs::path& path)
{
    std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

bool isRide(const std::string& path)
{
    std::string name = asciiLower(path);
    if (name.ends_with(".gz"))
        name.resize(name.size() - 3);
    return std::ranges::any_of(rideEndings, [&](std::string_view ending) { return name.ends_with(ending); });
}

// A folder that is looked through.
struct Search {
    const std::string& into;
    BatchSources& sources;
};

struct Entry {
    std::string name;
    bool isFolder, isLink;
    bool isOther; // a pipe or a device, which may keep its reader waiting for ever
};

// By name, which the system's own order is not.
std::vector<Entry> entriesOf(const std::string& folder, std::error_code& fault)
{
    std::vector<Entry> entries;
    fs::directory_iterator entry(nativePath(folder), fault);
    for (; !fault && entry != fs::directory_iterator(); entry.increment(fault)) {
        std::error_code unknown;
        bool isOther = entry->is_other(unknown);
        entries.push_back(
            {textOf(entry->path().filename()), entry->is_directory(unknown), entry->is_symlink(unknown), isOther});
    }
    std::ranges::sort(entries, {}, &Entry::name);
    return entries;
}

// `below`: of the folder that was named, "" or "2026/".
void look(const Search& search, const std::string& folder, const std::string& below)
{
    BatchSources& sources = search.sources;
    std::error_code fault;
    std::vector<Entry> entries = entriesOf(folder, fault);
    if (fault) {
        sources.complete = false;
        sources.notes.push_back(folder + " cannot be read: " + fault.message());
    }
    for (const Entry& entry : entries) {
        std::string path = textOf(nativePath(folder) / nativePath(entry.name));
        if (entry.isOther && isRide(entry.name))
            sources.notes.push_back(path + " is no file, and is left out");
        else if (!entry.isFolder && isRide(entry.name))
            sources.rides.push_back({path, below});
        else if (entry.isFolder && entry.isLink)
            sources.notes.push_back(path + " is a link to a folder, and is left out");
        else if (entry.isFolder && isSameFile(path, search.into))
            sources.notes.push_back(path + " is the folder of --into, and is left out");
        else if (entry.isFolder)
            look(search, path, below + asFolder(entry.name));
    }
}

std::string addSource(const Request& request, const Search& search, const std::string& name)
{
    std::string path = absolutePath(name);
    if (name.empty())
        return "a path is empty";
    if (!folderExists(path))
        search.sources.rides.push_back({path});
    else if (request.recursive)
        look(search, path, "");
    else
        return path + " is a folder; --recursive takes the rides in it";
    return {};
}

// One name a line, or each ended by a byte of 0, as `find -print0` writes them: there a name may hold a line's end.
std::vector<std::string> namesIn(const std::string& text)
{
    bool zeros = text.find('\0') != text.npos;
    std::vector<std::string> names;
    for (size_t start = 0; start < text.size();) {
        size_t end = std::min(text.find(zeros ? '\0' : '\n', start), text.size());
        std::string name = text.substr(start, end - start);
        if (!zeros && name.ends_with('\r'))
            name.pop_back();
        if (!name.empty())
            names.push_back(name);
        start = end + 1;
    }
    return names;
}

std::string readList(const std::string& path, std::string& text)
{
    if (path == "-") {
        StandardInput in;
        text.assign(std::istreambuf_iterator<char>(in.stream), {});
        return {};
    }
    std::vector<uint8_t> bytes;
    std::string file = absolutePath(path);
    auto never = [] { return false; };
    FileResult result =
        fileType(file) == FileType::pipe ? readPipe(file, SIZE_MAX, never, bytes) : readWholeFile(file, bytes);
    text.assign(bytes.begin(), bytes.end());
    return result == FileResult::ok ? std::string() : file + " cannot be read";
}

} // namespace

std::string findSources(const Request& request, const std::string& into, BatchSources& sources)
{
    std::vector<std::string> names = request.files;
    if (!request.filesFrom.empty()) {
        std::string text;
        if (std::string fault = readList(request.filesFrom, text); !fault.empty())
            return fault;
        std::ranges::move(namesIn(text), std::back_inserter(names));
    }
    if (names.empty())
        return "no files given";
    for (const std::string& name : names)
        if (std::string fault = addSource(request, {into, sources}, name); !fault.empty())
            return fault;
    return {};
}

} // namespace torvane
