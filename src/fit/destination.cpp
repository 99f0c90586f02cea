// Where a tool may write: the destination checks. Looks at folders, creates nothing.
#include "core/files.h"
#include "core/text.h"
#include "fit/tool_support.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace torvane {

namespace {

struct Extension {
    std::string_view lower, upper; // the two spellings that stand as they are; any other gets the lower one appended
};

// The first one is appended where there is none of them.
constexpr Extension fitExtension[] = {{".fit", ".FIT"}};
constexpr Extension dumpExtension[] = {{".csv", ".CSV"}};
constexpr Extension profileExtension[] = {{".pro", ".PRO"}};
constexpr Extension courseExtensions[] = {{".fit", ".FIT"}, {".gpx", ".GPX"}};

void completeExtension(std::string& path, std::span<const Extension> extensions)
{
    // The last dot of the whole path counts, be it in a folder's name.
    size_t dot = path.rfind('.');
    std::string_view present = dot == std::string::npos ? std::string_view{} : std::string_view(path).substr(dot);
    auto is = [&](const Extension& extension) { return present == extension.lower || present == extension.upper; };
    if (std::ranges::none_of(extensions, is))
        path += extensions[0].lower;
}

bool checkPath(std::string& path, Verdict& verdict, std::span<const Extension> extensions)
{
    size_t separator = lastSeparator(path);
    if (separator == std::string::npos || !folderExists(path.substr(0, separator + 1)))
        return refuse(verdict, "error", "not existing directory for a destination file", toolDestination);
    if (separator + 1 == path.size())
        return refuse(verdict, "error", "not existing filename for a destination file", toolDestination);
    completeExtension(path, extensions);
    return true;
}

bool checkNoSource(const ToolInputs& inputs, Verdict& verdict)
{
    const std::string& path = inputs.files[toolDestination].path;
    return std::ranges::all_of(std::span(inputs.files).first(toolSourceCount),
                               [&](const SourceFileInfo& info) { return checkNoSource(path, info.path, verdict); });
}

} // namespace

bool checkNoSource(const std::string& path, const std::string& source, Verdict& verdict)
{
    return !isSameFile(path, source) ||
           refuse(verdict, "error", "found a destination file which is a source file", toolDestination);
}

bool checkDestinationPath(std::string& path, Verdict& verdict)
{
    return checkPath(path, verdict, fitExtension);
}

bool checkDestination(ToolInputs& inputs, Verdict& verdict)
{
    return checkDestinationPath(inputs.files[toolDestination].path, verdict) && checkNoSource(inputs, verdict);
}

bool checkCourseDestination(ToolInputs& inputs, Verdict& verdict)
{
    return checkPath(inputs.files[toolDestination].path, verdict, courseExtensions) && checkNoSource(inputs, verdict);
}

bool checkPartDestinations(ToolInputs& inputs, Verdict& verdict)
{
    std::string& path = inputs.files[toolDestination].path;
    bool passed = checkDestinationPath(path, verdict);
    for (int32_t part = 0; passed && part < dividedPartCount(inputs.files[0]); ++part)
        passed = checkNoSource(dividedFileName(path, part), inputs.files[0].path, verdict);
    return passed;
}

bool checkDumpDestination(ToolInputs& inputs, Verdict& verdict)
{
    return checkPath(inputs.files[toolDestination].path, verdict, dumpExtension) && checkNoSource(inputs, verdict);
}

bool checkProfileDestination(ToolInputs& inputs, Verdict& verdict)
{
    return checkPath(inputs.files[toolDestination].path, verdict, profileExtension) && checkNoSource(inputs, verdict);
}

} // namespace torvane
