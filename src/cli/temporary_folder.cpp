#include "cli/temporary_folder.h"

#include "core/text.h"

#include <filesystem>
#include <system_error>

namespace torvane {

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    if (!made.empty())
        std::filesystem::remove_all(std::u8string(made.begin(), made.end()), ignored);
}

// Making a folder fails where another process has it.
bool TemporaryFolder::make()
{
    constexpr int mostFolders = 10'000;
    std::error_code fault;
    std::filesystem::path place = std::filesystem::temp_directory_path(fault);
    for (int number = 1; !fault && number < mostFolders; ++number) {
        std::filesystem::path folder = place / formatText("torvane-ride-%d", number);
        if (!std::filesystem::create_directory(folder, fault))
            continue;
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, fault);
        std::u8string text = (folder / "").u8string();
        made.assign(text.begin(), text.end());
        return true;
    }
    return false;
}

} // namespace torvane
