// A prepared ride analysed and written again: what a meter did not give, and what sessions and laps say.
#include "prepare_fixture.h"

#include "figures.h"
#include "gps/analysed_writer.h"
#include "gps/analysis.h"
#include "gps/gps_load.h"
#include "gps/power_split.h"
#include "gps/summary_figures.h"
#include "ride_maker.h"

#include <cmath>
#include <numeric>

namespace torvane {

namespace {

using Values = std::vector<int64_t>;

// 2,200 s at 20 m/s, with a meter that gives 300 W and 90 rpm and nothing for the last 200 s; a lap at half of it.
Bytes meteredRide(bool metered)
{
    constexpr int64_t noByte = 0xFF, noWord = 0xFFFF;
    Recording ride({timeField, distanceField, speedField, altitudeField, cadenceField, powerField});
    ride.define(localOther, 19, {timeField, {2, 4, 0x86}, {7, 4, 0x86}, {20, 2, 0x84}});
    ride.define(
        localSession, 18,
        {timeField, {2, 4, 0x86}, {7, 4, 0x86}, {5, 1, 0}, {11, 2, 0x84}, {49, 2, 0x84}, {50, 2, 0x84}, {71, 2, 0x84}},
        true);
    for (int i = 0; i < 2200; ++i) {
        bool given = metered && i < 2000;
        ride.record({1000 + i, 2000 * i, 20000, 3000, given ? 90 : noByte, given ? 300 : noWord});
        if (i % 1100 == 1099)
            ride.message(localOther, {1000 + i, i - 99, 1'099'000, 7});
    }
    ride.message(localSession, {3199, 1000, 2'199'000, 2, 123, 1, 1, 1});
    return ride.data;
}

class PreparedAnalysis : public ModelTest {
protected:
    PreparedAnalysis()
    {
        block.analyseSmoothing = 0;
    }
    // The file written after the analysis, and its rows.
    Prepared written(const Bytes& data, const PrepareOptions& options = {})
    {
        Prepared done(data, options);
        LoadedRide ride = {done.image};
        ride.prepared = true;
        EXPECT_EQ(gatherActivity(ride), fitOk);
        EXPECT_EQ(analyseRide(model, block, ride, analysis), fitOk);
        uint32_t added = addedFieldsOf(analysis.flags);
        FitImage file;
        EXPECT_EQ(planRewrittenSize(file, ride.image, analysis.records, added), fitOk);
        EXPECT_EQ(writeAnalysedFit(file, ride.image, analysis.records, added, {}, 0), fitOk);
        done.image = file;
        done.messages = readMessages(file);
        return done;
    }
    Analysis analysis;
};

} // namespace

TEST_F(PreparedAnalysis, fillsOnlyWhatTheMeterDidNotGive)
{
    GpsRecords::value_type last = {};
    for (int predict : {0, 1}) {
        SCOPED_TRACE(predict);
        block.predictPower = block.predictCadence = predict;
        Prepared file = written(meteredRide(true));
        last = analysis.records.back();
        EXPECT_EQ(analysis.records[1950].power, 300);
        EXPECT_EQ(std::isnan(last.power), predict == 0);
        EXPECT_EQ(file.records(7)[1950], 300);
        EXPECT_EQ(file.records(7)[2050] == 0xFFFF, predict == 0);
        EXPECT_EQ(file.records(4)[2050] == 0xFF, predict == 0);
    }
    written(meteredRide(true), {.dropPower = 1, .dropCadence = 1});
    EXPECT_NEAR(analysis.records.back().power, last.power, 1e-9) << "as if there were no meter";
}

TEST_F(PreparedAnalysis, summariesAreOverWhatIsThereAndDoNotWrap)
{
    block.predictPower = block.predictCadence = 0;
    Prepared file = written(meteredRide(true));
    // Mean, highest, normalised power, work; cadence; distance and speed: 44 km in one session.
    constexpr std::pair<int, int64_t> cases[] = {
        {20, 300}, {21, 300},  {34, 300},  {48, 600'000}, {18, 90},    {19, 90},  {9, 2199 * 2000}, {14, 20000},
        {11, 123}, {49, 3000}, {50, 3000}, {71, 3000},    {253, 3199}, {2, 1000}, {7, 2'199'000}};
    for (auto [field, value] : cases)
        EXPECT_EQ(file.values(18, field), Values{value}) << field;
    EXPECT_EQ(file.values(19, 20), (Values{300, 300}));
    EXPECT_EQ(file.values(19, 41), (Values{330'000, 270'000}));
    EXPECT_EQ(file.values(19, 8).size(), 2u);
}

// The highest number of a type says that there is none.
TEST(SummaryFigure, isWrittenWhereItFits)
{
    constexpr std::tuple<uint8_t, uint8_t, int64_t, uint32_t> cases[] = {
        {1, 0x02, 254, 254},     {1, 0x02, 255, 255},   {1, 0x02, 256, 255},       {1, 0x02, -1, 255},
        {1, 0x01, -128, 0x80},   {1, 0x01, 126, 126},   {1, 0x01, 127, 127},       {1, 0x01, -129, 127},
        {2, 0x84, 65534, 65534}, {2, 0x83, -5, 0xFFFB}, {4, 0x85, -9, 0xFFFFFFF7},
    };
    for (auto [width, type, figure, written] : cases) {
        Bytes field(width);
        writeFigure(field, type, figure, false);
        EXPECT_EQ(readNumber(field, 0, width, false), written) << figure << " of type " << int{type};
    }
}

TEST_F(PreparedAnalysis, predictedFieldsHaveTheTypesOfTheProfile)
{
    Prepared file = written(meteredRide(false));
    std::map<int, int> types;
    walkMessages(file.image, [&](const FitMessage& message) {
        if (message.defines(messageRecord))
            for (const FieldDefinition& field : message.definition->fieldList())
                types[field.number] = field.baseType;
    });
    EXPECT_EQ(types[7], 0x84);
    EXPECT_EQ(types[4], 0x02);
    EXPECT_GT(file.values(18, 20)[0], 500) << "W, at 72 kph";
    EXPECT_LT(file.values(18, 20)[0], 65535);
}

// Over waves of 20 m, at a speed that changes; where nothing is asked, the brakes take the rest.
TEST_F(PreparedAnalysis, powersOfASplitAddUpToThatOfThePedals)
{
    Recording made({timeField, distanceField, speedField, altitudeField});
    for (int i = 0; i < 900; ++i)
        made.record({1000 + i, 800 * i, 8000 + std::lround(500 * std::sin(i / 20.0)),
                     3000 + std::lround(100 * std::sin(i / 40.0))});
    Prepared done(made.data);
    LoadedRide ride = {done.image};
    ride.prepared = true;
    ASSERT_EQ(gatherActivity(ride), fitOk);
    block.predictPower = block.predictCadence = 1;
    for (Physics physics : {Physics::classic, Physics::ofTheRoad}) {
        SCOPED_TRACE(static_cast<int>(physics));
        ASSERT_EQ(analyseRide(model, block, ride, analysis, physics), fitOk);
        std::vector<RowPowers> splits = powerSplitOf(model, analysis, ride.summary);
        int pedalled = 0;
        for (size_t i = 0; i < splits.size(); ++i) {
            double sum = std::accumulate(splits[i].sinks.begin(), splits[i].sinks.end(), 0.0);
            double power = analysis.records[i].power;
            if (power > 0)
                EXPECT_NEAR(sum, power, 0.1) << i;
            else
                EXPECT_NEAR(sum, 5, 5.01) << i;
            pedalled += power > 0;
        }
        EXPECT_GT(pedalled, 300);
        EXPECT_LT(pedalled, 900);
    }
}

} // namespace torvane
