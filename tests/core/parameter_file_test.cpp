// The parameter file and profile files, and whole-file access under them.
#include "captured_screens.h"
#include "core/files.h"
#include "core/held_file.h"
#include "core/parameter_file.h"
#include "core/record_check.h"
#include "fit/fit_builder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <limits>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <utility>

namespace torvane {

namespace {

class ParameterFile : public testing::Test {
protected:
    template <typename Record>
    Bytes imageOf(const Record& record)
    {
        const auto* first = reinterpret_cast<const uint8_t*>(&record);
        return {first, first + sizeof record};
    }
    bool alerted()
    {
        return !shown.messages.empty() && std::exchange(shown.messages, {}).back().first == "alert";
    }

    static constexpr ParametersLoaded ready = ParametersLoaded::ready;
    CapturedScreens shown;
    ParameterBlock saved;
    TestFolder own;
    const std::string& folder = own.path;
    std::string settings = folder + "Torvane.par";
};

} // namespace

TEST_F(ParameterFile, aShortFileIsReadAsFarAsItGoes)
{
    EXPECT_EQ(loadParameters(shown.screens, settings, saved), ready); // none yet
    EXPECT_TRUE(shown.messages.empty());
    ParameterBlock block = defaultBlock();
    block.humanHeight = 190;
    block.thresholdSpeed = 9;
    Bytes bytes = imageOf(block);
    bytes.resize(offsetof(ParameterBlock, thresholdSpeed) + 3);
    writeBytes(settings, bytes);
    EXPECT_EQ(loadParameters(shown.screens, settings, saved), ready);
    EXPECT_EQ(saved.humanHeight, 190);
    EXPECT_NEAR(saved.thresholdSpeed, 5, 1e-12) << "the bytes that are missing are the default's";
    writeBytes(settings, {});
    EXPECT_EQ(loadParameters(shown.screens, settings, saved), ready);
    EXPECT_EQ(own.count(), 1u) << "nothing was set aside";
}

TEST_F(ParameterFile, unusableContentsAreToldAndKept)
{
    constexpr void (*spoilers[])(ParameterBlock&) = {
        [](ParameterBlock& b) { b.sprocketCount = 16; },
        [](ParameterBlock& b) { b.brakeMaterial[1][0] = -1; },
        [](ParameterBlock& b) { b.specificHeat[2] = std::nan(""); },
        [](ParameterBlock& b) { b.rideForce[3] = HUGE_VAL; },
        [](ParameterBlock& b) { std::memset(b.profileFileName, 'x', 264); }, // without an end
    };
    for (size_t i = 0; i < std::size(spoilers); ++i) {
        ParameterBlock block = defaultBlock();
        block.humanWeight = 77;
        spoilers[i](block);
        writeBytes(settings, imageOf(block));
        EXPECT_EQ(loadParameters(shown.screens, settings, saved), ready) << i;
        EXPECT_TRUE(alerted()) << i;
        EXPECT_EQ(saved.humanWeight, 60) << i;
        EXPECT_EQ(bytesOf(settings + ".unusable" + std::to_string(i + 1)), imageOf(block)) << i;
    }
}

TEST_F(ParameterFile, whatIsNoParameterFileStaysAsItIs)
{
    ParameterBlock block = defaultBlock();
    Bytes longer = imageOf(block);
    longer.push_back(0);
    const std::pair<const char*, Bytes> cases[] = {
        {"found a FIT file in place of parameters as 'Torvane.par'", FitBuilder().file()},
        {"found a file of another kind in place of parameters as 'Torvane.par'", longer},
        {"found a file of another kind in place of parameters as 'Torvane.par'", {'n', 'o', 't', 'e', 's'}},
    };
    for (const auto& [text, bytes] : cases) {
        writeBytes(settings, bytes);
        EXPECT_EQ(loadParameters(shown.screens, settings, saved), ParametersLoaded::readOnly) << text;
        EXPECT_EQ(shown.messages.back().second,
                  std::string(text) + ".\nthe default values are used, and nothing is written to it");
        EXPECT_TRUE(sameBytes(bytesOf(settings), bytes)) << text;
        EXPECT_EQ(saved.humanWeight, 60) << text;
    }
    std::filesystem::remove(settings);
    std::filesystem::create_directories(settings);
    EXPECT_EQ(loadParameters(shown.screens, settings, saved), ParametersLoaded::readOnly);
    EXPECT_TRUE(std::filesystem::is_directory(settings));
    EXPECT_EQ(own.count(), 1u);
    // A file whose bytes the system does not give.
    EXPECT_EQ(loadParameters(shown.screens, "/proc/self/mem", saved), ParametersLoaded::readOnly);
    EXPECT_TRUE(shown.messages.back().second.starts_with("failed to read 'mem'.\n"));
    EXPECT_EQ(loadParameters(shown.screens, folder + "none/Torvane.par", saved), ParametersLoaded::failed);
    EXPECT_EQ(shown.messages.back().second, "failed to open .par file");
}

TEST_F(ParameterFile, aProfileComesBackWholeOrLeavesTheModel)
{
    ParameterBlock block, other = {};
    setDefaults(block);
    block.humanWeight = 71.5;
    ModelState model = {};
    startModel(model, block);
    ModelState written = model;
    Calibration calibration = {}, read = {1.2F, 0.1F, 20000, 15};
    std::string path = folder + "Ünïcode rider.pro";
    ASSERT_EQ(saveProfile(shown.screens, model, calibration, block, path), 0);
    EXPECT_EQ(shown.status, "status : success to save current profile to 'Ünïcode rider.pro'");
    Bytes good = bytesOf(path);
    EXPECT_EQ(good.size(), 876u);
    EXPECT_EQ(std::count(good.begin() + 4, good.begin() + 20, 0), 16) << "no factor, no bytes";
    model = {};
    EXPECT_EQ(loadProfile(shown.screens, model, read, other, path), 0);
    EXPECT_EQ(shown.status, "status : success to load current profile from 'Ünïcode rider.pro'");
    EXPECT_STREQ(other.profileFileName, "Ünïcode rider.pro");
    EXPECT_EQ(std::memcmp(&model, &written, sizeof written), 0);
    EXPECT_EQ(read.day, 0);
    constexpr std::pair<size_t, uint8_t> faults[] = {{0, 3}, {20 + offsetof(ModelState, chainringCount), 4}};
    for (auto [offset, value] : faults) {
        Bytes bytes = good;
        bytes[offset] = value;
        writeBytes(path, bytes);
        EXPECT_EQ(loadProfile(shown.screens, model, calibration, block, path), 1) << offset;
        EXPECT_EQ(shown.status, "status : failed to read a file 'Ünïcode rider.pro'") << offset;
        EXPECT_EQ(std::memcmp(&model, &written, sizeof written), 0) << offset;
    }
    Bytes cut(good.begin(), good.begin() + 20 + 9); // a height, and a byte of the weight
    cut[20 + 7] ^= 0x80;
    writeBytes(path, cut);
    EXPECT_EQ(loadProfile(shown.screens, model, calibration, block, path), 0);
    EXPECT_EQ(model.humanHeight, -178);
    EXPECT_EQ(model.humanWeight, 71.5) << "what the file does not reach stays";
    Bytes odd = good; // a brake's temperature that is no number
    std::fill_n(odd.begin() + 20 + offsetof(ModelState, brakeTemperature), 8, uint8_t{0xFF});
    writeBytes(path, odd);
    EXPECT_EQ(loadProfile(shown.screens, model, calibration, block, path), 0);
    EXPECT_EQ(model.brakeTemperature[0], 0);
    EXPECT_EQ(loadProfile(shown.screens, model, calibration, block, folder + "missing.pro"), 1);
    EXPECT_EQ(shown.status, "status : failed to open an existing file");
    EXPECT_EQ(saveProfile(shown.screens, model, calibration, block, folder + "no folder/a.pro"), 1);
    EXPECT_EQ(shown.status, "status : failed to write current profile to a file");
}

// What is none stands for 1, whatever else there is.
TEST_F(ParameterFile, theCalibrationStandsInTheHeader)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    ParameterBlock block = defaultBlock();
    ModelState model = {};
    startModel(model, block);
    std::string path = folder + "a.pro";
    ASSERT_EQ(saveProfile(shown.screens, model, {}, block, path), 0);
    for (auto [given, factor] : {std::pair{0.5F, 0.5F}, {1.6F, 1.6F}, {1.61F, 1.0F}, {0.49F, 1.0F}, {nan, 1.0F}}) {
        Bytes bytes = bytesOf(path);
        Calibration calibration = {given, 0.06F, 20593, -4};
        std::memcpy(bytes.data() + 4, &calibration, sizeof calibration);
        writeBytes(path, bytes);
        ASSERT_EQ(loadProfile(shown.screens, model, calibration, block, path), 0);
        EXPECT_EQ(dragFactorOf(calibration), factor) << given;
        ASSERT_EQ(saveProfile(shown.screens, model, calibration, block, path), 0);
        EXPECT_EQ(bytesOf(path) == bytes, factor == given) << given << ": as it was, or cleared";
    }
}

