// Long use: random commands with random legal values, one behind the other in one process. Memory stays level, every
// status is in its table. TORVANE_SOAK gives the number of commands; 2,000 unless given.
#include "targets.h"

#include "cli/console.h"
#include "command/command_table.h"
#include "command/session.h"
#include "core/text.h"
#include "forms/form.h"
#include "memory_files.h"
#include "plan/plan_codes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <malloc.h>
#include <random>
#include <set>
#include <sstream>

// There where a sanitizer has replaced the allocator.
extern "C" __attribute__((weak)) size_t __sanitizer_get_current_allocated_bytes();

namespace torvane {
namespace {

size_t allocatedBytes()
{
    return __sanitizer_get_current_allocated_bytes ? __sanitizer_get_current_allocated_bytes() : mallinfo2().uordblks;
}

// The calculators' own bits, what a verification warns of, and all of a verification that failed moved up by four bits.
constexpr uint32_t theoryBits = 0x1 | 0x40000 | 0x20000 | 0x100000 | (0x4000 | 0xE | 0x40000 | 0x20000 | 0x100000) << 4;
constexpr uint32_t rideBits = 0x7FFF | 0xFFu << 16;

bool isInTable(int command, uint32_t status)
{
    static const std::set<uint32_t> fitCodes = {0,      1,      2,      4,      8,      0x10,   0x20,   0x40,
                                                0x80,   0x100,  0x200,  0x400,  0x800,  0x7FF0, 0x7FF1, 0x7FF2,
                                                0x7FF3, 0x7FF4, 0x7FF5, 0x7FF6, 0x7FF7, 0x1000, 0x2000, 0x8001,
                                                0x8002, 0x8004, 0x8005, 0x8006, 0x10000};
    if (command >= 901)
        return fitCodes.contains(status) || (status >= planWithoutAltitude && status <= planTooSlow);
    if (command >= 801)
        return (status & ~rideBits) == 0;
    return command >= 701 ? (status & ~theoryBits) == 0 : status <= 1;
}

class Dice {
public:
    int below(size_t count)
    {
        return static_cast<int>(random() % count);
    }
    bool once(int times)
    {
        return random() % static_cast<unsigned>(times) == 0;
    }
    double between(double low, double high)
    {
        double share = once(10) ? below(2) : static_cast<double>(random()) / static_cast<double>(random.max());
        return low + (high - low) * share;
    }

private:
    std::mt19937 random{20};
};

// A legal value of a row as it is typed; empty for a row that takes none.
std::string legalValue(Dice& dice, const FormState& state, const Row& row)
{
    switch (row.kind) {
    case RowKind::real:
        return formatText("%.3f", dice.between(row.least, row.most));
    case RowKind::whole:
        return formatText("%d", static_cast<int>(dice.between(row.least, row.most)));
    case RowKind::choice:
    case RowKind::radio: {
        size_t labels = rowLabels(state, row).size();
        return labels == 0 ? "" : std::to_string(dice.below(labels));
    }
    case RowKind::check:
        return std::to_string(dice.below(2));
    default:
        return {};
    }
}

// Some of the rows that the form shows at its opening.
void addEntries(Dice& dice, const Form& form, int oneIn, const char* lead, std::vector<std::string>& arguments)
{
    Session session;
    FormState state;
    openForm(state, form, session.saved, session.working, session.model, true);
    for (const Row& row : form.rows) {
        if (row.name == nullptr || !isEnabled(state, row) || !dice.once(oneIn))
            continue;
        std::string value = legalValue(dice, state, row);
        if (value.empty())
            continue;
        if (*lead != '\0')
            arguments.emplace_back(lead);
        arguments.push_back(row.name + ("=" + value));
    }
}

const Command& randomCommand(Dice& dice)
{
    for (;;) {
        const Command& command = commandTable()[static_cast<size_t>(dice.below(commandTable().size()))];
        if (command.work != Work::frontEnd)
            return command;
    }
}

// As many files as the command takes, the last one a destination where it writes.
std::vector<std::string> filesOf(Dice& dice, const Command& command)
{
    auto ride = [&] { return formatText("ride%d.fit", dice.below(seedRides().size())); };
    if (command.id == commandLoadProfile || command.id == commandSaveProfile)
        return {"rider.pro"};
    std::vector<std::string> files;
    if (command.id >= commandLoadRide)
        files.resize(command.id == commandCombine ? 3 : 1);
    std::ranges::generate(files, ride);
    if (command.id >= commandCreate)
        files.push_back(command.id == commandFieldDump ? "out.csv" : "out.fit");
    return files;
}

std::vector<std::string> randomArguments(Dice& dice, const Command& command)
{
    std::vector<std::string> arguments = {"--json"};
    if (dice.once(3))
        for (Sheet sheet : {Sheet::preference, Sheet::profile, Sheet::condition})
            for (const Form* page : sheetPages(sheet))
                addEntries(dice, *page, 12, "--set", arguments);
    if (dice.once(4))
        arguments.insert(arguments.end(), {"--par", "soak.par", "--save"});
    if (dice.once(4) && command.graph != GraphWhen::never)
        arguments.insert(arguments.end(), {"--graph", "graph.svg"});
    arguments.push_back(consoleName(command));
    for (const std::string& file : filesOf(dice, command))
        arguments.push_back(file);
    for (const Form* page : sheetPages(command.sheet))
        addEntries(dice, *page, 8, "", arguments);
    if (const Form* form = findForm(command.form))
        addEntries(dice, *form, 2, "", arguments);
    return arguments;
}

void startFiles()
{
    memoryFiles.clear();
    int number = 0;
    for (const Bytes& ride : seedRides())
        memoryFiles[inMemory(formatText("ride%d.fit", number++))] = ride;
    std::ostringstream none;
    ASSERT_EQ(runConsole({"save-profile", "rider.pro"}, none, none), 0);
}

struct Tally {
    int done = 0, failed = 0, refused = 0;
};

void runOne(Dice& dice, Tally& tally)
{
    const Command& command = randomCommand(dice);
    std::vector<std::string> arguments = randomArguments(dice, command);
    std::ostringstream out, err;
    int code = runConsole(arguments, out, err);
    ASSERT_GE(code, 0) << testing::PrintToString(arguments);
    ASSERT_LE(code, 2) << testing::PrintToString(arguments);
    ++(code == 0 ? tally.done : code == 1 ? tally.failed : tally.refused);
    std::string text = out.str();
    size_t result = text.find("\"result\":");
    if (result == text.npos)
        return;
    unsigned long status = std::strtoul(text.c_str() + result + 9, nullptr, 10);
    EXPECT_TRUE(isInTable(command.id, static_cast<uint32_t>(status)))
        << testing::PrintToString(arguments) << " gives " << status;
}

TEST(Soak, randomCommandsInOneProcess)
{
    const char* wanted = std::getenv("TORVANE_SOAK");
    int commands = wanted != nullptr ? std::atoi(wanted) : 2000;
    constexpr int warmUp = 100;
    constexpr int64_t level = 1 << 20; // bytes
    ASSERT_GT(commands, warmUp);
    startFiles();
    Dice dice;
    Tally tally;
    size_t before = 0;
    for (int i = 0; i < commands && !HasFatalFailure(); ++i) {
        runOne(dice, tally);
        startFiles(); // what was written goes, so that files are not taken for a leak
        if (i + 1 == warmUp)
            before = allocatedBytes();
    }
    auto growth = static_cast<int64_t>(allocatedBytes()) - static_cast<int64_t>(before);
    EXPECT_LT(std::abs(growth), level);
    EXPECT_GT(tally.done, commands / 3) << "most values are legal together";
    printf("%d commands: %d done, %d failed, %d refused; memory %+lld bytes\n", commands, tally.done, tally.failed,
           tally.refused, static_cast<long long>(growth));
}

} // namespace
} // namespace torvane
