// The parameter file and profile files, and whole-file access under them.
#include "core/files.h"
#include "core/parameter_file.h"
#include "core/screens.h"
#include "fit/fit_builder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>

namespace torvane {

namespace {

std::string lastBox, lastStatus;

class ParameterFile : public testing::Test {
protected:
    void SetUp() override
    {
        lastBox.clear();
        lastStatus.clear();
        screens.showMessage = [](std::string_view title, std::string_view text) {
            lastBox = std::string(title) + ": " + std::string(text);
        };
        screens.setStatus = [](std::string_view text) { lastStatus = text; };
    }

    template <typename Record>
    std::vector<uint8_t> bytesOf(const Record& record)
    {
        const auto* first = reinterpret_cast<const uint8_t*>(&record);
        return {first, first + sizeof record};
    }
    void write(const std::string& path, const std::vector<uint8_t>& bytes)
    {
        ASSERT_EQ(replaceFile(path, {bytes}), FileResult::ok);
    }
    size_t filesInFolder()
    {
        size_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder))
            ++count;
        return count;
    }

    TestFolder own;
    const std::string& folder = own.path;
};

} // namespace

TEST_F(ParameterFile, aFirstStartWritesTheDefaults)
{
    std::string path = folder + "Torvane.par";
    EXPECT_TRUE(loadParameters(path));
    EXPECT_EQ(lastBox, "");
    EXPECT_EQ(std::filesystem::file_size(path), 2416u);
    EXPECT_EQ(savedBlock.humanWeight, 60);
    EXPECT_EQ(workingBlock.sprocket[14], 35);
    EXPECT_EQ(filesInFolder(), 1u) << "no neighbour is left behind";
}

TEST_F(ParameterFile, aShortOrLongFileIsReadAsFarAsItGoes)
{
    ParameterBlock block;
    setDefaults(block);
    block.humanHeight = 190;
    block.thresholdSpeed = 9;
    std::vector<uint8_t> bytes = bytesOf(block);
    bytes.resize(offsetof(ParameterBlock, thresholdSpeed) + 3);
    write(folder + "Torvane.par", bytes);
    EXPECT_TRUE(loadParameters(folder + "Torvane.par"));
    EXPECT_EQ(savedBlock.humanHeight, 190);
    EXPECT_NEAR(savedBlock.thresholdSpeed, 5, 1e-12) << "the bytes that are missing are the default's";
    bytes = bytesOf(block);
    bytes.insert(bytes.end(), 700, 0xEE); // of a later version: read as far as this one knows
    write(folder + "Torvane.par", bytes);
    EXPECT_TRUE(loadParameters(folder + "Torvane.par"));
    EXPECT_EQ(savedBlock.thresholdSpeed, 9);
    EXPECT_EQ(filesInFolder(), 1u) << "nothing was set aside";
}

TEST_F(ParameterFile, unusableContentsAreToldAndKept)
{
    struct Case {
        const char* name;
        void (*spoil)(ParameterBlock&);
    };
    constexpr Case cases[] = {
        {"count", [](ParameterBlock& b) { b.sprocketCount = 16; }},
        {"negative index", [](ParameterBlock& b) { b.brakeMaterial[1][0] = -1; }},
        {"target of another mode", [](ParameterBlock& b) { b.rideMode = 3, b.rideTarget = 4; }},
        {"mode", [](ParameterBlock& b) { b.rideMode = 6; }},
        {"no number", [](ParameterBlock& b) { b.specificHeat[2] = std::nan(""); }},
        {"infinite", [](ParameterBlock& b) { b.rideForce[3] = std::numeric_limits<double>::infinity(); }},
        {"sport", [](ParameterBlock& b) { b.divideOutput.sportIndex = 9; }},
        {"name without an end", [](ParameterBlock& b) { std::memset(b.profileFileName, 'x', 264); }},
    };
    std::string path = folder + "Torvane.par";
    for (size_t i = 0; i < std::size(cases); ++i) {
        ParameterBlock block;
        setDefaults(block);
        block.humanWeight = 77;
        cases[i].spoil(block);
        write(path, bytesOf(block));
        lastBox.clear();
        EXPECT_TRUE(loadParameters(path)) << cases[i].name;
        EXPECT_EQ(lastBox.substr(0, 6), "alert:") << cases[i].name;
        EXPECT_EQ(savedBlock.humanWeight, 60) << cases[i].name;
        std::vector<uint8_t> kept;
        EXPECT_EQ(readWholeFile(path + ".unusable" + std::to_string(i + 1), kept), FileResult::ok) << cases[i].name;
        EXPECT_EQ(kept, bytesOf(block)) << cases[i].name;
    }
}