TEST_F(ParameterFile, writesKeepLinksOwnersAndModesAndReportAFullDevice)
{
    Bytes bytes = {1, 2, 3};
    writeBytes(folder + "real", {9});
    std::filesystem::create_symlink("real", folder + "link");
    EXPECT_EQ(replaceFile(folder + "link", {bytes, bytes}), FileResult::ok);
    EXPECT_TRUE(std::filesystem::is_symlink(folder + "link"));
    EXPECT_EQ(bytesOf(folder + "real"), (Bytes{1, 2, 3, 1, 2, 3}));
    using std::filesystem::perms;
    std::filesystem::permissions(folder + "real", perms::owner_all | perms::group_write);
    bool mayGive = ::chown((folder + "real").c_str(), 1234, 2345) == 0; // root alone
    EXPECT_EQ(replaceFile(folder + "real", {bytes, bytes}), FileResult::ok);
    struct stat now = {};
    EXPECT_EQ(::stat((folder + "real").c_str(), &now), 0);
    EXPECT_EQ(now.st_mode & 07777, 0720u);
    EXPECT_TRUE(!mayGive || (now.st_uid == 1234 && now.st_gid == 2345)) << now.st_uid << ' ' << now.st_gid;
    EXPECT_EQ(own.count(), 2u) << "no neighbour is left behind";
    Bytes read;
    EXPECT_EQ(readFileStart(folder + "real", 4, read), FileResult::ok);
    EXPECT_EQ(read.size(), 4u);
    EXPECT_EQ(readWholeFile(folder, read), FileResult::cannotOpen);
    EXPECT_EQ(replaceFile(folder, {bytes}), FileResult::cannotOpen);
    for (const char* link : {"loose", "circle"})
        std::filesystem::create_symlink(link[0] == 'l' ? "new" : link, folder + link);
    EXPECT_EQ(replaceFile(folder + "loose", {bytes}), FileResult::ok);
    EXPECT_EQ(bytesOf(folder + "new"), bytes) << "where the link leads";
    EXPECT_EQ(replaceFile(folder + "circle", {bytes}), FileResult::cannotOpen);
    ASSERT_EQ(::mkfifo((folder + "pipe").c_str(), 0600), 0);
    EXPECT_EQ(replaceFile(folder + "pipe", {bytes}), FileResult::cannotOpen) << "without a wait for its reader";
    std::string full = folder + "full"; // a device of its own: a fault must not put a file in place of the machine's
    if (::mknod(full.c_str(), S_IFCHR | 0600, makedev(1, 7)) != 0 || !std::ofstream(full)) {
        std::filesystem::remove(full); // who is not root may not replace that one
        std::filesystem::create_symlink("/dev/full", full);
    }
    EXPECT_EQ(replaceFile(full, {bytes}), FileResult::writeFailed);
    EXPECT_TRUE(std::filesystem::is_character_file(full));
}

