// The two files that keep the user's work: the parameter file, the image of savedBlock beside the program, and profile
// files, a header and the image of modelState. Raw little-endian records.
#pragma once

#include "core/parameter_block.h"

#include <functional>
#include <string>

namespace torvane {

// Of a profile file: the format stands first in the header, the body is a ModelState.
constexpr int32_t profileFormat = 2;
constexpr size_t profileHeaderSize = 20;
constexpr size_t profileFileSize = profileHeaderSize + sizeof(ModelState);

// "Torvane.par" in the folder of the program.
std::string parameterFilePath();

// Fills savedBlock at the start of the program, and workingBlock as its copy. No file: the defaults, which are written
// at once. A short file is read as far as it goes over the defaults. A file that cannot be read or used is told in a
// message box, kept beside under another name, and the defaults hold. False when the defaults could not be written:
// the user was told, and the program should end.
bool loadParameters(const std::string& path);

// Reads a parameter file into a block, over the defaults. False when it cannot be read or used; the block then holds
// the defaults.
bool readParameters(const std::string& path, ParameterBlock& block);

// Writes the whole file anew. False when that failed; the old file stands, and the user was told in a message box.
bool saveParameters(const std::string& path, const ParameterBlock& block);

// Whether a model out of a file may come into force, whose numbers can all be computed with.
using ProfileCheck = std::function<bool(const ModelState&)>;

// Reads a profile file into modelState and its name into block. Returns 0, or 1 with modelState untouched; the status
// line tells either. What must follow on success (fetchProfile, derived quantities, report) is the caller's.
int loadProfile(
    ParameterBlock& block, const std::string& path, const ProfileCheck& check = [](const ModelState&) { return true; });

// Writes modelState as a profile file and its name into block. Returns 0, or 1; the status line tells either.
int saveProfile(ParameterBlock& block, const std::string& path);

} // namespace torvane
