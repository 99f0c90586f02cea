// A file of lines that grows at its end, by one process at a time.
#pragma once

#include "core/files.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace torvane {

class HeldFile {
public:
    enum class State { closed, open, cannotOpen, held /* by another process */ };

    HeldFile() = default;
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile();

    // Makes the file where there is none, and holds it until the end of this; what stands there stays. Others may read
    // it meanwhile.
    State open(const std::string& path);
    // What stands from `start` on, at most `limit` bytes; none at the end. False when that failed.
    bool read(uint64_t start, size_t limit, std::string& text) const;
    // At its end, as one piece, and onto the disk. False when that failed: a part of the text may stand there.
    bool append(std::string_view text);

private:
    intptr_t handle = -1; // of the system
};

} // namespace torvane