TEST_F(ParameterFile, filesAreAsTheSystemTellsThem)
{
    std::string path = folder + "held", text = "old";
    mode_t mask = ::umask(0);
    HeldFile held;
    EXPECT_EQ(held.open(path), HeldFile::State::open);
    ::umask(mask);
    struct stat now = {};
    ASSERT_EQ(::stat(path.c_str(), &now), 0);
    EXPECT_EQ(now.st_mode & 07777, 0666u);
    EXPECT_TRUE(held.append("one\n"));
    EXPECT_TRUE(held.read(1, 2, text));
    EXPECT_EQ(text, "ne");
    const timespec times[] = {{0, 0}, {12, 345}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    EXPECT_EQ(fileStamp(path), (FileStamp{4, 12'000'000'345}));
    Bytes read;
    EXPECT_EQ(readPipe(
                  folder + "none", 10, [] { return false; }, read),
              FileResult::cannotOpen);
}

TEST(Defaults, areThoseOfEachList)
{
    using List = std::vector<double>;
    auto of = [](const auto& array) { return List(std::begin(array), std::end(array)); };
    ParameterBlock b = defaultBlock();
    constexpr double v30 = 30 / 3.6, v40 = 40 / 3.6, v70 = 70 / 3.6; // m/s
    const std::tuple<const char*, List, List> lists[] = {
        {"rims, mm", of(b.rimDepth), {50, 50}},
        {"spokes", of(b.spokeCount), {16, 24}},
        {"model years", of(b.modelYear), {2011, 2011}},
        {"tyres, mm", of(b.tyreSize), {20, 23}},
        {"tyres, g", of(b.tyreWeight), {180, 210}},
        {"assist up to, kph", of(b.assistRangeSpeed), {25, 32, 45}},
        {"assist, ratio", of(b.assistRangeRatio), {2, 1.5, 1}},
        {"theory, W", of(b.theoryPower), {850, 400, 0}},
        {"theory, Nm", of(b.theoryTorque), {0, 40, 0}},
        {"theory, kgf", of(b.theoryForce), {0, 25, 0}},
        {"theory, most W", of(b.theoryMaxPower), {900, 0, 0}},
        {"theory, m/s", of(b.theoryVelocity), {0, 0, v40}},
        {"ride, m/s", of(b.rideVelocity), {v40, 0, 0, v30, v40, v40}},
        {"ride, W", of(b.ridePower), {400, 800, 0, 1000, 0, 0}},
        {"ride, kgf", of(b.rideForce), {0, 0, 0, -30, 0, 0}},
        {"ride from, m/s", of(b.rideStartVelocity), {0, 0, v70, v70, 0, 0}},
        {"ride to, m/s", of(b.rideEndVelocity), {0, v40, v30, v30, 0, 0}},
        {"ride, s", of(b.rideLegTime), {0, 15, 50, 10, 60, 0}},
        {"ride, m/s2", of(b.rideAccele), {0, 0.8, -0.2, -0.8, 0, 0}},
        {"ride, G", of(b.rideGravity), {0, 0.1, -0.03, -0.1, 0, 0}},
        {"ride, m", of(b.rideDistance), {0, 100, 500, 50, 300, 0}},
        {"ride, %", of(b.rideInclination), {0, 0, 0, 0, -7, 0}},
        {"braking, %", of(b.brakingInclination), {0, 0, -7, -7}},
        {"intension", of(b.intensionFirst), {60, 50}},
    };
    for (const auto& [name, found, wanted] : lists)
        EXPECT_EQ(found, wanted) << name;
}

// A choice beyond its list, of each part of the block.
TEST(RecordCheck, refusesWhatNoListHas)
{
    ParameterBlock block = defaultBlock();
    ASSERT_TRUE(isSound(block));
    for (int32_t* choice :
         {&block.theoryCalculator, &block.theoryTarget, &block.torqueOrForce, &block.rideMode, &block.rideTarget,
          &block.ridePowerBase[2], &block.startGearMode[1], &block.startGearIndex[1], &block.inclinationLimit,
          &block.intensionCase, &block.analysePowerBase, &block.createOutput.fitFormat, &block.createOutput.sportIndex,
          &block.combineOutput.fitFormat, &block.convertOutput.fitFormat, &block.addOutput.fitFormat,
          &block.divideOutput.fitFormat, &block.excludeOutput.sportIndex, &block.timestampOutput.fitFormat}) {
        for (int32_t beyond : {-1, 1000}) {
            int32_t own = std::exchange(*choice, beyond);
            EXPECT_FALSE(isSound(block)) << beyond << " as number " << choice - reinterpret_cast<int32_t*>(&block);
            *choice = own;
        }
    }
}

} // namespace torvane
