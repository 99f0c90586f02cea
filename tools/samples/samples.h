// The samples that come with the program: profiles of riders with their bicycles, and rides of theirs. Made, not
// recorded; nobody's data. Each call makes the same bytes.
#pragma once

#include "model/model.h"
#include "rides/fit_builder.h"

#include <span>
#include <string>

namespace torvane {

struct SampleProfile {
    const char* name;
    std::span<const char* const> settings; // NAME=VALUE of the profile pages
};

std::span<const SampleProfile> sampleProfiles();

// Writes a profile through the console program, whose limits hold. False when it refuses.
bool writeSampleProfile(const SampleProfile& profile, const std::string& folder);

struct SampleFile {
    const char* name;
    const char* profile; // of the rider
    Bytes (*make)(const Model& model);
};

std::span<const SampleFile> sampleRides();

// Rides with the profiles of a folder; an empty file when the profile cannot be loaded.
Bytes makeSampleRide(const SampleFile& ride, const std::string& profileFolder);

} // namespace torvane
