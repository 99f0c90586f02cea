// Every way into the program with bytes that nobody should send: inputs that failed once, and a small ride cut and
// changed at every byte.
#include "targets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace torvane {

// As a case is named in a list of tests.
void PrintTo(const FuzzTarget& target, std::ostream* out)
{
    *out << target.name;
}

namespace {

bool isRideTarget(const FuzzTarget& target)
{
    constexpr std::string_view others[] = {"parameters", "profile", "settings", "console", "gpx", "tcx"};
    return std::ranges::find(others, target.name) == std::end(others);
}

bool writesRides(const FuzzTarget& target)
{
    constexpr std::string_view readers[] = {"load", "dump"};
    return isRideTarget(target) && std::ranges::find(readers, target.name) == std::end(readers);
}

std::string nameOf(const testing::TestParamInfo<FuzzTarget>& given)
{
    return given.param.name;
}

// An end of the process inside a target is the failure that these tests look for.
class Hostile : public testing::TestWithParam<FuzzTarget> {};

TEST_P(Hostile, seedsPass)
{
    std::vector<Bytes> seeds = GetParam().seeds();
    size_t before = soundFileCount;
    for (const Bytes& seed : seeds)
        GetParam().run(seed);
    EXPECT_EQ(soundFileCount > before, writesRides(GetParam())) << "seeds lead to written files, where there are any";
}

TEST_P(Hostile, whatFailedOncePasses)
{
    std::string front = std::string(GetParam().name) + "-";
    for (const auto& entry : std::filesystem::directory_iterator(TORVANE_CHECKOUT "/tests/fuzz/failed")) {
        if (!entry.path().filename().string().starts_with(front))
            continue;
        SCOPED_TRACE(entry.path());
        std::ifstream in(entry.path(), std::ios::binary);
        Bytes input(std::istreambuf_iterator<char>(in), {});
        EXPECT_FALSE(input.empty());
        GetParam().run(input);
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, Hostile, testing::ValuesIn(fuzzTargets().begin(), fuzzTargets().end()), nameOf);

class HostileRide : public Hostile {};

// The file as it is left, whose CRC is wrong then, and with its size and CRC made right again.
void runCut(const FuzzTarget& target, const Bytes& file, size_t length)
{
    runOnFile(target, {file.begin(), file.begin() + static_cast<ptrdiff_t>(length)});
    size_t header = file[0];
    if (length < header)
        return;
    FitBuilder mended;
    mended.data.assign(file.begin() + static_cast<ptrdiff_t>(header), file.begin() + static_cast<ptrdiff_t>(length));
    runOnFile(target, mended.file(file[0]));
}

TEST_P(HostileRide, cutAtEveryByte)
{
    for (const Bytes& file : seedRides())
        for (size_t length = 0; length < file.size(); ++length)
            runCut(GetParam(), file, length);
}

Bytes withCrc(Bytes file)
{
    file.erase(file.end() - 2, file.end());
    uint16_t crc = bitwiseCrc(file);
    file.push_back(static_cast<uint8_t>(crc));
    file.push_back(static_cast<uint8_t>(crc >> 8));
    return file;
}

TEST_P(HostileRide, changedAtEveryByte)
{
    for (const Bytes& file : seedRides())
        for (size_t place = 0; place < file.size(); ++place)
            for (int change : {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0xFF}) {
                Bytes changed = file;
                changed[place] = static_cast<uint8_t>(changed[place] ^ change);
                runOnFile(GetParam(), changed);
                runOnFile(GetParam(), withCrc(changed), 0xFF);
            }
}

TEST(HostileTrack, cutAndChangedAtEveryByte)
{
    for (const char* name : {"gpx", "tcx"}) {
        const FuzzTarget& target = *findTarget(name);
        for (const Bytes& file : target.seeds())
            for (size_t place = 0; place < file.size(); ++place) {
                target.run(Input(file).first(place));
                for (int other : {0x00, 0xFF, int{'<'}, int{'&'}, int{'-'}, int{'9'}}) {
                    Bytes changed = file;
                    changed[place] = static_cast<uint8_t>(other);
                    target.run(changed);
                }
            }
    }
}

std::vector<FuzzTarget> rideTargetList()
{
    std::vector<FuzzTarget> targets;
    std::ranges::copy_if(fuzzTargets(), std::back_inserter(targets), isRideTarget);
    return targets;
}

INSTANTIATE_TEST_SUITE_P(Targets, HostileRide, testing::ValuesIn(rideTargetList()), nameOf);

} // namespace
} // namespace torvane
