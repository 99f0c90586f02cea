// Preparing a ride: what becomes of time, of missing values, of positions off the track, of messages between records.
#include "prepare_fixture.h"

#include "figures.h"
#include "gps/gps_load.h"
#include "ride_maker.h"

#include <numeric>
#include <tuple>

namespace torvane {

namespace {

using Values = std::vector<int64_t>;

constexpr int64_t noByte = 0xFF, noWord = 0xFFFF, noLong = 0xFFFFFFFF;
constexpr int64_t metreNorth = 107; // semicircles, 0.9973 m of latitude

} // namespace

TEST(Prepare, FillsStepsButNeitherPausesNorLongOnes)
{
    Recording ride({timeField, distanceField, speedField});
    ride.record({100, 0, 4000}).record({104, 1000, 2000}).timer(104, 4);
    ride.timer(110, 0).record({112, 1500, 2000}).record({113, 1600, 2000}).record({144, 9000, 2000});
    Prepared done(ride.data);
    EXPECT_EQ(done.records(253), (Values{100, 101, 102, 103, 104, 112, 113, 144}));
    EXPECT_EQ(done.records(5), (Values{0, 250, 500, 750, 1000, 1500, 1600, 9000}));
    EXPECT_EQ(done.records(6), (Values{4000, 3500, 3000, 2500, 2000, 2000, 2000, 2000}));
    expectFigures({done.findings.recordsFilled, done.findings.stepsPaused, done.findings.stepsLong,
                   done.findings.seconds, done.findings.centimetres,
                   Prepared(ride.data, {.gapLimit = 31}).records(253).size()},
                  {3, 1, 1, 5, 1100, 38});
}

TEST(Prepare, RefusesWhatWouldGrowFarBeyondItsSource)
{
    Recording sparse({timeField}), dense({timeField});
    dense.record({1}).define(localSession, 20, {});
    for (int i = 0; i < 100; ++i) {
        sparse.record({300 * i + 1}); // 300 prepared records for one
        dense.compressed(localSession, i % 32, {});
    }
    EXPECT_EQ(Prepared(sparse.data, {.gapLimit = 300}).code, fitTooLarge);
    EXPECT_EQ(Prepared(sparse.data).code, fitOk);
    EXPECT_EQ(Prepared(dense.data).code, fitTooLarge);
}

// Of a leap of the clock the smaller side goes, of equal sides the later.
TEST(Prepare, KeepsTheRidesOwnTimes)
{
    const std::tuple<Values, Values, std::array<uint32_t, 4>> cases[] = {
        {{100, 101, 101, 100, 102, 9000, 103, noLong, 104}, {100, 101, 102, 103, 104}, {1, 1, 1, 1}},
        {{100, 101, 5000, 5001, 5002, 102, 103, 104, 105}, {100, 101, 102, 103, 104, 105}, {0, 0, 3, 0}},
        {{500, 501, 100, 101, 102}, {100, 101, 102}, {0, 0, 2, 0}},
        {{100, 500, 501, 101, 102}, {100, 500, 501}, {0, 2, 0, 0}},
    };
    for (const auto& [times, kept, dropped] : cases) {
        SCOPED_TRACE(testing::PrintToString(times));
        Recording ride({timeField, heartRateField});
        for (int64_t time : times)
            ride.record({time, time & 0x7F});
        Prepared done(ride.data);
        EXPECT_EQ(done.records(253), kept);
        for (size_t i = 0; i < kept.size(); ++i)
            EXPECT_EQ(done.records(3)[i], kept[i] & 0x7F);
        const PrepareFindings& f = done.findings;
        EXPECT_EQ((std::array{f.equalTimestamps, f.backwardTimestamps, f.leapingTimestamps, f.withoutTimestamp}),
                  dropped);
    }
}

// Its mean speed rather than its highest; without one, that of way and timer: 16 m in 4 s.
TEST(Prepare, FindsTheSpeedOfTheDevice)
{
    for (auto [average, found] : {std::pair<int64_t, double>{5000, 5000}, {noWord, 4000}}) {
        Recording ride({timeField, heartRateField});
        ride.record({100, 90}).define(localSession, 18, {{14, 2, 0x84}, {15, 2, 0x84}, {8, 4, 0x86}, {9, 4, 0x86}});
        ride.message(localSession, {average, 9000, 4000, 1600});
        EXPECT_EQ(Prepared(ride.data).findings.deviceSpeed, found) << average;
    }
}

// Also of the local types that other walks take for definitions, and from the time of any message.
TEST(Prepare, MakesCompressedTimestampsFull)
{
    Recording ride({timeField, heartRateField});
    ride.record({1000 * 32 + 30, 90}).define(localSession, 20, {heartRateField});
    ride.compressed(localSession, 31, {91}).compressed(localSession, 0, {92}).compressed(localSession, 2, {93});
    ride.timer(1001 * 32 + 20, 3).compressed(localSession, 9, {94});
    Prepared done(ride.data, {.gapLimit = 39});
    expectFigures({done.records(253).front(), done.records(253).back(), done.records(3).size(), done.records(3)[4],
                   done.records(3).back(), done.findings.compressedTimestamps},
                  {32030, 32073, 44, 93, 94, 4});

    Recording event({timeField, heartRateField});
    event.record({64, 90});
    event.define(localOther - 2, 21, {{0, 1, 0}, {1, 1, 0}}).compressed(localOther - 2, 5, {11, 3});
    EXPECT_EQ(Prepared(event.data).values(21, 253), (Values{69}));
}

TEST(Prepare, PutsEnhancedFieldsIntoPlainOnes)
{
    for (bool big : {false, true}) {
        Recording ride({timeField, {73, 4, 0x86}, {78, 4, 0x86}, {6, 2, 0x84}, {7, 2, 0x84}}, big);
        ride.record({100, 5000, 3000, noWord, noWord}).record({101, 5001, 70000, 6000, noWord});
        ride.record({102, noLong, 3002, noWord, noWord}).record({103, 5000, 3003, noWord, noWord});
        const std::vector<FitBuilder::Field> summary = {timeField,  {124, 4, 0x86}, {125, 4, 0x86}, {14, 2, 0x84},
                                                        {16, 1, 2}, {5, 1, 0},      {8, 4, 0x86},   {126, 4, 0x86}};
        ride.define(localSession, 18, summary, big, {{0, 2, 0}});
        ride.message(localSession, {103, 4000, 6000, noWord, noByte, 2, 3000, 70000, 0x1234});
        Prepared done(ride.data);
        EXPECT_EQ(done.records(6), (Values{5000, 6000, 5500, 5000})) << big;
        EXPECT_EQ(done.records(2), (Values{3000, 3001, 3002, 3003})) << big;
        EXPECT_EQ(done.records(73), (Values{-1, -1, -1, -1}));
        EXPECT_EQ(done.records(7), (Values{-1, -1, -1, -1})) << big; // nothing but markers
        for (auto [field, value] :
             std::map<int, int64_t>{{14, 4000}, {15, 6000}, {124, -1}, {16, -1}, {5, 2}, {126, -1}, {49, -1}})
            EXPECT_EQ(done.values(18, field), Values{value}) << field;
        EXPECT_EQ(done.values(0, 1), Values{big ? 0xFF00 : 0x00FF}); // the mark of a rewritten file
        EXPECT_EQ(done.findings.deviceSpeed, 4000);
    }
}

TEST(Prepare, BridgesShortHolesAndStatesLongOnes)
{
    // shortHole: of 4 seconds
    const std::tuple<FitBuilder::Field, int64_t, int64_t, int64_t, Values, int64_t> cases[] = {
        {heartRateField, noByte, 100, 104, {100, 101, 102, 103, 104}, 100},
        {temperatureField, 0x7F, 20, 24, {20, 21, 22, 23, 24}, 20},
        {cadenceField, noByte, 80, 88, {80, 82, 84, 86, 88}, noByte},
        {powerField, noWord, 300, 100, {300, 250, 200, 150, 100}, noWord},
        {altitudeField, noWord, 3000, 3040, {3000, 3010, 3020, 3030, 3040}, 3020},
        {distanceField, noLong, 0, 2000, {0, 500, 1000, 1500, 2000}, 1000},
    };
    for (const auto& [field, none, before, after, shortHole, inLongHole] : cases) {
        auto rideWithAHole = [&](int length) {
            Recording ride({timeField, field});
            for (int i = 0; i <= length; ++i)
                ride.record({100 + i, i == 0 ? before : i == length ? after : none});
            return Prepared(ride.data).records(field.number);
        };
        EXPECT_EQ(rideWithAHole(4), shortHole) << field.number;
        EXPECT_EQ(rideWithAHole(20)[10], inLongHole) << field.number;
    }
}

TEST(Prepare, DerivesDistanceAndSpeed)
{
    Recording positions({timeField, latitudeField, longitudeField});
    for (int i = 0; i < 5; ++i)
        positions.record({100 + 2 * i, 500'000'000 + 20 * metreNorth * i, 100});
    Prepared byPosition(positions.data);
    EXPECT_EQ(byPosition.records(5).back(), 7978); // 80 x 107 semicircles
    for (int64_t speed : byPosition.records(6))
        EXPECT_NEAR(speed, 9973, 3);

    Recording speeds({timeField, speedField});
    speeds.record({100, 4000}).record({102, 6000}).record({103, 6000});
    EXPECT_EQ(Prepared(speeds.data).records(5), (Values{0, 500, 1000, 1600}));

    Recording distances({timeField, distanceField});
    distances.record({100, 0}).record({101, 500}).record({102, 1500}).record({200, 9000}).record({201, 9500});
    EXPECT_EQ(Prepared(distances.data).records(6), (Values{5000, 7500, 10000, 5000, 5000}));
}

// Positions in metres to the north, one a second; what is left of them when they are prepared.
TEST(Prepare, DropsPositionsOutOfReach)
{
    Values moved(60); // by kilometres behind the first, and believed
    std::iota(moved.begin() + 1, moved.end(), 5001);
    const std::tuple<Values, Values, uint32_t, uint32_t> cases[] = {
        {{0, 10, 500, 510, 40, 50}, {0, 10, 20, 30, 40, 50}, 2, 0},
        {{0, 10, 20, 900}, {0, 10, 20, 20}, 1, 0}, // the last one stands
        {{0, 45, 50}, {0, 45, 50}, 0, 1},          // soon within reach of the first
        {moved, moved, 0, 1},
    };
    for (const auto& [north, believable, off, shifts] : cases) {
        SCOPED_TRACE(testing::PrintToString(north));
        Recording ride({timeField, latitudeField, longitudeField});
        for (size_t i = 0; i < north.size(); ++i)
            ride.record({1000 + static_cast<int64_t>(i), 500'000'000 + metreNorth * north[i], 100});
        Prepared done(ride.data);
        Values kept;
        for (int64_t latitude : done.records(0))
            kept.push_back((latitude - 500'000'000) / metreNorth);
        EXPECT_EQ(kept, believable);
        expectFigures({done.findings.positionsOff, done.findings.positionShifts}, {off, shifts});
    }
}

// Across the date line, and a device that says 0, 0 before it has a fix.
TEST(Prepare, KnowsWherePositionsAre)
{
    Recording ride({timeField, latitudeField, longitudeField});
    ride.record({100, 0, 0}).record({101, 1000, 0x7FFFFF00}).record({105, 1000, -0x7FFFFF02});
    Prepared done(ride.data);
    // 0x7FFFFFFF would say that there is none.
    EXPECT_EQ(done.records(1), (Values{0x7FFFFF00, 0x7FFFFF00, 0x7FFFFF80, 0x7FFFFFFE, 0x8000007F, 0x800000FE}));
    EXPECT_EQ(done.records(0), Values(6, 1000));
    EXPECT_EQ(done.findings.fields[rideLatitude].settled, 1u);
}

TEST(Prepare, PassesOtherMessagesInPlace)
{
    Recording ride({timeField, heartRateField, {90, 2, 0x84}});
    ride.define(localSession, 78, {{0, 4, 0x84}}, false, {{1, 2, 0}}).define(localOther, 65300, {timeField});
    ride.record({100, 90, 7}).message(localSession, {1234, 5}).message(localOther, {102});
    ride.record({104, 94, 7}).message(9, {});
    ride.record({104, 95, 7}).message(localSession, {5678, 5});
    ride.record({105, 95, 7});
    Prepared done(ride.data);
    std::string order;
    for (const ReadMessage& message : done.messages)
        order += message.global == 20 ? 'r' : message.global == 78 ? 'h' : message.global == 0 ? 'f' : 'x';
    EXPECT_EQ(order, "frhrxrrrhr"); // the last but one behind the new records up to its time
    EXPECT_EQ(done.values(78, 0), (Values{1234, 5678}));
    const PrepareFindings& f = done.findings;
    expectFigures({f.messagesUndefined, f.fieldsLeftOut.test(90), f.fieldsLeftOut.count()}, {1, 1, 1});
}

TEST(Prepare, TakesMeasuredFieldsOut)
{
    Recording ride({timeField, powerField, cadenceField, speedField});
    ride.record({100, 200, 90, 8000}).record({101, 210, 91, 8000});
    ride.define(localSession, 18, {{5, 1, 0}, {20, 2, 0x84}, {21, 2, 0x84}, {18, 1, 2}, {9, 4, 0x86}});
    ride.message(localSession, {2, 205, 210, 90, 1600});
    Prepared power(ride.data, {.dropPower = 1}), cadence(ride.data, {.dropCadence = 1});
    EXPECT_EQ(power.records(7), (Values{-1, -1}));
    EXPECT_EQ(cadence.records(4), (Values{-1, -1}));
    expectFigures(
        {power.records(4)[0], power.values(18, 20)[0], power.values(18, 18)[0], power.findings.summaryMeasured},
        {90, -1, 90, 2});
    expectFigures({cadence.records(7)[0], cadence.values(18, 18)[0], cadence.values(18, 20)[0]}, {200, -1, 205});
}

// Held for three seconds and again, once while the bicycle stands; without speeds a long hold is a stand.
TEST(Prepare, SpreadsDistancesThatAreHeld)
{
    const std::tuple<bool, Values, Values, Values> cases[] = {
        {true, {0, 0, 0, 1500, 2000}, {5000, 5000, 5000, 5000, 5000}, {0, 500, 1000, 1500, 2000}},
        {true, {0, 0, 0, 1500, 1500}, {2000, 4000, 4000, 8000, 0}, {0, 346, 808, 1500, 1500}},
        {true, {0, 500, 500, 500, 800}, {5000, 5000, 0, 0, 2000}, {0, 500, 500, 500, 800}},
        {false, {0, 0, 0, 1500, 2000}, {}, {0, 500, 1000, 1500, 2000}},
    };
    for (const auto& [hasSpeed, held, speeds, told] : cases) {
        SCOPED_TRACE(testing::PrintToString(held) + " at " + testing::PrintToString(speeds));
        Recording ride(hasSpeed ? std::vector{timeField, distanceField, speedField}
                                : std::vector{timeField, distanceField});
        for (size_t i = 0; i < held.size(); ++i) {
            Values record = {1000 + static_cast<int64_t>(i), held[i]};
            if (hasSpeed)
                record.push_back(speeds[i]);
            ride.record(record);
        }
        Prepared done(ride.data);
        EXPECT_EQ(done.records(5), told);
        EXPECT_EQ(done.findings.distancesHeld, told == held ? 0u : 2u);
        EXPECT_EQ(Prepared(done.image.data).image.data, done.image.data);
    }
}

TEST(Prepare, BelievesWhatMoves)
{
    enum { distance = 1, speed = 2, position = 4 };
    // What moves of three fields; metres after 40 s at 5 m/s, by positions 4 m/s.
    const std::pair<int, double> cases[] = {{distance, 200},         {speed, 200}, {position, 160},
                                            {speed | position, 200}, {0, 0},       {7, 200}};
    for (auto [moving, metres] : cases) {
        Recording ride({timeField, distanceField, speedField, latitudeField, longitudeField});
        for (int i = 0; i <= 40; ++i)
            ride.record({1000 + i, moving & distance ? 500 * i : 7, moving & speed ? 5000 : 0,
                         500'000'000 + (moving & position ? 4 * metreNorth * i : 0), 100});
        Prepared done(ride.data);
        EXPECT_NEAR((done.records(5).back() - done.records(5).front()) / 100.0, metres, 1) << moving;
        EXPECT_EQ(done.records(6)[20] > 3000, moving != 0) << moving;
        EXPECT_EQ(done.findings.distanceStill, moving != 0 && !(moving & distance)) << moving;
    }
}

// One that starts again from 0; such that are told too far, and too near, for a moment.
TEST(Prepare, JoinsDistancesThatStartAgain)
{
    const std::pair<Values, Values> cases[] = {
        {{1000, 2000, 1990, 3000, 100, 1100, 0, 2100}, {1000, 2000, 2500, 3000, 3100, 4100, 4600, 5100}},
        {{100000, 101000, 102000, 103000, 104000, 105000, 106000, 85000, 86000, 87000}, // by 210 m, not to 0
         {100000, 101000, 102000, 103000, 104000, 105000, 106000, 106500, 107000, 108000}},
        {{1000, 2000, 2'000'000, 4000, 7, 6000, 7000}, {1000, 2000, 3000, 4000, 5000, 6000, 7000}},
    };
    for (const auto& [device, told] : cases) {
        Recording ride({timeField, distanceField});
        for (size_t i = 0; i < device.size(); ++i)
            ride.record({1000 + static_cast<int64_t>(i), device[i]});
        EXPECT_EQ(Prepared(ride.data).records(5), told) << testing::PrintToString(device);
    }
}

TEST(Prepare, TakesTheLegsOfOneSport)
{
    Recording ride({timeField, heartRateField});
    ride.define(localSession, 18, {timeField, {2, 4, 0x86}, {7, 4, 0x86}, {5, 1, 0}});
    ride.message(localSession, {129, 120, 9000, 2}).message(localSession, {119, 100, 19000, 1}); // in front of all
    ride.timer(110, 4).timer(112, 0).define(localOther, 65300, {timeField}).message(localOther, {125});
    for (int i = 100; i < 130; ++i)
        ride.record({i, i});
    Prepared cycling(ride.data), running(ride.data, {.sport = rideRunning});
    expectFigures({cycling.records(3).front(), cycling.records(3).back(), cycling.findings.recordsOfOtherSports},
                  {120, 129, 20});
    EXPECT_EQ(cycling.values(65300, 253), Values{125}) << "with the stop of the run in front of it gone";
    expectFigures({running.records(3).front(), running.records(3).back()}, {100, 119});
    EXPECT_EQ(running.values(18, 5), Values{1});
    EXPECT_EQ(running.messages[running.messages.size() - 2].global, 18) << "behind its records";
    EXPECT_EQ(Prepared(ride.data, {.sport = rideSwimming}).code, fitSessionSportsDiffer);
    EXPECT_EQ(Prepared(running.image.data).image.data, running.image.data);
}

TEST(Prepare, RefusesWhatItCannotPrepare)
{
    constexpr std::tuple<int, int, int, int, StatusCode> cases[] = {
        {18, 5, 2, 0xFF, fitOk}, {19, 25, 2, 0xFF, fitOk}, {18, 5, 2, 1, fitSessionSportsDiffer}};
    for (auto [message, field, firstSport, secondSport, code] : cases) {
        SCOPED_TRACE(testing::Message() << "message " << message << ", second sport " << secondSport);
        Recording ride({timeField, heartRateField});
        ride.record({100, 90}).define(localSession, message, {{field, 1, 0}});
        ride.message(localSession, {firstSport}).message(localSession, {secondSport});
        Prepared done(ride.data);
        EXPECT_EQ(done.code, code);
        EXPECT_EQ(done.values(message, field), code == fitOk ? Values({2, 2}) : Values());
    }
    EXPECT_EQ(Prepared(Recording({heartRateField}).record({90}).data).code, fitPrepareFailed);
    EXPECT_EQ(Prepared(Bytes{0x40, 0, 0}).code, fitInvalid);
}

// A ride of the model, sampled now and then: what is prepared of it loads, is coherent, and is the ride again.
class PreparedRide : public ModelTest {};

TEST_F(PreparedRide, IsTheRideAgainThatWasSampledNowAndThen)
{
    GpsRecords ride = makeRide(model, {.seconds = 900});
    GpsRecords sampled;
    for (size_t i = 0; i < ride.size(); i += 1 + i % 7)
        sampled.push_back(ride[i]);
    Prepared done(fitOf(sampled).data);
    ASSERT_EQ(done.code, fitOk);
    LoadedRide loaded = {done.image};
    EXPECT_EQ(gatherActivity(loaded), fitOk);
    GpsRecords read(loaded.inventory.recordCount);
    ASSERT_EQ(fillRecords(done.image, read), fitOk);
    ASSERT_EQ(read.size(), sampled.back().timestamp - sampled.front().timestamp + 1);
    for (size_t i = 0; i < read.size(); ++i) {
        SCOPED_TRACE(i);
        expectFigures({read[i].timestamp, read[i].distance}, {ride[i].timestamp, ride[i].distance}, 0.5);
        EXPECT_NEAR(read[i].speed, ride[i].speed, 0.1);
        EXPECT_NEAR(read[i].latitude, ride[i].latitude, 5e-6);
    }
    EXPECT_EQ(Prepared(done.image.data).image.data, done.image.data);
}

} // namespace torvane
