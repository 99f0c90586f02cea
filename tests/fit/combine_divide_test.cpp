// Combined and divided files, byte for byte.
#include "tool_fixture.h"

namespace torvane {

namespace {

class CombineDivide : public BothByteOrders {};

INSTANTIATE_TEST_SUITE_P(BigEndian, CombineDivide, testing::Bool());

void addRide(FitBuilder& file, int64_t start, int sport, bool bigEndian)
{
    file.define(1, 20, {{253, 4}, {4, 1}}, bigEndian, {{0, 2}});
    file.message(1, {start, 90, 1}).compressed(1, 3, {start + 1, 91, 2});
    file.define(2, 19, {{25, 1}}, bigEndian).message(2, {sport}).message(2, {sport});
    file.define(3, 18, {{5, 2}}, bigEndian).message(3, {sport});
}

TEST_P(CombineDivide, CombinesInTheOrderOfStarts)
{
    auto ride = [&](int64_t start, int64_t timer, bool otherEnd) {
        FitBuilder file = fitFile(otherEnd);
        addRide(file, start, 2, otherEnd);
        int local = start == 3000 ? 2 : 7; // to tell whose activity it is
        return file.define(local, 34, {{0, 4}, {1, 3}}, otherEnd).message(local, {timer, 1}).file();
    };
    bench.from(ride(3000, 40, bigEndian), 0).from(ride(1000, 500, bigEndian), 2).from(ride(2000, 6000, !bigEndian), 4);
    bench.options.combineOutput = {.convertEnabled = 1, .fitFormat = 0, .sportEnabled = 1, .sportIndex = 8};
    ASSERT_EQ(bench.run(checkCombine, runCombine), fitCombined);
    EXPECT_EQ(bench.outcome.path, bench.inputs.files[toolDestination].path);
    FitBuilder expected = fitFile(bigEndian, 4, marked);
    for (int64_t start : {1000, 2000, 3000})
        addRide(expected, start, 254, bigEndian != (start == 2000));
    expected.define(2, 34, {{0, 4}, {1, 3}}, bigEndian).message(2, {6540, 3});
    EXPECT_TRUE(sameBytes(bench.output(), expected.file(12)));
}

// A ride whose distance and cycles run on.
struct Ride : FitBuilder {
    bool bigEndian;

    Ride(bool big, int manufacturer) : FitBuilder(fitFile(big, 4, manufacturer)), bigEndian(big) {}
    Ride& data(int local, const std::vector<int64_t>& values)
    {
        message(local, values);
        return *this;
    }
    Ride& records(int local)
    {
        define(local, 20, {{253, 4}, {5, 4}, {19, 4}, {6, 2}}, bigEndian);
        return *this;
    }
    Ride& event(int64_t time, int type)
    {
        define(1, 21, {{253, 4}, {1, 1}}, bigEndian);
        return data(1, {time, type});
    }
    Ride& lap(int sport, int64_t timer, int64_t time)
    {
        define(3, 19, {{25, 1}, {8, 4}, {253, 4}}, bigEndian);
        return data(3, {sport, timer, time});
    }
    Ride& session(int sport, int64_t timer, int64_t time)
    {
        define(4, 18, {{8, 4}, {253, 4}, {5, 1}}, bigEndian);
        return data(4, {timer, time, sport});
    }
    Ride& activity(int64_t timer, int64_t time)
    {
        define(5, 34, {{0, 4}, {1, 4}, {5, 4}, {253, 4}}, bigEndian);
        return data(5, {timer, 1, time, time});
    }
};

class Division : public BothByteOrders {
protected:
    Ride source = {bigEndian, 0x1234}, first = {bigEndian, marked}, second = first;

