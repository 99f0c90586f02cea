// What the user asked for, taken apart: options, command, entries, files. Knows no entry by name, and no command but
// those that stand in front of another one.
#pragma once

#include "command/entries.h"

#include <string>
#include <string_view>
#include <vector>

namespace torvane {

// An entry that a sweep takes through values, evenly apart.
struct SweptRange {
    std::string name;
    const char* unit = "";
    double from = 0, step = 0;
    size_t count = 0;
    bool ofPages = false; // given by --set
};

struct Request {
    bool help = false;                // --help
    bool version = false;             // --version
    bool save = false;                // --save
    bool json = false;                // --json
    bool force = false;               // --force
    bool quiet = false;               // --quiet
    bool prepare = false;             // --prepare, the same as the entry prepare=on
    std::string par;                  // --par FILE
    std::string profile;              // --profile FILE
    std::string graph;                // --graph FILE
    std::string page;                 // --page FILE
    std::vector<Assignment> against;  // --against NAME=VALUE
    std::string rows;                 // --rows FILE; "-": to standard output
    std::string curves;               // --curves NAME,NAME
    std::string x;                    // --x NAME
    std::string size;                 // --size WIDTHxHEIGHT
    bool dark = false;                // --dark
    std::string into;                 // --into FOLDER
    std::string saveProfile;          // --save-profile FILE
    bool asAngle = false;             // --as-angle, the same as the entry asAngle=on
    int jobs = 0;                     // --jobs N; 0: as many as there are cores
    bool sweep = false;               // "sweep" in front of the command
    bool resume = false;              // --resume
    bool recursive = false;           // --recursive
    std::string filesFrom;            // --files-from FILE; "-": from standard input
    bool fromStdin = false;           // --stdin
    double timeout = 0;               // --timeout SECONDS; 0: none
    std::vector<Assignment> settings; // --set NAME=VALUE
    std::string command;              // empty: none
    std::vector<Assignment> entries;  // NAME=VALUE behind the command
    std::vector<std::string> files;   // all else behind the command, as typed
    std::vector<SweptRange> ranges;   // of a sweep, which fills them: sweep_ranges.h
};

// The command that takes another one through many values of its entries.
constexpr std::string_view sweepWord = "sweep";

// An option as help and the documents tell it.
struct OptionInfo {
    std::string_view name;    // "--par"
    std::string_view value;   // "FILE"; empty: a flag
    std::string_view meaning; // one line
};
std::vector<OptionInfo> optionInfos();

// Takes the arguments without the program's name. An empty text on success, else what is wrong with them.
// Behind "--" there are no options; where it stands behind the command, files alone. After a fault the rest is read all
// the same, so that it is known whether the answer is to be JSON.
std::string readRequest(const std::vector<std::string>& arguments, Request& request);

// "NAME=VALUE" with the name of an entry in front; false for anything else, such as a path.
bool readAssignment(const std::string& argument, Assignment& assignment);

} // namespace torvane
