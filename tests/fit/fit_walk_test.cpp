// What a header byte means, how slots are kept, and where a walk ends.
#include "captured_screens.h"
#include "fit/fit_builder.h"
#include "fit/fit_output.h"
#include "fit/fit_walk.h"

namespace torvane {

namespace {

FitImage imageOf(const Bytes& data)
{
    FitImage image;
    image.data = data;
    image.dataSize = static_cast<int32_t>(data.size());
    return image;
}

// Two local types, one of them big-endian with a developer part, redefined in the middle.
FitBuilder mixedBlock()
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{253, 4}, {3, 1}, {0, 4}})
        .message(0, {100, 7, -5})
        .define(15, messageSession, {{5, 1}, {253, 4}}, true, {{0, 3}, {1, 2}})
        .message(15, {2, 0x01020304, 0, 0})
        .compressed(0, 9, {101, 8, 6})
        .define(0, messageLap, {{25, 1}})
        .message(0, {2});
    return builder;
}

} // namespace

TEST(FitWalk, visitsEachMessageWithItsDefinition)
{
    struct Expected {
        bool isDefinition, compressed, bigEndian;
        int localType, global, fields, developerFields;
        size_t offset, size;
    };
    constexpr Expected expected[] = {
        {true, false, false, 0, 20, 3, 0, 0, 15},  {false, false, false, 0, 20, 3, 0, 15, 10},
        {true, false, true, 15, 18, 2, 2, 25, 19}, {false, false, true, 15, 18, 2, 2, 44, 11},
        {false, true, false, 0, 20, 3, 0, 55, 10}, {true, false, false, 0, 19, 1, 0, 65, 9},
        {false, false, false, 0, 19, 1, 0, 74, 2},
    };
    size_t count = 0;
    EXPECT_EQ(walkMessages(imageOf(mixedBlock().data),
                           [&](const FitMessage& m) {
                               ASSERT_LT(count, std::size(expected));
                               const Expected& e = expected[count];
                               EXPECT_EQ(m.isDefinition, e.isDefinition) << count;
                               EXPECT_EQ(m.compressed, e.compressed) << count;
                               EXPECT_EQ(m.localType, e.localType) << count;
                               EXPECT_EQ(m.globalMessage(), e.global) << count;
                               EXPECT_EQ(m.definition->bigEndian(), e.bigEndian) << count;
                               EXPECT_EQ(m.definition->fieldCount, e.fields) << count;
                               EXPECT_EQ(m.definition->developerFieldCount, e.developerFields) << count;
                               EXPECT_EQ(m.offset, e.offset) << count;
                               EXPECT_EQ(m.bytes.size(), e.size) << count;
                               EXPECT_EQ(m.payload.size(), e.isDefinition ? 0 : e.size - 1) << count;
                               ++count;
                           }),
              fitOk);
    EXPECT_EQ(count, std::size(expected));
    // A shorter definition leaves the triples behind its own as they were.
    EXPECT_EQ(localDefinitions[0].fields[1].number, 3);
    EXPECT_EQ(localDefinitions[0].fieldBytes, 1u);
}

TEST(FitWalk, cutAnywhereButBetweenMessagesItIsAFault)
{
    const Bytes data = mixedBlock().data;
    for (size_t length = 0; length <= data.size(); ++length) {
        bool between = false;
        for (size_t boundary : {0, 15, 25, 44, 55, 65, 74, 76})
            between = between || boundary == length;
        // In a vector of its own, so that the sanitizers see any read behind its end.
        FitImage image = imageOf(Bytes(data.begin(), data.begin() + static_cast<int>(length)));
        image.data.shrink_to_fit();
        EXPECT_EQ(walkMessages(image, [](const FitMessage&) {}), between ? fitOk : fitInvalid) << length;
    }
}

TEST(FitWalk, bit6AloneMakesADefinition)
{
    // A compressed header of local type 2 by the published layout.
    const Bytes data = {0xC3, 0, 0, 20, 0, 1, 253, 4, 6, 3, 1, 2, 3, 4};
    std::vector<int> seen;
    EXPECT_EQ(
        walkMessages(imageOf(data),
                     [&](const FitMessage& m) { seen.push_back(m.isDefinition ? 100 + m.localType : m.localType); }),
        fitOk);
    EXPECT_EQ(seen, (std::vector<int>{103, 3}));
}

TEST(FitWalk, undefinedTypesAreOneByteLong)
{
    int count = 0;
    walkMessages(imageOf(mixedBlock().data), [](const FitMessage&) {}); // whose definitions end with it
    EXPECT_EQ(walkMessages(imageOf({0x01, 0x02, 0x8F, 0x3F}),
                           [&](const FitMessage& m) {
                               EXPECT_EQ(m.bytes.size(), 1u);
                               EXPECT_FALSE(m.definition->defined());
                               ++count;
                           }),
              fitOk);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(walkMessages(imageOf({}), [&](const FitMessage&) { ++count; }), fitOk);
    EXPECT_EQ(count, 4);
}

TEST(FitWalk, aWalkIsTakenUpWithTheSlotsAsTheyStand)
{
    FitImage image = imageOf(mixedBlock().data);
    FitWalk walk = startWalk(image);
    FitMessage message;
    for (int i = 0; i < 4; ++i)
        ASSERT_EQ(nextMessage(walk, message), WalkStep::message);
    FitWalk again = resumeWalk(image, walk.position);
    ASSERT_EQ(nextMessage(again, message), WalkStep::message);
    EXPECT_EQ(message.offset, 55u);
    EXPECT_EQ(message.bytes.size(), 10u);
    FitWalk beyond = resumeWalk(image, 77);
    EXPECT_EQ(nextMessage(beyond, message), WalkStep::fault);
}

TEST(FitWalk, progressMovesByWholePercentsUpToTheEnd)
{
    FitBuilder builder;
    builder.define(0, 99, {{1, 1}});
    for (int i = 0; i < 2000; ++i)
        builder.message(0, {i});
    CapturedScreens shown;
    walkMessages(imageOf(builder.data), [](const FitMessage&) {});
    ASSERT_FALSE(shown.progress.empty());
    EXPECT_LE(shown.progress.size(), 101u);
    EXPECT_TRUE(std::is_sorted(shown.progress.begin(), shown.progress.end()));
    EXPECT_EQ(shown.progress.back(), 100);
}

TEST(FitOutput, countsOnBeyondItsEndWithoutWriting)
{
    std::vector<uint8_t> block(4);
    FitOutput out = {block};
    const Bytes three = {1, 2, 3};
    EXPECT_EQ(copyBytes(out, three).size(), 3u);
    EXPECT_TRUE(copyBytes(out, three).empty());
    EXPECT_EQ(out.position, 6u);
    EXPECT_EQ(block, (Bytes{1, 2, 3, 0}));
}

} // namespace torvane
