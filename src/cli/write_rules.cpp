#include "cli/write_rules.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>
#include <utility>

namespace torvane {

namespace {

bool contains(const std::set<FileIdentity>& files, const std::string& path)
{
    std::optional<FileIdentity> identity = fileIdentity(path);
    return identity && files.contains(*identity);
}

void add(std::set<FileIdentity>& files, const std::string& path)
{
    if (std::optional<FileIdentity> identity = fileIdentity(path))
        files.insert(*identity);
}

namespace fs = std::filesystem;

// Where a file would come to be that is not there yet, as a name to compare: links lead on, also those to nothing.
std::u8string placeOf(const std::string& path)
{
    constexpr int mostLinks = 40; // as the system follows
    std::error_code fault;
    fs::path place = std::u8string(path.begin(), path.end());
    for (int link = 0; link < mostLinks && fs::is_symlink(place, fault); ++link)
        place = place.parent_path() / fs::read_symlink(place, fault);
    fs::path folder = fs::weakly_canonical(place.parent_path(), fault);
    std::u8string name = (folder / place.filename()).u8string();
#ifdef _WIN32
    std::ranges::transform(name, name.begin(),
                           [](char8_t c) { return static_cast<char8_t>(c < 0x80 ? std::tolower(c) : c); });
#endif
    return name;
}

// Devices take whatever comes.
bool isSameOutput(const std::string& a, const std::string& b)
{
    if (a.empty() || b.empty() || fileType(a) == FileType::device)
        return false;
    return isSameFile(a, b) || (!fileExists(a) && !fileExists(b) && placeOf(a) == placeOf(b));
}

std::string readByCall(const std::string& path)
{
    return path + " is read by this call, and not written over";
}

std::string twoFilesTo(const std::string& path)
{
    return "two files would be written to " + path;
}

constexpr const char* forceHint = "; --force writes over it";

// What is no file fails in its own words when it is written to.
std::string replaceFault(const Output& output, FileKind present)
{
    if (present == FileKind::nothing || present == FileKind::folder || present == FileKind::device)
        return {};
    if (output.onlyNew)
        return output.path + " exists" + forceHint;
    if (present == FileKind::empty || present == output.kind)
        return {};
    return output.path + " is " + std::string(kindName(present)) + ", not " + std::string(kindName(output.kind)) +
           forceHint;
}

} // namespace

WriteRules::WriteRules(bool forced, CallFiles named) : force(forced), files(std::move(named))
{
    for (const std::string& path : files.sources)
        add(sources, path);
}

std::string WriteRules::optionFault() const
{
    const std::vector<std::string>& outputs = files.outputs;
    for (size_t i = 0; i < outputs.size(); ++i)
        for (size_t j = 0; j < i; ++j)
            if (isSameOutput(outputs[i], outputs[j]))
                return twoFilesTo(outputs[i]);
    return {};
}

std::string WriteRules::sourceFault(const std::string& path) const
{
    return contains(sources, path) ? readByCall(path) : std::string();
}

std::string WriteRules::fault(const Output& output) const
{
    if (std::string own = sourceFault(output.path); !own.empty())
        return own;
    if (output.kind != FileKind::profile && isSameFile(output.path, files.profile))
        return readByCall(output.path);
    if (isWritten(output.path) || (!output.ofOption && isAsked(output.path)))
        return twoFilesTo(output.path);
    FileKind present = fileKind(output.path);
    if (present == FileKind::pipe)
        return output.path + " is a pipe, which no file can be written to";
    return force ? std::string() : replaceFault(output, present);
}

bool WriteRules::isWritten(const std::string& path) const
{
    std::lock_guard lock(guard);
    return contains(written, path);
}

bool WriteRules::isAsked(const std::string& path) const
{
    return std::ranges::any_of(files.outputs, [&](const std::string& other) { return isSameOutput(path, other); });
}

void WriteRules::wrote(const std::string& path)
{
    std::lock_guard lock(guard);
    add(written, path);
}

} // namespace torvane
