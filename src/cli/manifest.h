// What a folder of --into holds by now: FOLDER/torvane-batch.ndjson, a line for each ride that a batch has run. A later
// batch reads what need not be done again. A line is there only once the file that it tells of is on the disk, so that
// it may be lost by whatever ends the program, and is never wrong.
#pragma once

#include "core/files.h"
#include "core/held_file.h"

#include <chrono>
#include <string>
#include <unordered_map>

namespace torvane {

// A ride as its line tells of it.
struct ManifestLine {
    std::string source;   // absolute path
    FileStamp stamp = {}; // of the source, before it was read
    std::string outcome;  // "done", "failed", "stopped"
    std::string output;   // absolute path; empty: none was written
    std::string figures;  // a JSON object; empty: none
};

class Manifest {
public:
    // `options`: hash of all that an answer depends on besides its source.
    Manifest(std::string folder, std::string options);

    // Opens the file for this batch alone; with `resume` reads what it tells. The fault; empty on success.
    std::string open(bool resume);
    // Whether a ride was done before this batch: its source as it is now, with these options, and its output there as a
    // whole. On any thread.
    bool isDone(const std::string& source, const std::string& output) const;

    // The figures of such a ride, as a JSON object; empty where there are none.
    std::string figuresOf(const std::string& output) const;

    // Notes a line. It goes to the disk with its like: after a second, or many of them.
    void add(const ManifestLine& line);
    // What is noted goes to the disk.
    void flush();
    // Why lines are lost; empty where none is.
    const std::string& fault() const
    {
        return lost;
    }

private:
    struct Done {
        uint64_t ride;                     // hash of source, stamp and options
        uint64_t bytes;                    // of the output
        uint64_t figuresAt, figuresLength; // in the file
    };
    using Clock = std::chrono::steady_clock;

    std::string read();
    void takeLines(std::string& text, uint64_t behind);
    void take(std::string_view line, uint64_t start);
    const Done* find(const std::string& output) const;

    std::string folder, path, options;
    HeldFile file;
    std::unordered_map<uint64_t, Done> done; // by the hash of the output's name in the folder
    std::string waiting, lost;
    Clock::time_point flushed = Clock::now();
};

} // namespace torvane
