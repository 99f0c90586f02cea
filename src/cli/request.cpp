#include "cli/request.h"

#include "command/nearest.h"

#include <cctype>
#include <charconv>
#include <string_view>

namespace torvane {

namespace {

struct Option {
    std::string_view name;
    bool Request::*flag;        // null where a value follows
    std::string Request::*text; // null for a flag, for --set and --jobs
};

constexpr Option options[] = {
    {"--help", &Request::help, nullptr},
    {"-h", &Request::help, nullptr},
    {"--version", &Request::version, nullptr},
    {"--save", &Request::save, nullptr},
    {"--json", &Request::json, nullptr},
    {"--par", nullptr, &Request::par},
    {"--profile", nullptr, &Request::profile},
    {"--graph", nullptr, &Request::graph},
    {"--into", nullptr, &Request::into},
    {"--set", nullptr, nullptr},
    {"--jobs", nullptr, nullptr},
    {"--prepare", &Request::prepare, nullptr},
    {"--force", &Request::force, nullptr},
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

std::string takeValue(const Option& option, const std::string& value, Request& request)
{
    if (option.text) {
        request.*option.text = value;
        return value.empty() ? std::string(option.name) + " needs a path" : std::string();
    }
    if (option.name == "--jobs")
        return takeJobs(value, request);
    Assignment assignment;
    if (!readAssignment(value, assignment))
        return "--set needs NAME=VALUE, not '" + value + "'";
    request.settings.push_back(assignment);
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
    if (request.command.empty())
        request.command = argument;
    else if (readAssignment(argument, assignment))
        request.entries.push_back(assignment);
    else
        request.files.push_back(argument);
}

} // namespace

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
    size_t next = 0;
    while (next < arguments.size()) {
        if (arguments[next] == "--") {
            for (++next; next < arguments.size(); ++next)
                request.files.push_back(arguments[next]);
        } else if (arguments[next].size() > 1 && arguments[next][0] == '-') {
            std::string fault = readOption(arguments, next, request);
            if (!fault.empty())
                return fault;
        } else {
            readOperand(arguments[next++], request);
        }
    }
    if (request.prepare)
        request.entries.push_back({"prepare", "on"});
    return {};
}

} // namespace torvane
