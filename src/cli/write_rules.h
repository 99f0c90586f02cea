// What the console may write over. Whatever a command writes passes here before anything is done, so that a slip in the
// order of files, or a name that was taken, costs nobody a file. What these rules are to the user stands in the manual.
#pragma once

#include "core/file_kind.h"
#include "core/files.h"

#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace torvane {

// A file that is about to be written.
struct Output {
    std::string path;
    FileKind kind;
    bool onlyNew = false;  // not over a file of its kind either
    bool ofOption = false; // among CallFiles::outputs
};

// What a call names before it does anything; absolute paths, or empty ones.
struct CallFiles {
    std::vector<std::string> sources;
    std::string profile; // that it starts from: read whole by then, so a profile may be kept under its name
    std::vector<std::string> outputs; // of options
};

// The rules of one call of the console, which knows what it reads and what it has written. The rides of a batch share
// them.
class WriteRules {
public:
    // With force only those rules hold that keep a call from destroying its own work.
    WriteRules(bool force, CallFiles files);

    // Why the options do not go together: two of them would write one file. Empty when they do.
    std::string optionFault() const;
    // Why a file is not written; empty when it may be.
    std::string fault(const Output& output) const;
    // The first of these rules alone: never over a source, by whatever name.
    std::string sourceFault(const std::string& path) const;
    // Of every file that was written, so that a later one of the same call, under another name, is not written over it.
    void wrote(const std::string& path);

private:
    bool isWritten(const std::string& path) const;
    bool isAsked(const std::string& path) const;

    bool force;
    CallFiles files;
    std::set<FileIdentity> sources;
    mutable std::mutex guard; // of what is written
    std::set<FileIdentity> written;
};

} // namespace torvane
