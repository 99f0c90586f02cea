#include "cli/piped_sources.h"

#include "core/files.h"
#include "core/text.h"
#include "fit/fit_image.h"

namespace torvane {

namespace {

std::string rideName(const std::string& path)
{
    std::string name(fileName(path));
    return checkFileExtension(name) == 1 ? name : name + ".fit";
}

} // namespace

std::string PipedSources::layDown(const std::string& pipe, const StopRequest& stop, std::string& file)
{
    std::vector<uint8_t> bytes;
    if (readPipe(
            pipe, largestFitFile + 1, [&] { return stop.isAsked(); }, bytes) != FileResult::ok)
        return "failed to read the pipe " + pipe;
    if (bytes.size() > largestFitFile)
        return "the pipe " + pipe + " holds more than a FIT file can";
    TemporaryFolder& folder = folders.emplace_back();
    if (!folder.make())
        return "there is no folder for the ride of " + pipe;
    file = folder.path() + rideName(pipe);
    return replaceFile(file, {bytes}, Flush::byOwner) == FileResult::ok ? std::string()
                                                                        : "failed to keep the ride of " + pipe;
}

std::string PipedSources::take(RunFiles& files, const StopRequest& stop)
{
    for (std::string& source : files.sources) {
        if (fileType(source) != FileType::pipe)
            continue;
        if (std::string fault = layDown(std::string(source), stop, source); !fault.empty())
            return fault;
    }
    return {};
}

} // namespace torvane