TEST_F(ParameterFile, aFolderInItsPlaceIsKeptAsideAndNoFolderIsTold)
{
    std::string path = folder + "Torvane.par";
    std::filesystem::create_directories(path);
    EXPECT_TRUE(loadParameters(path));
    EXPECT_EQ(lastBox.substr(0, 6), "alert:");
    EXPECT_TRUE(std::filesystem::is_directory(path + ".unusable1"));
    EXPECT_EQ(std::filesystem::file_size(path), 2416u);
    EXPECT_FALSE(loadParameters(folder + "none/Torvane.par"));
    EXPECT_EQ(lastBox, "alert: failed to open .par file");
}

TEST_F(ParameterFile, aProfileComesBackWhole)
{
    ParameterBlock block;
    setDefaults(block);
    block.humanWeight = 71.5;
    startModel(block);
    ModelState written = modelState;
    std::string path = folder + "Ünïcode rider.pro";
    EXPECT_EQ(saveProfile(block, path), 0);
    EXPECT_STREQ(block.profileFileName, "Ünïcode rider.pro");
    EXPECT_EQ(lastStatus, "status : success to save current profile to 'Ünïcode rider.pro'");
    EXPECT_EQ(std::filesystem::file_size(path), 876u);
    modelState = {};
    ParameterBlock other = {};
    EXPECT_EQ(loadProfile(other, path), 0);
    EXPECT_EQ(std::memcmp(&modelState, &written, sizeof written), 0);
    EXPECT_STREQ(other.profileFileName, "Ünïcode rider.pro");
    EXPECT_EQ(lastStatus, "status : success to load current profile from 'Ünïcode rider.pro'");
}

TEST_F(ParameterFile, aProfileThatCannotBeUsedLeavesTheModel)
{
    ParameterBlock block;
    setDefaults(block);
    startModel(block);
    ModelState before = modelState;
    std::string path = folder + "a.pro";
    ASSERT_EQ(saveProfile(block, path), 0);
    std::vector<uint8_t> good;
    ASSERT_EQ(readWholeFile(path, good), FileResult::ok);
    constexpr std::pair<size_t, uint8_t> faults[] = {{0, 3}, {20 + offsetof(ModelState, chainringCount), 4}};
    for (auto [offset, value] : faults) {
        std::vector<uint8_t> bytes = good;
        bytes[offset] = value;
        write(path, bytes);
        EXPECT_EQ(loadProfile(block, path), 1) << offset;
        EXPECT_EQ(lastStatus, "status : failed to read a file 'a.pro'") << offset;
        EXPECT_EQ(std::memcmp(&modelState, &before, sizeof before), 0) << offset;
    }
    std::vector<uint8_t> cut(good.begin(), good.begin() + 20 + 9); // a height, and a byte of the weight
    cut[20 + 7] ^= 0x80;
    write(path, cut);
    EXPECT_EQ(loadProfile(block, path), 0);
    EXPECT_EQ(modelState.humanHeight, -178);
    EXPECT_EQ(modelState.humanWeight, 60) << "what the file does not reach stays";
    EXPECT_EQ(loadProfile(block, folder + "missing.pro"), 1);
    EXPECT_EQ(lastStatus, "status : failed to open an existing file");
    EXPECT_EQ(saveProfile(block, folder + "no folder/a.pro"), 1);
    EXPECT_EQ(lastStatus, "status : failed to write current profile to a file");
}

TEST_F(ParameterFile, writesKeepLinksAndModesAndReportAFullDevice)
{
    std::vector<uint8_t> bytes = {1, 2, 3};
    write(folder + "real", {9});
    std::filesystem::create_symlink("real", folder + "link");
    EXPECT_EQ(replaceFile(folder + "link", {bytes, bytes}), FileResult::ok);
    EXPECT_TRUE(std::filesystem::is_symlink(folder + "link"));
    std::vector<uint8_t> read;
    EXPECT_EQ(readWholeFile(folder + "real", read), FileResult::ok);
    EXPECT_EQ(read, (std::vector<uint8_t>{1, 2, 3, 1, 2, 3}));
    using std::filesystem::perms;
    std::filesystem::permissions(folder + "real", perms::owner_all | perms::group_write);
    EXPECT_EQ(replaceFile(folder + "real", {bytes, bytes}), FileResult::ok);
    EXPECT_EQ(std::filesystem::status(folder + "real").permissions(), perms::owner_all | perms::group_write);
    EXPECT_EQ(filesInFolder(), 2u) << "no neighbour is left behind";
    EXPECT_EQ(readFileStart(folder + "real", 4, read), FileResult::ok);
    EXPECT_EQ(read.size(), 4u);
    EXPECT_EQ(readWholeFile(folder, read), FileResult::cannotOpen);
    EXPECT_EQ(replaceFile(folder, {bytes}), FileResult::cannotOpen);
    if (fileExists("/dev/full")) {
        EXPECT_EQ(replaceFile("/dev/full", {bytes}), FileResult::writeFailed);
    }
}

} // namespace torvane
