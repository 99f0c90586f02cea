#include "cli/options_hash.h"

#include "command/fill.h"
#include "command/session.h"
#include "core/files.h"
#include "core/text.h"
#include "version.h"

#include <vector>

namespace torvane {

namespace {

template <class Bytes>
std::string_view textOf(const Bytes* bytes, size_t size)
{
    return {reinterpret_cast<const char*>(bytes), size};
}

// What is in a file of settings, not when it was written.
uint64_t hashOfFile(const std::string& path, uint64_t hash)
{
    std::vector<uint8_t> bytes;
    if (!path.empty())
        readWholeFile(absolutePath(path), bytes);
    return hashOf(textOf(bytes.data(), bytes.size()), hash);
}

// A ride that an entry names may be long.
uint64_t hashOfStamp(const std::string& path, uint64_t hash)
{
    FileStamp stamp = fileStamp(path).value_or(FileStamp());
    return hashOf(std::to_string(stamp.size) + " " + std::to_string(stamp.time), hashOf(path, hash));
}

} // namespace

uint64_t hashOf(std::string_view text, uint64_t before)
{
    constexpr uint64_t prime = 1'099'511'628'211u;
    for (char c : text)
        before = (before ^ static_cast<uint8_t>(c)) * prime;
    return (before ^ 0xFF) * prime; // an end that is in no UTF-8
}

std::string optionsHash(const Session& session, const Command& command, const Request& request)
{
    uint64_t hash = hashOf(consoleName(command), hashOf(TORVANE_VERSION));
    hash = hashOf(textOf(&session.working, sizeof session.working), hash);
    hash = hashOfFile(request.profile, hash); // its conditions are in the model alone
    for (const std::string& line : session.kept.lines)
        hash = hashOf(line, hash);
    for (const Assignment& entry : request.entries)
        hash = hashOf(entry.name + "=" + entry.value, hash);
    for (const std::string& path : filesNamedBy(command, request.entries))
        hash = hashOfStamp(path, hash);
    return formatText("%016llx", static_cast<unsigned long long>(hash));
}

} // namespace torvane
