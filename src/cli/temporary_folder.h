// A folder for what this process needs as a file for a while.
#pragma once

#include <string>

namespace torvane {

// In the system's folder for such, for this user alone. Goes with this record, and all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder() = default;
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    // False when there is no place for one.
    bool make();
    const std::string& path() const // ending in a separator
    {
        return made;
    }

private:
    std::string made = {};
};

} // namespace torvane
