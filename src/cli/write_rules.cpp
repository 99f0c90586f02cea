#include "cli/write_rules.h"

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

WriteRules::WriteRules(bool forced, const std::vector<std::string>& sourcePaths) : force(forced)
{
    for (const std::string& path : sourcePaths)
        add(sources, path);
}

std::string WriteRules::sourceFault(const std::string& path) const
{
    return contains(sources, path) ? path + " is read by this call, and not written over" : std::string();
}

std::string WriteRules::fault(const Output& output) const
{
    if (std::string own = sourceFault(output.path); !own.empty())
        return own;
    if (isWritten(output.path))
        return "two files would be written to " + output.path;
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

void WriteRules::wrote(const std::string& path)
{
    std::lock_guard lock(guard);
    add(written, path);
}

} // namespace torvane
