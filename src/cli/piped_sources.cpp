#include "cli/piped_sources.h"

#include "cli/ending_signals.h"
#include "core/files.h"
#include "core/text.h"
#include "fit/fit_image.h"

#include <filesystem>
#include <system_error>

namespace torvane {

namespace {

std::filesystem::path nativePath(const std::string& path)
{
    return std::u8string(path.begin(), path.end());
}

// A folder for this process alone; empty when none could be made. Making one fails where another process has it.
std::string makeFolder()
{
    constexpr int mostFolders = 10'000;
    std::error_code fault;
    std::filesystem::path place = std::filesystem::temp_directory_path(fault);
    for (int number = 1; !fault && number < mostFolders; ++number) {
        std::filesystem::path folder = place / formatText("torvane-ride-%d", number);
        if (!std::filesystem::create_directory(folder, fault))
            continue;
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, fault);
        std::u8string made = (folder / "").u8string();
        return {made.begin(), made.end()};
    }
    return {};
}

std::string rideName(const std::string& path)
{
    std::string name(fileName(path));
    return checkFileExtension(name) == 1 ? name : name + ".fit";
}

} // namespace

PipedSources::~PipedSources()
{
    std::error_code ignored;
    for (const std::string& folder : folders)
        if (!folder.empty())
            std::filesystem::remove_all(nativePath(folder), ignored);
}

std::string PipedSources::layDown(const std::string& pipe, std::string& file)
{
    std::vector<uint8_t> bytes;
    if (readPipe(pipe, largestFitFile + 1, isSignalWaiting, bytes) != FileResult::ok)
        return "failed to read the pipe " + pipe;
    if (bytes.size() > largestFitFile)
        return "the pipe " + pipe + " holds more than a FIT file can";
    std::string& folder = folders.emplace_back(); // before there is one: it must not be forgotten
    folder = makeFolder();
    if (folder.empty())
        return "there is no folder for the ride of " + pipe;
    file = folder + rideName(pipe);
    return replaceFile(file, {bytes}) == FileResult::ok ? std::string() : "failed to keep the ride of " + pipe;
}

std::string PipedSources::take(RunFiles& files)
{
    for (std::string& source : files.sources) {
        if (fileType(source) != FileType::pipe)
            continue;
        if (std::string fault = layDown(std::string(source), source); !fault.empty())
            return fault;
    }
    return {};
}

} // namespace torvane
