// The library's one handle: a rider with a bicycle and conditions, a ride in hand, and the commands of the programs.
//
// Threads: any number of calculators may work at the same time, each on one thread; one calculator is used by one
// thread at a time, and may be handed to another. No two of them know of each other.
//
// An operation that gives back an error has left the calculator as it was. Numbers are written and read by the "C"
// locale, which every program starts with: one that calls setlocale keeps LC_NUMERIC.
#pragma once

#include "torvane/answer.h"
#include "torvane/entries.h"
#include "torvane/grid.h"
#include "torvane/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace torvane::library {

using Bytes = std::vector<std::uint8_t>;

// How a ride is put in order.
struct Preparation {
    int gapLimit = 30;      // s, 1 to 300: longer gaps of the recording stay as they are
    double jumpSpeed = 40;  // m/s, 10 to 1000: faster no position follows another
    bool dropPower = false; // leave out what was measured, so that it is predicted
    bool dropCadence = false;
};

class Calculator {
public:
    // With the programs' default rider, bicycle and conditions. Error: outOfMemory.
    static Result<Calculator> make() noexcept;

    // One that was moved from is good for nothing but an assignment: it answers every call with `incomplete`.
    Calculator(Calculator&& other) noexcept;
    Calculator& operator=(Calculator&& other) noexcept;
    ~Calculator();

    // Takes rider and bicycle out of a profile file, and conditions with them; the answer is the profile's report.
    // Errors: cannotRead; badFile; beyondLimits where a figure of the file is one that nobody could enter.
    Result<Answer> loadProfile(std::string_view path) noexcept;
    // Creates or replaces a profile file. Error: cannotWrite.
    Result<Answer> saveProfile(std::string_view path) noexcept;
    // Sets entries of profile, condition and preference; all of them, or none. They hold until they are set again or
    // a profile is loaded. Errors: unknownEntry, badValue, beyondLimits, refused.
    Result<Answer> set(const Entries& entries) noexcept;
    // All entries that `set` takes, with their limits and what holds now.
    Result<std::vector<EntryInfo>> settings() const noexcept;

    // Runs a command. The answer depends on the profile, the ride in hand and the question alone, not on earlier ones.
    // The commands of a ride ("express-source-data", "analyse-and-predict", "create-fit-file-analysed") work on the one
    // in hand. Errors: those of `set`; unknownCommand; incomplete; noAnswer with the command's `status`; of commands
    // with files also cannotRead, cannotWrite, badFile and unsuitable.
    Result<Answer> ask(const Question& question) noexcept;
    // Power in W at a stage for each velocity on each road, and velocity for each power: the figures of
    // "power-and-velocity", to the last bit, some hundred million powers a second and core. The air is that of the
    // conditions, the wind that of the grid. At most so many threads, this one among them. Errors: badValue, where a
    // number is not finite; outOfMemory.
    Result<std::vector<double>> powersOverGrid(const RoadGrid& grid, Stage stage, std::size_t threads) const noexcept;
    Result<std::vector<FoundVelocity>> velocitiesOverGrid(const RoadGrid& grid, Stage stage,
                                                          std::size_t threads) const noexcept;
    // All entries that a command takes. Error: unknownCommand.
    Result<std::vector<EntryInfo>> entriesOf(std::string_view command) const noexcept;

    // Takes a recorded ride in hand, in place of the earlier one, out of a file or of a FIT file's bytes; `name` is
    // what reports call it. The answer is the ride's summary. Errors: cannotRead, badFile, unsuitable.
    Result<Answer> loadRide(std::string_view path) noexcept;
    Result<Answer> loadRide(std::span<const std::uint8_t> bytes, std::string_view name) noexcept;
    // Puts the ride in hand in order: a record each second, jumps and gaps mended. Errors: incomplete without a ride,
    // beyondLimits, unsuitable.
    Result<Answer> prepareRide(const Preparation& preparation = {}) noexcept;
    // Power, cadence and brake heat of the ride in hand, as "analyse-and-predict" reports them. Errors: those of `ask`.
    Result<Answer> analyseRide(const Entries& entries = {}) noexcept;
    // The bytes of the ride in hand, as it is or with what an analysis adds (entries of analysis and file form).
    // Errors: those of `ask`.
    Result<Bytes> rideFile() const noexcept;
    Result<Bytes> analysedFile(const Entries& entries = {}) noexcept;

private:
    struct State;
    explicit Calculator(std::unique_ptr<State> made) noexcept;
    std::unique_ptr<State> state;
};

// Creates or replaces a file as a whole, or leaves it as it was. Error: cannotWrite.
Result<Done> writeFile(std::string_view path, std::span<const std::uint8_t> bytes) noexcept;

// Of the library, as in "1.21.0".
const char* version() noexcept;

} // namespace torvane::library
