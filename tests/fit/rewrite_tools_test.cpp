// Convert, increase timestamp: whole outputs against files built by hand, in both architectures.
#include "fit/fit_output.h"
#include "tool_fixture.h"

#include <tuple>

namespace torvane {

namespace {

class RewriteTools : public BothByteOrders {};

INSTANTIATE_TEST_SUITE_P(BigEndian, RewriteTools, testing::Bool());

// Every speed that the tool knows, once in its own width; a speed of two bytes also wider than it is.
FitBuilder speeds(bool bigEndian, int manufacturer, const std::vector<int64_t>& record,
                  const std::vector<int64_t>& summary, int64_t wide)
{
    FitBuilder file = fitFile(bigEndian, 4, manufacturer);
    file.define(1, 20, {{253, 4}, {6, 2}, {73, 4}, {17, 3}, {32, 2}}, bigEndian, {{6, 2}, {73, 1}});
    file.message(1, record).compressed(1, 7, record);
    file.define(2, 18, {{5, 1}, {14, 2}, {15, 2}, {124, 4}, {125, 4}, {13, 2}}, bigEndian).message(2, summary);
    file.define(3, 19, {{25, 1}, {13, 2}, {14, 2}, {110, 4}, {111, 4}, {15, 2}}, bigEndian).message(3, summary);
    file.define(4, 65000, {{6, 2}, {253, 4}}, bigEndian).message(4, {36000, 36000});
    file.define(1, 20, {{6, 4}}, bigEndian).message(1, {wide});
    return file;
}

TEST_P(RewriteTools, ConvertSpeedUnit)
{
    bench.options.convertSpeedUnit = 1;
    std::vector<int64_t> record = {36000, 36000, 0xFFFFFFFF, 0x6C4824, -35, 36000, 36};
    std::vector<int64_t> halfRecord = {36000, 10000, 1193046470, 0x00000A, -9, 36000, 36}; // 4294967295 / 3.6
    if (bigEndian) {
        record[3] = 0x24486C;
        halfRecord[3] = 0x0A0000; // of the one-second speeds the first byte counts
    }
    // A wide field is read as two bytes at its start, and filled with zeros.
    int64_t wide = bigEndian ? int64_t{36000} << 16 : 36000;
    bench.from(speeds(bigEndian, 0x1234, record, {2, 36000, 3601, 7200, 3599, 36000}, wide).file());
    ASSERT_EQ(bench.run(checkConvert, runConvert), fitConverted);
    EXPECT_TRUE(sameBytes(bench.output(),
                          speeds(bigEndian, marked, halfRecord, {2, 10000, 1000, 2000, 999, 36000}, 10000).file()));
}

FitBuilder times(bool bigEndian, int manufacturer, int64_t shift)
{
    FitBuilder file;
    auto at = [&](int64_t time) { return (time + shift) & 0xFFFFFFFF; };
    std::vector<FitBuilder::Field> fields = {{2, 4}, {253, 4}, {5, 4}, {4, 4}};
    file.define(0, 0, {{4, 4}, {1, 2}, {253, 4}}, bigEndian).message(0, {at(10), manufacturer, 10});
    file.define(1, 20, fields, bigEndian).message(1, {10, at(10), 10, 10}).compressed(1, 30, {10, at(10), 10, 10});
    for (auto [local, message] : {std::pair{2, 18}, {3, 19}, {4, 101}})
        file.define(local, message, fields, bigEndian).message(local, {at(10), at(11), 12, 13});
    file.define(5, 34, fields, bigEndian).message(5, {10, at(11), at(12), 13});
    file.define(6, 999, fields, bigEndian, {{253, 4}}).message(6, {10, at(11), 12, 13, 14});
    return file;
}

// Forth, back, and truncated to the upper bytes of 0xE10.
TEST_P(RewriteTools, TimestampShiftItsComplementAndTruncation)
{
    Bytes source = times(bigEndian, 7, 0).file();
    for (auto [offset, truncate, shift] : {std::tuple{86400, 0, 86400}, {-86400, 0, 0}, {3600, 1, 3584}}) {
        bench.options.timestampOffset = offset;
        bench.options.timestampTruncate = truncate;
        ASSERT_EQ(bench.from(source).run(checkTimestamp, runTimestamp), fitConverted);
        source = bench.output();
        EXPECT_TRUE(sameBytes(source, times(bigEndian, marked, shift).file())) << offset;
    }
    EXPECT_EQ(timestampShift(bench.options), 3584);
}

// A part repeats a definition of 250 fields in front of each byte; a lap has four fields of 255 bytes for one triple.
TEST(RewriteToolFaults, WhatWouldGrowFarBeyondItsSourceIsNotWritten)
{
    FitBuilder parts = fitFile(), wide = fitFile();
    parts.define(1, 19, {}).message(1, {}).message(1, {}).define(2, 200, std::vector<FitBuilder::Field>(250));
    for (int i = 0; i < 1000; ++i) {
        parts.message(2, std::vector<int64_t>(250));
        wide.define(2, 20, {{253, 255}});
    }
    ToolBench bench;
    bench.options.addLap = 1;
    EXPECT_EQ(bench.from(wide.file()).run(checkAddMessages, runAddMessages), fitTooLarge);
    EXPECT_EQ(bench.from(parts.message(1, {}).file()).run(checkDivide, runDivide), fitTooLarge);
    EXPECT_EQ(bench.folder.count(), 3u); // the source, and two parts in front of the large one
}

TEST(RewriteToolFaults, WhatDoesNotWalkIsNotWritten)
{
    TestFolder folder;
    FitImage image = imageOf(fitFile().data);
    image.data.pop_back();
    EXPECT_FALSE(saveFitFile(image, folder.path + "a.fit"));
    EXPECT_EQ(folder.count(), 0u);
}

TEST(RewriteToolFaults, LeaveTheDestinationAlone)
{
    constexpr std::pair<Check, ToolRun> tools[] = {
        {checkConvert, runConvert}, {checkTimestamp, runTimestamp}, {checkExclude, runExclude}};
    for (auto [check, run] : tools) {
        ToolBench bench;
        Bytes source = fitFile().file();
        EXPECT_LE(fitConverted, bench.from(source).run(check, run));
        Bytes old = bench.output();
        source.back() ^= 1;
        bench.from(source);
        EXPECT_EQ(run(bench.inputs, bench.options, nullptr).code, fitWrongCrc);
        EXPECT_TRUE(sameBytes(bench.output(), old));
    }
}

} // namespace

} // namespace torvane
