// Combined and divided files, byte for byte.
#include "tool_fixture.h"

namespace torvane {

namespace {

using Fields = std::vector<FitBuilder::Field>;

class CombineDivide : public testing::TestWithParam<bool> {
protected:
    bool bigEndian = GetParam();
    int marked = markedManufacturer(bigEndian);
    ToolBench bench;
};

INSTANTIATE_TEST_SUITE_P(Architecture, CombineDivide, testing::Bool(),
                         [](const auto& which) { return which.param ? "big" : "little"; });

void addRecords(FitBuilder& file, int local, int64_t start, bool bigEndian)
{
    file.define(local, 20, {{253, 4}, {4, 1}}, bigEndian, {{0, 2}});
    file.message(local, {start, 90, 1}).compressed(local, 3, {start + 1, 91, 2});
}

void addSummaries(FitBuilder& file, int sport, bool bigEndian)
{
    file.define(2, 19, {{25, 1}}, bigEndian).message(2, {sport}).message(2, {sport});
    file.define(3, 18, {{5, 2}}, bigEndian).message(3, {sport});
}

TEST_P(CombineDivide, CombinesInTheOrderOfStarts)
{
    auto ride = [&](int64_t start, int64_t timer, bool otherEnd) {
        FitBuilder file = fitFile(otherEnd);
        addRecords(file, 1, start, otherEnd);
        addSummaries(file, 2, otherEnd);
        int local = start == 3000 ? 2 : 7; // to tell whose activity it is
        return file.define(local, 34, {{0, 4}, {1, 3}}, otherEnd).message(local, {timer, 1}).file();
    };
    bench.from(ride(3000, 40, bigEndian), 0).from(ride(1000, 500, bigEndian), 2).from(ride(2000, 6000, !bigEndian), 4);
    bench.options.combineOutput = {.convertEnabled = 1, .fitFormat = 0, .sportEnabled = 1, .sportIndex = 8};
    ASSERT_EQ(bench.run(checkCombine, runCombine), fitCombined);
    EXPECT_EQ(bench.outcome.path, bench.inputs.files[toolDestination].path);
    FitBuilder expected = fitFile(bigEndian, 4, marked);
    for (int64_t start : {1000, 2000, 3000}) {
        addRecords(expected, 1, start, start == 2000 ? !bigEndian : bigEndian);
        addSummaries(expected, 254, start == 2000 ? !bigEndian : bigEndian);
    }
    expected.define(2, 34, {{0, 4}, {1, 3}}, bigEndian).message(2, {6540, 3});
    EXPECT_EQ(bench.output(), expected.file(12));
}

TEST_P(CombineDivide, EqualStartsKeepTheOrderOfThePaths)
{
    FitBuilder expected = fitFile(bigEndian, 4, marked);
    for (size_t source : {0, 2, 3}) {
        FitBuilder file = fitFile(bigEndian);
        for (FitBuilder* both : {&file, &expected})
            both->define(static_cast<int>(source), 20, {{253, 4}}, bigEndian).message(static_cast<int>(source), {1000});
        bench.from(file.file(), source);
    }
    ASSERT_EQ(bench.run(checkCombine, runCombine), fitCombined);
    EXPECT_EQ(bench.output(), expected.file());
}

TEST_P(CombineDivide, NoSourceInTheFirstPlaceMeansNoOrder)
{
    FitBuilder file = fitFile(bigEndian);
    addRecords(file, 1, 1000, bigEndian);
    bench.from(file.file(), 1).from(file.file(), 2);
    EXPECT_EQ(bench.run(checkCombine, runCombine), fitCannotOpen);
    EXPECT_EQ(bench.outcome.path, bench.inputs.files[toolDestination].path);
}

// Two sessions of two laps, an event in the first, a stray event behind all; distance and cycles run on.
class Division : public CombineDivide {
protected:
    const Fields record = {{253, 4}, {5, 4}, {19, 4}, {6, 2}};
    const Fields lap = {{25, 1}, {8, 4}, {253, 4}};
    const Fields session = {{8, 4}, {253, 4}, {5, 1}};
    const Fields activity = {{0, 4}, {1, 4}, {5, 4}, {253, 4}};
    const Fields event = {{253, 4}, {1, 1}};