    void divide()
    {
        ASSERT_EQ(bench.from(source.file()).to("part.fit").run(checkDivide, runDivide), fitDivided);
    }
    void expectParts(int headerSize, const std::string& more = "")
    {
        EXPECT_EQ(bench.outcome.path, "part_000.fit, part_001.fit" + more);
        EXPECT_TRUE(sameBytes(bench.output("part_000.fit"), first.file(headerSize)));
        EXPECT_TRUE(sameBytes(bench.output("part_001.fit"), second.file(headerSize)));
    }
};

INSTANTIATE_TEST_SUITE_P(BigEndian, Division, testing::Bool());

// Two sessions of two laps, an event in the first, a stray event behind all.
TEST_P(Division, BySession)
{
    bench.options.divideOutput = {.convertEnabled = 1, .fitFormat = 0, .sportEnabled = 1, .sportIndex = 1};
    source.event(1000, 0).records(2).data(2, {1000, 500, 40, 9}).data(1, {1001, 1}).data(2, {1010, 900, 60, 9});
    source.lap(2, 10'000, 1010).data(2, {1020, 1200, 61, 9}).data(3, {2, 9'000, 1020}).session(2, 19'000, 1021);
    source.data(2, {1100, 1300, 70, 9}).data(3, {2, 1'000, 1100}).data(2, {1110, 1500, 75, 9});
    source.data(3, {2, 8'000, 1110}).data(4, {9'500, 1111, 2}).data(1, {1200, 2}).activity(28'500, 7);
    divide();
    first.event(1000, 0).records(2).data(2, {1000, 0, 0, 9}).event(1001, 1).data(2, {1010, 400, 20, 9});
    first.lap(1, 10'000, 1010).data(2, {1020, 700, 21, 9}).lap(1, 9'000, 1020).session(1, 19'000, 1021);
    first.activity(19'000, 1021);
    second.records(2).data(2, {1100, 0, 0, 9}).lap(1, 1'000, 1100).data(2, {1110, 200, 5, 9}).lap(1, 8'000, 1110);
    second.session(1, 9'500, 1111).activity(9'500, 1111);
    expectParts(14); // the divide dialog's own form has no effect
}

// Records of the second part whose definition stands in the first one: all that is in force goes in front of the part's
// own stretch. An event in front is in no part. Without a kept summary the activity gets the span of the part's
// records, in seconds. The third part has no record.
TEST_P(Division, ByRecordDefinition)
{
    source.event(999, 3).records(2).data(2, {1000, 500, 40, 9}).lap(2, 9'000, 1000);
    source.records(6).data(6, {1010, 600, 50, 9}).data(2, {1011, 700, 60, 9}).records(6).activity(1, 2);
    divide();
    first.records(2).data(2, {1000, 0, 0, 9}).lap(2, 9'000, 1000).activity(9'000, 1000);
    second.lap(2, 9'000, 1000).define(0, 0, {{0, 1, 0}, {1, 2, 0x84}, {4, 4, 0x86}}, bigEndian);
    second.define(1, 21, {{253, 4}, {1, 1}}, bigEndian);
    second.records(2).define(3, 19, {{25, 1}, {8, 4}, {253, 4}}, bigEndian);
    second.records(6).data(6, {1010, 0, 0, 9}).data(2, {1011, 100, 10, 9}).activity(1, 1011);
    expectParts(14, ", part_002.fit");
    ASSERT_EQ(bench.outcome.boxes.size(), 1u);
    EXPECT_EQ(bench.outcome.boxes[0].text, "1 of 3 divided files have no record message: 002");
}

// More parts than one walk of the source fills: each holds its own record alone.
TEST_P(Division, IntoHundredsOfParts)
{
    constexpr int parts = 300;
    for (int part = 0; part < parts; ++part)
        source.records(2).data(2, {1000 + part, 500, 40, part % 200});
    source.activity(1, 2);
    divide();
    for (int part = 0; part < parts; ++part) {
        Ride expected = Ride(bigEndian, marked).records(2).data(2, {1000 + part, 0, 0, part % 200});
        ASSERT_EQ(bench.output(dividedFileName("part.fit", part)), expected.activity(0, 1000 + part).file()) << part;
    }
}

TEST(DividedFileName, CountsBehindTheStemWithThreeDigitsOrMore)
{
    EXPECT_EQ(dividedFileName("a.b/ride.fit", 0), "a.b/ride_000.fit");
    EXPECT_EQ(dividedFileName("ride.old.FIT", 57), "ride.old_057.FIT");
    EXPECT_EQ(dividedFileName("ride.fit", 1000), "ride_1000.fit");
}

} // namespace

} // namespace torvane
