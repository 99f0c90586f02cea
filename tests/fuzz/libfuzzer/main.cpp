// A target under libFuzzer: torvane_fuzz TARGET FOLDER [libFuzzer's own arguments]. Writes the target's seeds into the
// folder, which libFuzzer then reads and lets grow.
#include "../targets.h"

#include <fstream>

namespace {

const torvane::FuzzTarget* target = nullptr;

void writeSeeds(const std::string& folder)
{
    int number = 0;
    for (const torvane::Bytes& seed : target->seeds())
        std::ofstream(folder + "/seed-" + std::to_string(number++), std::ios::binary)
            .write(reinterpret_cast<const char*>(seed.data()), std::ssize(seed));
}

[[noreturn]] void tellUsage()
{
    fprintf(stderr, "torvane_fuzz TARGET FOLDER [ARGUMENT...]; the targets are:\n");
    for (const torvane::FuzzTarget& each : torvane::fuzzTargets())
        fprintf(stderr, "  %s\n", each.name);
    std::exit(2);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** values)
{
    if (*count < 3 || (target = torvane::findTarget((*values)[1])) == nullptr)
        tellUsage();
    writeSeeds((*values)[2]);
    (*values)[1] = (*values)[0];
    ++*values;
    --*count;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size)
{
    target->run({bytes, size});
    return 0;
}
