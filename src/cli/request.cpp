#include "cli/request.h"

#include "command/nearest.h"

#include <cctype>
#include <charconv>
#include <string_view>

namespace torvane {

namespace {

struct Option {
    std::string_view name;
    std::string_view value;               // what follows, in a word; empty for a flag
    bool Request::*flag = nullptr;        // of a flag
    std::string Request::*text = nullptr; // of a path
    std::string_view meaning = {};        // empty: another name of the option above
};

constexpr Option options[] = {
    {"--par", "FILE", nullptr, &Request::par, "start from the defaults in this parameter file"},
    {"--profile", "FILE.pro", nullptr, &Request::profile, "then load this profile of a rider and a bicycle"},
    {"--set", "NAME=VALUE", nullptr, nullptr, "set an entry of the profile, condition or preference pages"},
    {"--save", "", &Request::save, nullptr, "make what was entered the new defaults of the --par file"},
    {"--graph", "FILE.svg", nullptr, &Request::graph, "draw the graph of the command into a file"},
    {"--curves", "NAME,NAME", nullptr, &Request::curves, "of the graph: these curves, as velocity,frontBrake"},
    {"--x", "NAME", nullptr, &Request::x, "of the graph: over this series, as distance"},
    {"--size", "1280x720", nullptr, &Request::size, "of the graph: its pixels"},
    {"--dark", "", &Request::dark, nullptr, "of the graph: on a dark ground everywhere"},
    {"--page", "FILE.html", nullptr, &Request::page,
     "write the answer as a page to look at: map, charts and tables in one file that needs no network"},
    {"--against", "NAME=VALUE", nullptr, nullptr,
     "with plan and --page: beside it a second plan, with this entry instead; as often as wanted"},
    {"--rows", "FILE.csv", nullptr, &Request::rows,
     "write the table of the command into a file, by its name .csv, .tsv or .ndjson; - to standard output"},
    {"--json", "", &Request::json, nullptr, "print the answer as one JSON object"},
    {"--into", "FOLDER", nullptr, &Request::into, "for several files: write one file for each into a folder"},
    {"--jobs", "N", nullptr, nullptr,
     "with --into and sweep: so many at a time, 1 to 256; as many as the machine has cores unless given"},
    {"--files-from", "FILE", nullptr, &Request::filesFrom,
     "with --into: take the files that this list names, one a line or each ended by a zero byte; - from standard "
     "input"},
    {"--recursive", "", &Request::recursive, nullptr,
     "with --into: take the rides in the folders that are named, and in those below them"},
    {"--resume", "", &Request::resume, nullptr,
     "with --into: leave out the rides that an earlier call has done and that have not changed"},
    {"--timeout", "SECONDS", nullptr, nullptr, "with --into: stop a ride that takes longer, and go on with the next"},
    {"--stdin", "", &Request::fromStdin, nullptr,
     "with --json: read rides from standard input, a JSON object with name and bytes (base64) a line, and answer each "
     "by "
     "a line"},
    {"--force", "", &Request::force, nullptr,
     "write over a file of another kind, or one that is there already; never over a source"},
    {"--prepare", "", &Request::prepare, nullptr, "at-one-stroke: first put the ride as its device wrote it in order"},
    {"--save-profile", "FILE.pro", nullptr, &Request::saveProfile,
     "calibrate: keep the present profile with what was learned"},
    {"--as-angle", "", &Request::asAngle, nullptr,
     "with --save-profile: as the torso angle of the same drag, for programs that know no factor"},
    {"--quiet", "", &Request::quiet, nullptr,
     "show no progress, which a terminal has while work takes more than a second"},
    {"--help", "", &Request::help, nullptr, "tell options and commands, or all of the command that follows"},
    {"-h", "", &Request::help},
    {"--version", "", &Request::version, nullptr, "tell the version"},
};

const Option* findOption(std::string_view name)
{
    for (const Option& option : options)
        if (option.name == name)
            return &option;
    return nullptr;
}

std::string unknownOption(const std::string& name)
{
    std::vector<std::string> names;
    for (const Option& option : options)
        names.emplace_back(option.name);
    return "unknown option " + name + suggestion(name, names);
}

std::string takeJobs(const std::string& value, Request& request)
{
    constexpr int mostJobs = 256;
    const char* end = value.data() + value.size();
    auto [read, fault] = std::from_chars(value.data(), end, request.jobs);
    if (fault == std::errc() && read == end && request.jobs >= 1 && request.jobs <= mostJobs)
        return {};
    return "--jobs needs a number from 1 to " + std::to_string(mostJobs) + ", not '" + value + "'";
}

std::string takeTimeout(const std::string& value, Request& request)
{
    constexpr double longest = 1e6; // s
    const char* end = value.data() + value.size();
    auto [read, fault] = std::from_chars(value.data(), end, request.timeout);
    if (fault == std::errc() && read == end && request.timeout > 0 && request.timeout <= longest)
        return {};
    return "--timeout needs a number of seconds above 0, 1000000 at most, not '" + value + "'";
}

// Of what has one value the first one would be lost without a word.
bool isGiven(const Option& option, const Request& request)
{
    if (option.text)
        return !(request.*option.text).empty();
    return option.name == "--jobs" ? request.jobs != 0 : option.name == "--timeout" && request.timeout > 0;
}

std::string takeValue(const Option& option, const std::string& value, Request& request)
{
    if (isGiven(option, request))
        return std::string(option.name) + " is given twice";
    if (option.text) {
        request.*option.text = value;
        return value.empty() ? std::string(option.name) + " needs a value" : std::string();
    }
    if (option.name == "--jobs")
        return takeJobs(value, request);
    if (option.name == "--timeout")
        return takeTimeout(value, request);
    Assignment assignment;
    if (!readAssignment(value, assignment))
        return std::string(option.name) + " needs NAME=VALUE, not '" + value + "'";
    (option.name == "--against" ? request.against : request.settings).push_back(assignment);
    return {};
}

// Reads one option, "--name", "--name value" or "--name=value"; next is moved behind it.
std::string readOption(const std::vector<std::string>& arguments, size_t& next, Request& request)
{
    const std::string& argument = arguments[next++];
    size_t sign = argument.find('=');
    std::string name = argument.substr(0, sign);
    const Option* option = findOption(name);
    if (!option)
        return unknownOption(name);
    if (option->flag) {
        request.*option->flag = true;
        return sign == argument.npos ? std::string() : name + " takes no value";
    }
    if (sign != argument.npos)
        return takeValue(*option, argument.substr(sign + 1), request);
    if (next == arguments.size())
        return name + " needs a value";
    return takeValue(*option, arguments[next++], request);
}

void readOperand(const std::string& argument, Request& request)
{
    Assignment assignment;
    if (request.command.empty() && !request.sweep && argument == sweepWord)
        request.sweep = true;
    else if (request.command.empty())
        request.command = argument;
    else if (readAssignment(argument, assignment))
        request.entries.push_back(assignment);
    else
        request.files.push_back(argument);
}

} // namespace

std::vector<OptionInfo> optionInfos()
{
    std::vector<OptionInfo> infos;
    for (const Option& option : options)
        if (!option.meaning.empty())
            infos.push_back({option.name, option.value, option.meaning});
    return infos;
}

bool readAssignment(const std::string& argument, Assignment& assignment)
{
    size_t sign = argument.find('=');
    if (sign == argument.npos || sign == 0 || !std::isalpha(static_cast<unsigned char>(argument[0])))
        return false;
    for (char c : argument.substr(0, sign))
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '[' && c != ']')
            return false;
    assignment = {argument.substr(0, sign), argument.substr(sign + 1)};
    return true;
}

std::string readRequest(const std::vector<std::string>& arguments, Request& request)
{
    std::string fault;
    size_t next = 0;
    bool filesAlone = false, noOptions = false;
    while (next < arguments.size()) {
        const std::string& argument = arguments[next];
        if (filesAlone) {
            request.files.push_back(arguments[next++]);
        } else if (argument == "--") {
            filesAlone = !request.command.empty();
            noOptions = true;
            ++next;
        } else if (!noOptions && argument.size() > 1 && argument[0] == '-') {
            std::string wrong = readOption(arguments, next, request);
            fault = fault.empty() ? wrong : fault;
        } else {
            readOperand(arguments[next++], request);
        }
    }
    if (request.prepare)
        request.entries.push_back({"prepare", "on"});
    if (request.asAngle)
        request.entries.push_back({"asAngle", "on"});
    return fault;
}

} // namespace torvane
