// The samples that lie in the repository are those that the tool makes: whoever changes the tool makes them anew.
#include "samples/samples.h"

#include "fit/fit_builder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace torvane {
namespace {

const std::string committed = std::string(TORVANE_CHECKOUT) + "/samples/";

std::set<std::string> namesIn(const std::string& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

TEST(Samples, committedProfilesAreWhatTheToolMakes)
{
    TestFolder folder;
    std::set<std::string> names;
    for (const SampleProfile& profile : sampleProfiles()) {
        names.insert(profile.name);
        ASSERT_TRUE(writeSampleProfile(profile, folder.path)) << profile.name;
        EXPECT_TRUE(sameBytes(bytesOf(folder.path + profile.name), bytesOf(committed + "profiles/" + profile.name)))
            << profile.name;
    }
    EXPECT_EQ(namesIn(committed + "profiles"), names);
}

TEST(Samples, committedRidesAreWhatTheToolMakes)
{
    std::set<std::string> names;
    for (const SampleFile& ride : sampleRides()) {
        names.insert(ride.name);
        Bytes made = makeSampleRide(ride, committed + "profiles");
        ASSERT_FALSE(made.empty()) << ride.name;
        EXPECT_TRUE(sameBytes(made, bytesOf(committed + "rides/" + ride.name))) << ride.name;
    }
    EXPECT_EQ(namesIn(committed + "rides"), names);
}

} // namespace
} // namespace torvane
