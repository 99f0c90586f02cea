#include "cli/stage.h"

#include "cli/ending_signals.h"
#include "cli/run.h"
#include "cli/temporary_folder.h"
#include "core/base64.h"
#include "core/files.h"
#include "core/json_reader.h"
#include "core/text.h"
#include "fit/fit_image.h"

#include <algorithm>
#include <limits>
#include <new>
#include <optional>
#include <sstream>

namespace torvane {

namespace {

struct Feed {
    const Session& session;
    const RideOfBatch& run;
};

struct StageRide {
    std::string name;
    std::vector<uint8_t> bytes;
};

// Empty on success.
std::string readRide(const std::string& line, StageRide& ride)
{
    std::optional<JsonMembers> members = readJsonObject(line);
    if (!members)
        return "this line is no JSON object";
    std::optional<std::string> name = jsonText(jsonMember(*members, "name"));
    std::optional<std::string> text = jsonText(jsonMember(*members, "bytes"));
    std::optional<std::vector<uint8_t>> bytes = text ? base64Bytes(*text) : std::nullopt;
    if (name)
        ride.name = std::move(*name);
    if (!name || !bytes)
        return !name ? "this line has no name" : "this line has no bytes in base64";
    ride.bytes = std::move(*bytes);
    return {};
}

// As reports tell it; what no folder would take goes by another one. Where the name says nothing it is a FIT file.
std::string nameOfFile(const std::string& name)
{
    constexpr size_t longest = 200; // bytes
    constexpr std::string_view unfit = "<>:\"/\\|?*";
    std::string last(fileName(name));
    bool sound = !last.empty() && last != "." && last != ".." && last.size() <= longest &&
                 std::ranges::none_of(
                     last, [&](unsigned char c) { return c < ' ' || unfit.find(static_cast<char>(c)) != unfit.npos; });
    if (!sound)
        return "ride.fit";
    return checkFileExtension(last) == 0 && !last.ends_with(".gz") ? last + ".fit" : last;
}

int answerRide(const Feed& feed, const std::string& line, Answer& answer, Streams& streams)
{
    StageRide ride;
    std::string fault = readRide(line, ride);
    answer.source = ride.name;
    if (!fault.empty())
        return refuse(answer, streams, errorOf(library::ErrorKind::badValue, fault));
    TemporaryFolder folder; // of this ride alone: a signal between two of them leaves none behind
    std::string path = folder.make() ? folder.path() + nameOfFile(ride.name) : std::string();
    if (path.empty() || replaceFile(path, {ride.bytes}, Flush::byOwner) != FileResult::ok)
        return refuse(answer, streams, errorOf(library::ErrorKind::cannotWrite, "there is no place for the ride"));
    Session own;
    copySettings(feed.session, own);
    int code = feed.run(own, {{path}, ""}, answer, streams);
    answer.source = ride.name;
    return code;
}

// False at the end of `in`. A line that there is no memory for is passed over and none.
bool nextLine(std::istream& in, std::optional<std::string>& line)
{
    if (in.bad()) // not for the line before, which was passed over: nothing can be read
        return false;
    if (!line)
        line.emplace();
    if (std::getline(in, *line))
        return true;
    if (!in.bad())
        return false;
    line.reset();
    in.clear();
    in.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    return true;
}

int answerLine(const Feed& feed, const std::optional<std::string>& line, Streams& streams)
{
    std::ostringstream told; // it stands in the answer
    Streams aside = {told, told};
    Answer answer;
    int code = exitFailed;
    try {
        if (line)
            code = answerRide(feed, *line, answer, aside);
        else
            tellNoMemory(answer, aside);
    } catch (const std::bad_alloc&) {
        tellNoMemory(answer, aside);
    }
    writeJson(streams.out, answer);
    streams.out.flush();
    return code;
}

} // namespace

int runStage(const Session& session, const RideOfBatch& run, std::istream& in, Answer& answer, Streams& streams)
{
    Feed feed = {session, run};
    answer.isTold = true;
    int code = exitDone;
    std::optional<std::string> line;
    while (streams.out && nextLine(in, line)) {
        if (line && line->find_first_not_of(" \t\r") == line->npos)
            continue;
        int own = runHeld([&] { return answerLine(feed, line, streams); });
        if (own > signalExit)
            return own;
        code = own == exitDone ? code : exitFailed;
    }
    return code;
}

} // namespace torvane
