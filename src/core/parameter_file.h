// The two files that keep the user's work: the parameter file, the image of the block of defaults beside the program,
// and profile files, a header and the image of a model's state. Raw little-endian records.
#pragma once

#include "core/parameter_block.h"
#include "core/screens.h"

#include <functional>
#include <string>

namespace torvane {

// Of a profile file: in the header format and calibration, the body is a ModelState.
constexpr int32_t profileFormat = 2;
constexpr size_t profileHeaderSize = sizeof profileFormat + sizeof(Calibration);
static_assert(profileHeaderSize == 20);
constexpr size_t profileFileSize = profileHeaderSize + sizeof(ModelState);

// "Torvane.par" in the folder of the program.
std::string parameterFilePath();

// What reading a parameter file came to.
enum class ParametersRead {
    ok,       // a short file as far as it goes, over the defaults
    missing,  // there is none yet
    unusable, // it holds figures that cannot be computed with
    refused,  // it cannot be read, or it is something else: nobody may write over it or move it
};

// Reads a parameter file into a block, which holds the defaults where that was not ok. Tells nobody.
ParametersRead readParameters(const std::string& path, ParameterBlock& block);

// What is wrong with an unusable or refused file, in words.
std::string parametersFault(const std::string& path, ParametersRead read);

// Gives an unusable file another name beside its own, which comes back; empty when that failed.
std::string keepParametersAside(const std::string& path);

enum class ParametersLoaded {
    ready,
    readOnly, // the defaults hold, and the file is not to be written
    failed,   // the defaults could not be written: the program should end
};

// Fills the block of defaults at the start of the desktop program. No file: the defaults, which are written at once. An
// unusable file is kept beside under another name, and the defaults are written; one that was refused, or cannot be
// moved, stays as it is. Whatever is not ready is told in a message box.
ParametersLoaded loadParameters(Screens& screens, const std::string& path, ParameterBlock& saved);

// Writes the whole file anew. False when that failed; the old file stands. Tells nobody.
bool writeParameters(const std::string& path, const ParameterBlock& block);

// The same; a failure was told in a message box.
bool saveParameters(Screens& screens, const std::string& path, const ParameterBlock& block);

// Whether a model out of a file may come into force, whose numbers can all be computed with.
using ProfileCheck = std::function<bool(const ModelState&)>;

// Reads a profile file into state and calibration and its name into block. Returns 0, or 1 with both untouched; the
// status line tells either. What must follow on success (fetchProfile, derived quantities, report) is the caller's.
int loadProfile(
    Screens& screens, ModelState& state, Calibration& calibration, ParameterBlock& block, const std::string& path,
    const ProfileCheck& check = [](const ModelState&) { return true; });

// Writes both as a profile file and its name into block. Returns 0, or 1; the status line tells either.
int saveProfile(Screens& screens, const ModelState& state, const Calibration& calibration, ParameterBlock& block,
                const std::string& path);

} // namespace torvane
