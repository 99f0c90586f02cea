// The field dump to the character.
#include "core/text.h"
#include "fit/fit_walk.h"
#include "tool_fixture.h"

namespace torvane {

namespace {

std::string dumpOf(ToolBench& bench)
{
    EXPECT_EQ(bench.to("out.csv").run(checkFieldDump, runFieldDump), fitOk);
    EXPECT_FALSE(bench.outcome.reported);
    Bytes bytes = bench.output("out.csv");
    return std::string(bytes.begin(), bytes.end());
}

TEST(FieldDump, EveryKindOfLine)
{
    FitBuilder file;
    file.put(0x0B); // data of a local type that is not defined
    file.define(0, 0, {{0, 1, 0}, {4, 4, 0x86}}).message(0, {4, 0xFFFFFFFE});
    file.define(1, 20, {{253, 4}, {0, 4}, {13, 1}, {2, 2}}, true, {{7, 2}}).message(1, {1, -2, 25, 0xFFFF, 0xABCD});
    file.define(2, 34, {{6, 1}, {1, 2}}).message(2, {5, 300});
    file.define(3, 101, {{253, 1}}).message(3, {9}).define(4, 300, {}).message(4, {});
    ToolBench bench;
    Bytes bytes = file.file(12);
    std::string crc = formatText("%02X, %02X, \n", bytes[bytes.size() - 2], bytes.back());
    std::string size = formatText("%02X, ", static_cast<int>(file.data.size()));
    bench.from(bytes);
    EXPECT_EQ(dumpOf(bench),
              "-- file header --\n0C, 10, 23, 01, " + size +
                  "00, 00, 00, 2E, 46, 49, 54, \n\n"
                  "0B, \n"
                  "-- file_id --\n"
                  "40, 00, 00, 00, 00, 02, 00, 01, 00, 04, 04, 86, \n"
                  "fileType-1, timeCreated-4, \n"
                  "4, -2, \n"
                  "00, 04, FE, FF, FF, FF, \n"
                  "-- record --\n"
                  "61, 00, 01, 00, 14, 04, FD, 04, 02, 00, 04, 02, 0D, 01, 02, 02, 02, 02, 01, 07, 02, 02, \n"
                  "timestamp-4, latitude-4, unknown-13-1, altitude-2, \n"
                  "1, -2, unknown-13-1, 65535, \n"
                  "01, 00, 00, 00, 01, FF, FF, FF, FE, 19, FF, FF, AB, CD, \n"
                  "-- activity --\n"
                  "42, 00, 00, 22, 00, 02, 06, 01, 02, 01, 02, 02, \n"
                  "eventGroup-1, numSession-2, \n"
                  "unknown-6-1, 300, \n"
                  "02, 05, 2C, 01, \n"
                  "-- length --\n"
                  "43, 00, 00, 65, 00, 01, FD, 01, 02, \n\n\n"
                  "03, 09, \n"
                  "-- unknown --\n"
                  "44, 00, 00, 2C, 01, 00, \n\n\n"
                  "04, \n-- crc --\n" +
                  crc);
}

// Text of many pieces: what one block gives comes again with each repetition of it, the longest message there can be
// among them.
TEST(FieldDump, MegabytesToTheCharacter)
{
    const std::vector<FitBuilder::Field> all(maxFieldCount, {200, UINT8_MAX});
    FitBuilder block, file;
    block.define(0, messageRecord, all, false, all).message(0, std::vector<int64_t>(2 * maxFieldCount, -2));
    block.define(0, messageRecord, {{253, 4}, {2, 2}, {13, 1}}).message(0, {7, 2113, 25});
    auto linesOf = [](const FitBuilder& made) {
        ToolBench bench;
        bench.from(made.file());
        std::string dump = dumpOf(bench);
        size_t first = dump.find("-- record --");
        return dump.substr(first, dump.find("-- crc --") - first);
    };
    std::string once = linesOf(block), wanted;
    for (int part = 0; part < 10; ++part) {
        file.data.insert(file.data.end(), block.data.begin(), block.data.end());
        wanted += once;
    }
    std::string told = linesOf(file);
    EXPECT_TRUE(sameBytes({told.begin(), told.end()}, {wanted.begin(), wanted.end()}));
}

TEST(FieldDump, ALongerFileKeepsItsTail)
{
    ToolBench bench;
    bench.from(fitFile().file());
    std::string dump = dumpOf(bench);
    bench.write("out.csv", Bytes(dump.size() + 5, 'x'));
    EXPECT_EQ(dumpOf(bench), dump + "xxxxx");
}

TEST(FieldDump, FaultsLeaveTheTextFileAlone)
{
    ToolBench bench;
    Bytes broken = fitFile().file();
    broken.back() ^= 1;
    bench.from(broken).to("out.csv").write("out.csv", {'x'});
    EXPECT_EQ(bench.run(checkFieldDump, runFieldDump), fitWrongCrc);
    EXPECT_TRUE(bench.outcome.reported);
    EXPECT_EQ(bench.output("out.csv"), Bytes{'x'});
    std::filesystem::create_directory(bench.folder.path + "folder.csv");
    bench.from(fitFile().file()).to("folder.csv");
    EXPECT_NE(bench.run(checkFieldDump, runFieldDump), fitOk);
    ASSERT_EQ(bench.outcome.boxes.size(), 1u);
    EXPECT_EQ(bench.outcome.boxes[0].text, "failed to create a file");
}

} // namespace

} // namespace torvane
