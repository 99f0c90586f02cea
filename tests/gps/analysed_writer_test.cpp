// Analysed files against files made byte by byte.
#include "captured_screens.h"
#include "fit/fit_builder.h"
#include "gps/analysed_fields.h"
#include "gps/analysed_writer.h"

#include <tuple>

namespace torvane {

namespace {

constexpr uint32_t addAll = addSpeed | addDistance | addCadence | addPower;

// The data block of the analysed file; empty when a step refused.
Bytes rewrite(const FitBuilder& builder, const GpsRecords& rows, uint32_t added, const OutputChoice& options = {},
              uint32_t totalTimer = 0)
{
    FitImage source = imageOf(builder.data);
    FitImage destination;
    EXPECT_EQ(planRewrittenSize(destination, source, rows, added), fitOk);
    EXPECT_EQ(writeAnalysedFit(destination, source, rows, added, options, totalTimer), fitOk);
    EXPECT_EQ(static_cast<size_t>(destination.dataSize), destination.data.size());
    return destination.data;
}

GpsRecord row(uint32_t sector, double distance = 0, double speed = 0, double cadence = 0, double power = 0)
{
    GpsRecord r = {};
    r.sector = sector;
    std::tie(r.distance, r.speed, r.cadence, r.power) = std::tie(distance, speed, cadence, power);
    return r;
}

} // namespace

TEST(AnalysedWriter, addedFieldsStandBetweenOwnAndDeveloperFields)
{
    for (bool bigEndian : {false, true}) {
        FitBuilder source, expected;
        source.define(1, messageRecord, {{253, 4, 6}}, bigEndian, {{0, 1, 0}});
        source.define(2, messageLap, {{253, 4, 6}}, bigEndian, {{0, 1, 0}});
        source.define(3, messageSession, {{253, 4, 6}}, bigEndian);
        source.message(1, {50, 7}).message(1, {52, 8}).message(2, {0, 9}).message(3, {0});

        expected.define(1, messageRecord, {{253, 4, 6}, {6, 2, 4}, {5, 4, 6}, {4, 1, 2}, {7, 2, 4}}, bigEndian,
                        {{0, 1, 0}});
        std::vector<FitBuilder::Field> lap = {{253, 4, 6}, {13, 2, 4}, {14, 2, 4}, {9, 4, 6},
                                              {17, 1, 2},  {18, 1, 2}, {19, 2, 4}, {20, 2, 4}};
        expected.define(2, messageLap, lap, bigEndian, {{0, 1, 0}});
        for (size_t i : {1, 2, 4, 5, 6, 7})
            ++lap[i].number; // a session's numbers are one higher, but for the distance
        expected.define(3, messageSession, lap, bigEndian);
        // The distance added to records stays 0. 10.00 m in 2 s are 5 m/s; coasting does not lower cadence and power.
        expected.message(1, {50, 4000, 0, 80, 200, 7}).message(1, {52, 6000, 0, 0, 0, 8});
        expected.message(2, {50, 5000, 6000, 1000, 80, 80, 200, 200, 9});
        expected.message(3, {50, 5000, 6000, 1000, 80, 80, 200, 200});
        Bytes data = rewrite(source, {row(1, 5, 4, 80, 200), row(1, 15, 6, 0, 0)}, addAll);
        EXPECT_TRUE(sameBytes(data, expected.data)) << bigEndian;
    }
}

TEST(AnalysedWriter, lapsAndSessionsAreSummedUpAnew)
{
    const std::vector<FitBuilder::Field> recordFields = {{253, 4}, {0, 4},  {1, 4},  {2, 2},  {3, 1},
                                                         {5, 4},   {13, 1}, {18, 1}, {31, 1}, {33, 2}};
    const std::vector<FitBuilder::Field> lapFields = {
        {2, 4},  {3, 4},  {4, 4},  {5, 4},  {6, 4},  {7, 4},  {8, 4},  {52, 4}, {9, 4},  {10, 4},  {11, 2}, {13, 2},
        {15, 1}, {16, 1}, {42, 2}, {43, 2}, {44, 1}, {50, 1}, {51, 1}, {62, 2}, {63, 1}, {253, 4}, {25, 1}, {254, 2}};
    FitBuilder source, expected;
    for (FitBuilder* b : {&source, &expected})
        b->define(0, messageRecord, recordFields).define(1, messageLap, lapFields);
    source.message(0, {1000, 11, 21, 2600, 120, 0, -3, 5, 4, 100})
        .message(0, {1002, 12, 22, 2500, 130, 0, -5, 6, 6, 200})
        .message(0, {1005, 13, 23, 9999, 255, 0, 99, 9, 9, 999}) // dropped
        .message(0, {1020, 14, 24, 2550, 110, 0, 1, 7, 5, 300})
        .message(0, {1021, 15, 25, 2560, 116, 0, -2, 8, 5, 400})
        .message(1, std::vector<int64_t>(lapFields.size(), 1))
        .message(1, std::vector<int64_t>(lapFields.size(), 1));
    expected.message(0, {1000, 11, 21, 2600, 120, 100, -3, 5, 4, 100})
        .message(0, {1002, 12, 22, 2500, 130, 1600, -5, 6, 6, 200})
        .message(0, {1020, 14, 24, 2550, 110, 9000, 1, 7, 5, 300})
        .message(0, {1021, 15, 25, 2560, 116, 9900, -2, 8, 5, 400})
        // Time and way across the dropped record count in elapsed time alone; 24 m in 3 s.
        .message(1, {1000, 11,  21,   15,   25, 21000, 3000, 3000, 2400, 26,   1000, 8000,
                     119,  130, 2552, 2600, 5,  -2,    1,    2500, 110,  1000, 1,    1})
        .message(1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1});
    Bytes data = rewrite(source, {row(1, 1), row(1, 16), row(0, 50), row(2, 90), row(2, 99)}, 0);
    EXPECT_TRUE(sameBytes(data, expected.data));
}

