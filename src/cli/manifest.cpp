#include "cli/manifest.h"

#include "cli/options_hash.h"
#include "core/json.h"
#include "core/json_reader.h"
#include "core/text.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace torvane {

namespace {

constexpr const char* manifestName = "torvane-batch.ndjson";

constexpr std::string_view firstKey = "{\"source\": ";

uint64_t rideHash(std::string_view source, std::string_view size, std::string_view time, std::string_view options)
{
    return hashOf(options, hashOf(time, hashOf(size, hashOf(source))));
}

// "2026-05-01T08:30:00.000000000Z": to the last digit, for people and programs.
std::string isoTime(int64_t time)
{
    using namespace std::chrono;
    sys_time<nanoseconds> point{nanoseconds(time)};
    auto day = floor<days>(point);
    year_month_day date(day);
    hh_mm_ss<nanoseconds> clock(point - day);
    return formatText("%04d-%02u-%02uT%02d:%02d:%02d.%09lldZ", static_cast<int>(date.year()),
                      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                      static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                      static_cast<int>(clock.seconds().count()), static_cast<long long>(clock.subseconds().count()));
}

// Of a file below the folder.
std::string_view nameIn(const std::string& folder, std::string_view path)
{
    return path.substr(std::min(asFolder(folder).size(), path.size()));
}

} // namespace

Manifest::Manifest(std::string folderOfRides, std::string hash)
    : folder(std::move(folderOfRides)), path(asFolder(folder) + manifestName), options(std::move(hash))
{
}

std::string Manifest::open(bool resume)
{
    switch (file.open(path)) {
    case HeldFile::State::held:
        return "another batch is writing into " + folder;
    case HeldFile::State::open:
        break;
    default:
        return path + " cannot be written";
    }
    std::string fault = read();
    if (!resume)
        done.clear();
    return fault;
}

// Piece by piece: the file of many rides is long. A line without an end was being written when its batch ended, or its
// disk was full.
std::string Manifest::read()
{
    constexpr size_t pieceSize = size_t{1} << 20;
    std::string text, piece;
    for (uint64_t at = 0;; at += piece.size()) {
        if (!file.read(at, pieceSize, piece))
            return path + " cannot be read";
        if (at == 0 && !piece.starts_with(firstKey.substr(0, piece.size())))
            return path + " is there already, and is no list of rides";
        if (piece.empty())
            break;
        text += piece;
        takeLines(text, at + piece.size());
    }
    if (!text.empty())
        waiting.push_back('\n');
    return {};
}

// All that have an end; what is behind them stays. `behind`: place in the file where the text ends.
void Manifest::takeLines(std::string& text, uint64_t behind)
{
    uint64_t place = behind - text.size();
    size_t start = 0;
    for (size_t end; (end = text.find('\n', start)) != text.npos; start = end + 1)
        take(std::string_view(text).substr(start, end - start), place + start);
    text.erase(0, start);
}

// Names stay as JSON has them, also those that are no text. The last line of an output holds.
void Manifest::take(std::string_view line, uint64_t start)
{
    std::optional<JsonMembers> members = readJsonObject(line);
    if (!members)
        return;
    auto of = [&](std::string_view key) { return jsonMember(*members, key); };
    std::string_view bytes = of("bytes"), figures = of("figures");
    uint64_t size = 0;
    if (std::from_chars(bytes.data(), bytes.data() + bytes.size(), size).ec != std::errc())
        return;
    uint64_t place = figures.empty() ? 0 : start + static_cast<uint64_t>(figures.data() - line.data());
    done[hashOf(of("output"))] = {rideHash(of("source"), of("size"), of("time"), of("options")), size, place,
                                  figures.size()};
}

const Manifest::Done* Manifest::find(const std::string& output) const
{
    auto found = done.find(hashOf(jsonString(nameIn(folder, output))));
    return found == done.end() ? nullptr : &found->second;
}

bool Manifest::isDone(const std::string& source, const std::string& output) const
{
    const Done* known = find(output);
    std::optional<FileStamp> now = known ? fileStamp(source) : std::nullopt;
    if (!now || known->ride != rideHash(jsonString(source), std::to_string(now->size), jsonString(isoTime(now->time)),
                                        jsonString(options)))
        return false;
    std::optional<FileStamp> made = fileStamp(output);
    return made && made->size == known->bytes;
}

std::string Manifest::figuresOf(const std::string& output) const
{
    std::string text;
    const Done* known = find(output);
    if (known && known->figuresLength != 0 && !file.read(known->figuresAt, known->figuresLength, text))
        text.clear();
    return text;
}

void Manifest::add(const ManifestLine& line)
{
    JsonList object('{');
    object.member("source", jsonString(line.source));
    object.member("size", std::to_string(line.stamp.size));
    object.member("time", jsonString(isoTime(line.stamp.time)));
    object.member("options", jsonString(options));
    object.member("outcome", jsonString(line.outcome));
    std::optional<FileStamp> made = line.output.empty() ? std::nullopt : fileStamp(line.output);
    if (made) {
        object.member("output", jsonString(nameIn(folder, line.output)));
        object.member("bytes", std::to_string(made->size));
    }
    if (!line.figures.empty())
        object.member("figures", line.figures);
    waiting += object.close() + "\n";
    constexpr size_t many = size_t{4} << 20;
    if (waiting.size() >= many || Clock::now() - flushed >= std::chrono::seconds(1))
        flush();
}

void Manifest::flush()
{
    flushed = Clock::now();
    if (waiting.size() <= 1) // the end of a broken line alone
        return;
    flushVolumeOf(folder);
    if (lost.empty() && !file.append(waiting))
        lost = path + " cannot be written: its disk may be full";
    waiting.clear();
}

} // namespace torvane
