#include "core/parameter_file.h"

#include "core/file_kind.h"
#include "core/files.h"
#include "core/record_check.h"
#include "core/screens.h"
#include "core/text.h"

#include <algorithm>
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

// A parameter file has words that are 0, and a text has no such byte. A longer one than this version's there has never
// been.
bool mayBeParameters(std::span<const uint8_t> bytes, const std::string& path)
{
    if (bytes.empty())
        return true;
    FileKind kind = kindOfContent(bytes, path);
    return (kind == FileKind::parameters || kind == FileKind::unknown) && bytes.size() <= sizeof(ParameterBlock) &&
           std::ranges::find(bytes, 0) != bytes.end();
}

// The defaults hold, since the file is of no use.
ParametersLoaded startWithout(Screens& screens, const std::string& path, ParametersRead read,
                              const ParameterBlock& saved)
{
    std::string aside = read == ParametersRead::unusable ? keepParametersAside(path) : std::string();
    std::string kept =
        aside.empty() ? "nothing is written to it" : "the file is kept as '" + shownFileName(aside) + "'";
    screens.showMessage("alert", parametersFault(path, read) + ".\nthe default values are used, and " + kept);
    if (aside.empty())
        return ParametersLoaded::readOnly;
    return saveParameters(screens, path, saved) ? ParametersLoaded::ready : ParametersLoaded::failed;
}

// The first bytes of a profile file, packed.
struct ProfileHeader {
    int32_t format = profileFormat;
    Calibration calibration = {};
};
static_assert(sizeof(ProfileHeader) == profileHeaderSize);

// The body of a profile file over what the state holds; false when the file has another format.
bool readProfileBody(std::span<const uint8_t> bytes, ModelState& state, Calibration& calibration)
{
    ProfileHeader header;
    if (bytes.size() < profileHeaderSize)
        return false;
    layOver(header, bytes.first(profileHeaderSize));
    if (header.format != profileFormat)
        return false;
    calibration = soundCalibration(header.calibration);
    layOver(state, bytes.subspan(profileHeaderSize));
    settleLeftovers(state);
    return isSound(state);
}

} // namespace

std::string parameterFilePath()
{
    return programFolder() + "Torvane.par";
}

ParametersRead readParameters(const std::string& path, ParameterBlock& block)
{
    std::vector<uint8_t> bytes;
    setDefaults(block);
    if (!fileExists(path))
        return ParametersRead::missing;
    if (readFileStart(path, kindBytes, bytes) != FileResult::ok || !mayBeParameters(bytes, path))
        return ParametersRead::refused;
    layOver(block, bytes);
    block.calibration = soundCalibration(block.calibration);
    if (isSound(block))
        return ParametersRead::ok;
    setDefaults(block);
    return ParametersRead::unusable;
}

std::string parametersFault(const std::string& path, ParametersRead read)
{
    FileKind kind = fileKind(path);
    if (read == ParametersRead::unusable)
        return "found unusable contents in '" + shownFileName(path) + "'";
    if (kind == FileKind::unreadable)
        return "failed to read '" + shownFileName(path) + "'";
    return "found " + std::string(kindName(kind)) + " in place of parameters as '" + shownFileName(path) + "'";
}

std::string keepParametersAside(const std::string& path)
{
    constexpr int mostKept = 1000;
    for (int number = 1; number < mostKept; ++number) {
        std::string aside = formatText("%s.unusable%d", path.c_str(), number);
        if (!fileExists(aside))
            return renameFile(path, aside) ? aside : std::string();
    }
    return {};
}

ParametersLoaded loadParameters(Screens& screens, const std::string& path, ParameterBlock& saved)
{
    ParametersRead read = readParameters(path, saved);
    if (read == ParametersRead::ok)
        return ParametersLoaded::ready;
    if (read != ParametersRead::missing)
        return startWithout(screens, path, read, saved);
    return saveParameters(screens, path, saved) ? ParametersLoaded::ready : ParametersLoaded::failed;
}

bool writeParameters(const std::string& path, const ParameterBlock& block)
{
    return replaceFile(path, {bytesOf(block)}) == FileResult::ok;
}

bool saveParameters(Screens& screens, const std::string& path, const ParameterBlock& block)
{
    if (writeParameters(path, block))
        return true;
    screens.showMessage("alert", "failed to open .par file");
    return false;
}

int loadProfile(Screens& screens, ModelState& state, Calibration& calibration, ParameterBlock& block,
                const std::string& path, const ProfileCheck& check)
{
    std::vector<uint8_t> bytes;
    FileResult result = readFileStart(path, profileFileSize, bytes);
    if (result == FileResult::cannotOpen) {
        screens.setStatus("status : failed to open an existing file");
        return 1;
    }
    std::string name = shownFileName(path);
    ModelState read = state;
    Calibration learned = {};
    if (result != FileResult::ok || !readProfileBody(bytes, read, learned) || !check(read)) {
        screens.setStatus(formatText("status : failed to read a file '%s'", name.c_str()));
        return 1;
    }
    state = read;
    calibration = learned;
    setProfileFileName(block, path);
    screens.setStatus(formatText("status : success to load current profile from '%s'", name.c_str()));
    return 0;
}

int saveProfile(Screens& screens, const ModelState& state, const Calibration& calibration, ParameterBlock& block,
                const std::string& path)
{
    ProfileHeader header = {profileFormat, soundCalibration(calibration)};
    ModelState written = state;
    settleLeftovers(written);
    if (replaceFile(path, {bytesOf(header), bytesOf(written)}) != FileResult::ok) {
        screens.setStatus("status : failed to write current profile to a file");
        return 1;
    }
    setProfileFileName(block, path);
    screens.setStatus(formatText("status : success to save current profile to '%s'", shownFileName(path).c_str()));
    return 0;
}

} // namespace torvane
