#include "core/parameter_file.h"

#include "core/files.h"
#include "core/record_check.h"
#include "core/screens.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace torvane {

namespace {

template <typename Record>
std::span<const uint8_t> bytesOf(const Record& record)
{
    return {reinterpret_cast<const uint8_t*>(&record), sizeof record};
}

// Lays the bytes over a record, as far as they go.
template <typename Record>
void layOver(Record& record, std::span<const uint8_t> bytes)
{
    std::ranges::copy(bytes.first(std::min(bytes.size(), sizeof record)), reinterpret_cast<uint8_t*>(&record));
}

void setProfileFileName(ParameterBlock& block, const std::string& path)
{
    std::string_view name = fileName(path);
    size_t length = std::min(name.size(), sizeof block.profileFileName - 1);
    // Never cut inside a UTF-8 sequence.
    while (length > 0 && length < name.size() && (name[length] & 0xC0) == 0x80)
        --length;
    std::memset(block.profileFileName, 0, sizeof block.profileFileName);
    std::memcpy(block.profileFileName, name.data(), length);
}

// Moves a parameter file that cannot be used out of the way; the name it has now, empty when it could not be moved.
std::string keepAside(const std::string& path)
{
    constexpr int mostKept = 1000;
    for (int number = 1; number < mostKept; ++number) {
        std::string aside = formatText("%s.unusable%d", path.c_str(), number);
        if (!fileExists(aside))
            return renameFile(path, aside) ? aside : std::string();
    }
    return {};
}

void tellUnusable(const std::string& path, const std::string& aside)
{
    std::string text = "found unusable contents in '" + shownFileName(path) + "'.\nthe default values are used";
    if (!aside.empty())
        text += ", and the file is kept as '" + shownFileName(aside) + "'";
    theScreens.showMessage("alert", text);
}

// Writes the defaults where no usable file stands. One that could not be moved aside is not overwritten: it may be of
// use to somebody.
bool writeFirstParameters(const std::string& path, bool found)
{
    std::string aside = found ? keepAside(path) : std::string();
    if (found)
        tellUnusable(path, aside);
    return (found && aside.empty()) || saveParameters(path, savedBlock);
}

// The body of a profile file over what modelState holds; false when the file has another format.
bool readProfileBody(std::span<const uint8_t> bytes, ModelState& state)
{
    int32_t format = 0;
    if (bytes.size() < profileHeaderSize)
        return false;
    std::memcpy(&format, bytes.data(), sizeof format);
    if (format != profileFormat)
        return false;
    layOver(state, bytes.subspan(profileHeaderSize));
    settleLeftovers(state);
    return isSound(state);
}

} // namespace

std::string parameterFilePath()
{
    return programFolder() + "Torvane.par";
}

bool readParameters(const std::string& path, ParameterBlock& block)
{
    std::vector<uint8_t> bytes;
    setDefaults(block);
    if (readFileStart(path, sizeof block, bytes) != FileResult::ok)
        return false;
    layOver(block, bytes);
    if (isSound(block))
        return true;
    setDefaults(block);
    return false;
}

bool loadParameters(const std::string& path)
{
    bool found = fileExists(path);
    bool written = true;
    if (!found || !readParameters(path, savedBlock)) {
        setDefaults(savedBlock);
        written = writeFirstParameters(path, found);
    }
    workingBlock = savedBlock;
    return written;
}

bool saveParameters(const std::string& path, const ParameterBlock& block)
{
    if (replaceFile(path, {bytesOf(block)}) == FileResult::ok)
        return true;
    theScreens.showMessage("alert", "failed to open .par file");
    return false;
}

int loadProfile(ParameterBlock& block, const std::string& path, const ProfileCheck& check)
{
    std::vector<uint8_t> bytes;
    FileResult result = readFileStart(path, profileFileSize, bytes);
    if (result == FileResult::cannotOpen) {
        theScreens.setStatus("status : failed to open an existing file");
        return 1;
    }
    std::string name = shownFileName(path);
    ModelState state = modelState;
    if (result != FileResult::ok || !readProfileBody(bytes, state) || !check(state)) {
        theScreens.setStatus(formatText("status : failed to read a file '%s'", name.c_str()));
        return 1;
    }
    modelState = state;
    setProfileFileName(block, path);
    theScreens.setStatus(formatText("status : success to load current profile from '%s'", name.c_str()));
    return 0;
}

int saveProfile(ParameterBlock& block, const std::string& path)
{
    std::array<uint8_t, profileHeaderSize> header = {};
    std::memcpy(header.data(), &profileFormat, sizeof profileFormat);
    ModelState state = modelState;
    settleLeftovers(state);
    if (replaceFile(path, {header, bytesOf(state)}) != FileResult::ok) {
        theScreens.setStatus("status : failed to write current profile to a file");
        return 1;
    }
    setProfileFileName(block, path);
    theScreens.setStatus(formatText("status : success to save current profile to '%s'", shownFileName(path).c_str()));
    return 0;
}

} // namespace torvane