    FitBuilder source()
    {
        FitBuilder file = fitFile(bigEndian);
        file.define(1, 21, event, bigEndian).define(2, 20, record, bigEndian);
        file.define(3, 19, lap, bigEndian).define(4, 18, session, bigEndian);
        file.message(1, {1000, 0}).message(2, {1000, 500, 40, 9}).message(1, {1001, 1}).message(2, {1010, 900, 60, 9});
        file.message(3, {2, 10'000, 1010}).message(2, {1020, 1200, 61, 9}).message(3, {2, 9'000, 1020});
        file.message(4, {19'000, 1021, 2});
        file.message(2, {1100, 1300, 70, 9}).message(3, {2, 1'000, 1100}).message(2, {1110, 1500, 75, 9});
        file.message(3, {2, 8'000, 1110}).message(4, {9'500, 1111, 2}).message(1, {1200, 2});
        return file.define(5, 34, activity, bigEndian).message(5, {28'500, 2, 7, 8});
    }
    void defineRecord(FitBuilder& file, int local)
    {
        file.define(local, 20, record, bigEndian);
    }
    void addEvent(FitBuilder& file, int64_t time, int type)
    {
        file.define(1, 21, event, bigEndian).message(1, {time, type});
    }
    void addLap(FitBuilder& file, int sport, int64_t timer, int64_t time)
    {
        file.define(3, 19, lap, bigEndian).message(3, {sport, timer, time});
    }
    void addSession(FitBuilder& file, int sport, int64_t timer, int64_t time)
    {
        file.define(4, 18, session, bigEndian).message(4, {timer, time, sport});
    }
    void addActivity(FitBuilder& file, int64_t timer, int64_t time)
    {
        file.define(5, 34, activity, bigEndian).message(5, {timer, 1, time, time});
    }
    void divide(const Bytes& file)
    {
        ASSERT_EQ(bench.from(file).to("part.fit").run(checkDivide, runDivide), fitDivided);
    }
};

INSTANTIATE_TEST_SUITE_P(Architecture, Division, testing::Bool(),
                         [](const auto& which) { return which.param ? "big" : "little"; });

TEST_P(Division, BySession)
{
    bench.options.divideOutput = {.convertEnabled = 1, .fitFormat = 0, .sportEnabled = 1, .sportIndex = 1};
    divide(source().file());
    EXPECT_EQ(bench.outcome.path, "part_000.fit, part_001.fit");
    FitBuilder first = fitFile(bigEndian, 4, marked);
    defineRecord(first, 2);
    addEvent(first, 1000, 0);
    first.message(2, {1000, 0, 0, 9});
    addEvent(first, 1001, 1);
    first.message(2, {1010, 400, 20, 9});
    addLap(first, 1, 10'000, 1010);
    first.message(2, {1020, 700, 21, 9});
    addLap(first, 1, 9'000, 1020);
    addSession(first, 1, 19'000, 1021);
    addActivity(first, 19'000, 1021);
    EXPECT_EQ(bench.output("part_000.fit"), first.file(14)) << "the divide dialog's own form has no effect";
    FitBuilder second = fitFile(bigEndian, 4, marked);
    defineRecord(second, 2);
    second.message(2, {1100, 0, 0, 9});
    addLap(second, 1, 1'000, 1100);
    second.message(2, {1110, 200, 5, 9});
    addLap(second, 1, 8'000, 1110);
    addSession(second, 1, 9'500, 1111);
    addActivity(second, 9'500, 1111);
    EXPECT_EQ(bench.output("part_001.fit"), second.file(14));
}

TEST_P(Division, ByLapWithTheOneSessionInEveryPart)
{
    bench.options.addOutput = {.convertEnabled = 1, .fitFormat = 0, .sportEnabled = 1, .sportIndex = 1};
    FitBuilder file = fitFile(bigEndian);
    defineRecord(file, 2);
    file.message(2, {1000, 500, 40, 9});
    addLap(file, 2, 10'000, 1005);
    file.message(2, {1010, 900, 60, 9});
    addLap(file, 2, 9'000, 1015);
    addSession(file, 2, 19'000, 1021);
    addActivity(file, 1, 2);
    divide(file.file());
    for (int part : {0, 1}) {
        FitBuilder expected = fitFile(bigEndian, 4, marked);
        defineRecord(expected, 2);
        expected.message(2, {part == 0 ? 1000 : 1010, 0, 0, 9});
        addLap(expected, 2, part == 0 ? 10'000 : 9'000, part == 0 ? 1005 : 1015);
        addSession(expected, 2, 19'000, 1021);
        addActivity(expected, 19'000, 1021);
        EXPECT_EQ(bench.output(part == 0 ? "part_000.fit" : "part_001.fit"), expected.file(12)) << part;
    }
    EXPECT_FALSE(std::filesystem::exists(bench.folder.path + "part_002.fit"));
}

// Without a kept summary the activity gets the span of the part's records, in seconds.
TEST_P(Division, ByRecordDefinition)
{
    FitBuilder file = fitFile(bigEndian);
    addEvent(file, 999, 3);      // in no part
    addLap(file, 2, 9'000, 999); // in every part
    for (int local : {2, 6}) {
        defineRecord(file, local);
        file.message(local, {1000, 500, 40, 9}).message(local, {1025, 900, 60, 9});
    }
    addActivity(file, 1, 2);
    divide(file.file());
    for (int part : {0, 1}) {
        int local = part == 0 ? 2 : 6;
        FitBuilder expected = fitFile(bigEndian, 4, marked);
        addLap(expected, 2, 9'000, 999);
        defineRecord(expected, local);
        expected.message(local, {1000, 0, 0, 9}).message(local, {1025, 400, 20, 9});
        addActivity(expected, 25, 1025);
        EXPECT_EQ(bench.output(part == 0 ? "part_000.fit" : "part_001.fit"), expected.file()) << part;
    }
}

// More parts than one walk of the source fills: each holds its own record alone.
TEST_P(Division, IntoHundredsOfParts)
{
    constexpr int parts = 300;
    FitBuilder file = fitFile(bigEndian);
    for (int part = 0; part < parts; part++) {
        defineRecord(file, 2);
        file.message(2, {1000 + part, 500, 40, part % 200});
    }
    addActivity(file, 1, 2);
    divide(file.file());
    for (int part = 0; part < parts; part++) {
        FitBuilder expected = fitFile(bigEndian, 4, marked);
        defineRecord(expected, 2);
        expected.message(2, {1000 + part, 0, 0, part % 200});
        addActivity(expected, 0, 1000 + part);
        ASSERT_EQ(bench.output(dividedFileName("part.fit", part)), expected.file()) << part;
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
