// What is run on hostile bytes: one function for each way into the program. A target returns whatever the bytes are;
// it ends the process when what the program made of them is not sound.
#pragma once

#include "rides/fit_builder.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace torvane {

using Input = std::span<const uint8_t>;

struct FuzzTarget {
    const char* name;
    void (*run)(Input input);
    std::vector<Bytes> (*seeds)();
};

std::span<const FuzzTarget> fuzzTargets();
const FuzzTarget* findTarget(std::string_view name); // null: there is none

// A first part of the inputs of all targets on rides; what follows are FIT bytes.
// Byte 0: the bits below. Bytes 1 to 8: options of the tool.
constexpr size_t rideOptions = 8;
constexpr uint8_t inputIsWholeFile = 1;  // header and CRC included; else a data block, which is wrapped into a file
constexpr uint8_t inputLegacyHeader = 2; // of the wrapped file
constexpr uint8_t inputOverSource = 4;   // the destination is the source
// Every source of a combination but the last is led by two bytes with its length, low byte first. The number of
// sources behind the first follows from these bits.
constexpr int inputMoreSourcesShift = 3; // two bits

// Runs a target on a whole file with options all clear.
void runOnFile(const FuzzTarget& target, const Bytes& file, uint8_t options = 0);

// A file that a run which succeeded has written: its CRC and size are right, and its messages end where its data
// block does.
void requireSoundFile(const std::string& path);
extern size_t soundFileCount; // files found sound so far
void require(bool holds, const char* what);

// Small rides by the builder of the tests, as whole files.
std::vector<Bytes> seedRides();

} // namespace torvane
