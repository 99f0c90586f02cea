// A question to the calculator, and what comes back.
#pragma once

#include "torvane/entries.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace torvane::library {

// A command with what its dialog asks. Paths are UTF-8.
struct Question {
    std::string command = {};              // number, name or short name, as the console has them: "power-and-velocity"
    Entries entries = {};                  // what is not given holds as it is
    std::vector<std::string> sources = {}; // files that it reads: rides, in the order of its dialog
    std::string destination = {};          // the file that it writes, which is created or replaced
    bool graph = false;                    // whether the curves are wanted
};

// A message that the programs show in a box.
struct Message {
    std::string title; // "warning", "error" ...
    std::string text;
};

struct Series {
    std::string name;           // with its unit: "velocity[kph]"
    std::vector<double> values; // one for each point
};

// The curves of a simulation: series of one length, the first of which the others are drawn over.
struct Graph {
    std::vector<Series> series;
};

// A number of the answer, to the last digit.
struct Figure {
    std::string name; // stable: "velocity", "shellDrag", as `torvane-cli help COMMAND` lists them
    double value;     // finite
    std::string unit; // "kph", "kgf"; empty: a bare number
};

// Figures that there are several times, such as those of each sector of a comparison.
struct FigureGroup {
    std::string name;
    std::vector<std::vector<Figure>> items;
};

// More will join these as the library grows; nothing of them will go.
struct Answer {
    std::string command = {};    // the command's name
    std::uint32_t status = 0;    // the status word; 0: there is nothing to say about the result
    bool warned = false;         // there is a result, and the texts say what to mind about it
    std::string upper = {};      // what stands on the upper pane: the profile
    std::string lower = {};      // on the lower pane: the report
    std::string statusLine = {}; // on the status line
    std::vector<Message> messages = {};
    std::vector<std::string> notes = {}; // entries that had no effect, each in a line
    std::optional<Graph> graph = {};     // where one was wanted, and the command has one
    std::vector<std::string> files = {}; // that were written, absolute paths
    std::vector<Figure> figures = {};    // every number of the texts outside of their tables
    std::vector<FigureGroup> groups = {};
};

} // namespace torvane::library
