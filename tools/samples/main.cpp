// make-samples FOLDER: writes the sample profiles and rides into FOLDER/profiles and FOLDER/rides.
#include "samples/samples.h"

#include "core/files.h"

#include <filesystem>
#include <iostream>

using namespace torvane;

namespace {

bool makeProfiles(const std::string& folder)
{
    for (const SampleProfile& profile : sampleProfiles())
        if (!writeSampleProfile(profile, folder))
            return false;
    return true;
}

bool makeRides(const std::string& folder, const std::string& profiles)
{
    for (const SampleFile& ride : sampleRides()) {
        Bytes bytes = makeSampleRide(ride, profiles);
        if (bytes.empty() || replaceFile(folder + "/" + ride.name, {bytes}) != FileResult::ok) {
            std::cerr << "make-samples: failed to make " << ride.name << '\n';
            return false;
        }
    }
    return true;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "usage: make-samples FOLDER\n";
        return 2;
    }
    std::string folder = arguments[1];
    std::filesystem::create_directories(folder + "/profiles");
    std::filesystem::create_directories(folder + "/rides");
    return makeProfiles(folder + "/profiles") && makeRides(folder + "/rides", folder + "/profiles") ? 0 : 1;
}
