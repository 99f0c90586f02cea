// The one list of commands, and the menu that shows them. Menu, accelerators, greying, dispatch and the console read
// it.
#pragma once

#include "core/command_ids.h"
#include "core/file_kind.h"
#include "core/parameter_block.h"
#include "core/result_status.h"
#include "forms/sheet.h"
#include "report/figures.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace torvane {

struct Session;

// What a command's first entry asks the user.
enum class Entry : uint8_t {
    immediate,   // nothing
    dialog,      // modal dialog `form`
    sheet,       // property sheet: the pages of `sheet`
    openProfile, // file prompts
    saveProfile,
    openFit,
};

// Whose work it is.
enum class Work : uint8_t {
    frontEnd, // windows, fonts, printing: nothing for the console
    report,   // short, on the main thread, into the upper pane: `operation`
    settings, // profile, condition, preference: short, on the main thread (settings_command.h)
    worker,   // long: the two-entry protocol
};

// Which record of last choices a long command moves to itself before its dialog opens.
enum class Family : uint8_t { none, theory, ride }; // theoryCalculator, rideMode

// When the graph window opens after a long command.
enum class GraphWhen : uint8_t {
    never,
    bandPowerVelocity, // bandGraphPowerVelocity is set
    express,           // expressGraph is set and no fatal bit came back
    bandCornering,     // bandGraphCornering is set
    curves,            // expressGraph is set and there are curves
};

// What a command has to do with the ride of the session.
enum class RideUse : uint8_t {
    none,
    chosen,   // loads the one that was chosen
    loaded,   // works on the loaded one
    ready,    // on a loaded one that lacks cadence or power and can be analysed
    analysed, // likewise, once it has been
};

// What a status of a command is: bits of result_status.h, or a code of fit_codes.h.
enum class Answers : uint8_t { bits, codes };

// The files that the console takes for a command, the destination last.
struct CommandFiles {
    size_t least = 0, most = 0;
    FileKind writes = FileKind::nothing; // of the destination; nothing: there is none
    const char* pattern = "";            // as the help shows them
    bool onlyNew = false;                // the destination must not be there
    bool inParts = false;                // the destination names the files that are written
    bool byOption = false;               // the destination is named by --save-profile, and need not be there

    bool destinationIsLast() const
    {
        return writes != FileKind::nothing && !byOption;
    }
    // With the least number of files some commands have sources alone.
    bool destinationIsOptional() const
    {
        return byOption || (writes != FileKind::nothing && least == 1 && most > least);
    }
};

// What becomes of the menu entries of the loaded ride after a long command.
enum class MenuAfter : uint8_t { none, loaded, expressed, analysed, toolRan, oneStroke };

struct Command {
    int id;
    const char* label;        // of the menu; the console takes it in lower case with hyphens
    const char* meaning = ""; // one line: what it answers or makes
    char key = 0;             // with Ctrl; 0 none
    bool shift = false;       // and Shift
    Entry entry = Entry::immediate;
    int form = 0; // dialog template of the first entry, 0 none
    Sheet sheet = Sheet::none;
    Work work = Work::frontEnd;
    void (*commit)(ParameterBlock& saved, ParameterBlock& working) = nullptr; // after the dialog or sheet, null none
    // A report, what follows a sheet or the prompt of a profile file, or what runs on the worker; null for the front
    // end's own.
    ResultStatus (*operation)(Session& session) = nullptr;
    Family family = Family::none;
    int32_t member = 0; // TheoryCalculator or RideMode of the family
    Answers answers = Answers::bits;
    RideUse ride = RideUse::none;
    bool takesSettings = false; // the console takes the settings of the analysis besides the form's entries
    CommandFiles files = {};
    GraphWhen graph = GraphWhen::never;
    MenuAfter menu = MenuAfter::none;
    // The names that its figures can have, for help; null: it has none.
    std::vector<FigureInfo> (*figures)(const Command& command) = nullptr;
    bool hasRows = false;     // it has a table that can be written as rows
    bool hasPage = false;     // it leaves a page to look at
    bool showsLower = false;  // after its run the lower pane takes the focus and scrolls to its top
    const char* aliases = ""; // more console names, separated by blanks
};

// Rising by id.
std::span<const Command> commandTable();
const Command* findCommand(int id);                       // null: no such command
const Command* findCommand(std::string_view consoleName); // number, label with hyphens, or alias; null: no such command
std::string consoleName(const Command& command);          // label in lower case with hyphens
const Command* findCommand(Sheet sheet);                  // that opens it
bool worksOnLoadedRide(const Command& command);
// Whether a command that ended with this status did what it is for, warnings included.
bool succeeded(const Command& command, ResultStatus status);

// The menu bar, in order. A menu or submenu holds what follows it up to its end; a submenu of recent files holds them
// for its command.
enum class MenuKind : uint8_t { menu, submenu, end, command, separator, recent };

struct MenuItem {
    MenuKind kind;
    const char* label = nullptr; // of a menu or submenu; a command has its own
    int command = 0;
};

std::span<const MenuItem> menuTable();

} // namespace torvane