TEST(AnalysedWriter, theAddedDistanceGoesAstrayWithTheSizeOfAForgottenField)
{
    // The slot's second triple is left from a longer definition: 4 bytes. A record now has 6, the added field at 2, so
    // the value's place is at 4: the two high bytes of the added field, then the next message, which overwrites it.
    FitBuilder source, expected;
    source.define(0, 999, {{1, 1}, {2, 4}}).define(0, messageRecord, {{3, 1}}).message(0, {70}).message(0, {71});
    expected.define(0, 999, {{1, 1}, {2, 4}}).define(0, messageRecord, {{3, 1}, {5, 4, 6}});
    expected.message(0, {70, 0x04030000}).message(0, {71, 0x08070000});
    Bytes data = rewrite(source, {row(1, 10.275), row(1, 20.555)}, addDistance); // 0x403 and 0x807 hundredths
    EXPECT_TRUE(sameBytes(data, expected.data));
}

TEST(AnalysedWriter, refusals)
{
    FitBuilder source;
    source.define(0, messageRecord, {{253, 4}}).message(0, {1}).message(0, {2});
    FitImage image = imageOf(source.data), destination;
    GpsRecords rows(2, row(1));
    ASSERT_EQ(planRewrittenSize(destination, image, rows, addPower), fitOk);
    EXPECT_EQ(writeAnalysedFit(destination, image, rows, addPower | addSpeed, {}, 0), fitSizeMismatch);
    EXPECT_EQ(writeAnalysedFit(destination, image, rows, 0, {}, 0), fitSizeMismatch);
    // A full disk ends it at the first piece.
    source.define(0, messageRecord, std::vector<FitBuilder::Field>(20, {0, 8}));
    for (int i = 0; i < 25'000; ++i)
        source.message(0, std::vector<int64_t>(20, i));
    CapturedScreens shown;
    Progress progress(shown.screens);
    FitImage longer = imageOf(source.data);
    longer.progress = &progress;
    GpsRecords many(25'002, row(1));
    EXPECT_EQ(saveAnalysedFile("/dev/full", longer, many, addPower, {}, 0, Flush::byOwner), fitSaveFailed);
    EXPECT_LT(shown.progress.back(), 50);
    image.data.push_back(0);
    EXPECT_EQ(planRewrittenSize(destination, image, rows, 0), fitInvalid);
    EXPECT_EQ(writeAnalysedFit(destination, image, rows, 0, {}, 0), fitInvalid);
    // No room for another field.
    image.data = FitBuilder().define(0, messageLap, std::vector<FitBuilder::Field>(255, {1, 0})).data;
    EXPECT_EQ(planRewrittenSize(destination, image, {}, addPower), fitSizeMismatch);
    EXPECT_EQ(planRewrittenSize(destination, image, {}, 0), fitOk);
}

} // namespace torvane
