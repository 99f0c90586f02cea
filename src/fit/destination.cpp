// Where a tool may write: the destination checks. Looks at folders, creates nothing.
#include "core/files.h"
#include "core/text.h"
#include "fit/tool_support.h"

#include <string_view>

namespace torvane {

namespace {

struct Extension {
    std::string_view lower, upper; // the two spellings that stand as they are; any other gets the lower one appended
};

constexpr Extension fitExtension = {".fit", ".FIT"};
constexpr Extension dumpExtension = {".csv", ".CSV"};

void completeExtension(std::string& path, const Extension& extension)
{
    // The last dot of the whole path counts, be it in a folder's name.
    size_t dot = path.rfind('.');
    std::string_view present = dot == std::string::npos ? std::string_view{} : std::string_view(path).substr(dot);
    if (present != extension.lower && present != extension.upper)
        path += extension.lower;
}

bool checkPath(std::string& path, Verdict& verdict, const Extension& extension)
{
    size_t separator = lastSeparator(path);
    if (separator == std::string::npos || !folderExists(path.substr(0, separator + 1)))
        return refuse(verdict, "error", "not existing directory for a destination file");
    if (separator + 1 == path.size())
        return refuse(verdict, "error", "not existing filename for a destination file");
    completeExtension(path, extension);
    return true;
}

} // namespace

bool checkDestinationPath(std::string& path, Verdict& verdict)
{
    return checkPath(path, verdict, fitExtension);
}

bool checkDumpDestination(std::string& path, Verdict& verdict)
{
    return checkPath(path, verdict, dumpExtension);
}

} // namespace torvane
