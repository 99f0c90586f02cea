// Pieces that are written on a thread of their own while the next one is made: half of the time of a long text is the
// system's.
#pragma once

#include "core/files.h"

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <thread>

namespace torvane {

class WriteAside {
public:
    // Of blocks of so many bytes. The writer outlives this.
    WriteAside(const WritePiece& writer, size_t bytesOfBlock) : write(writer), blockBytes(bytesOfBlock) {}
    ~WriteAside();
    WriteAside(const WriteAside&) = delete;
    WriteAside& operator=(const WriteAside&) = delete;

    // Has the first bytes of a block written, and puts another block in its place. Without a thread to be had it writes
    // at once.
    void hand(std::unique_ptr<char[]>& block, size_t length);
    // Waits for what is under way; false when a piece could not be written.
    bool finish();

private:
    bool start();
    void run();

    const WritePiece& write;
    size_t blockBytes;
    std::unique_ptr<char[]> other = {}; // what is written, or waits to be filled
    size_t pending = 0;                 // bytes of it that are to be written
    bool taken = true, ends = false;
    std::mutex guard = {};
    std::condition_variable changed = {};
    std::thread thread = {};
};

} // namespace torvane
