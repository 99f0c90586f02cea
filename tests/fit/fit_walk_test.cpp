// What a header byte means, how slots are kept, and where a walk ends.
#include "figures.h"
#include "fit/fit_builder.h"
#include "fit/fit_walk.h"

#include <set>

namespace torvane {

namespace {

// Two local types, one of them big-endian with a developer part, redefined in the middle.
FitBuilder mixedBlock()
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{253, 4}, {3, 1}, {0, 4}}).message(0, {100, 7, -5});
    builder.define(15, messageSession, {{5, 1}, {253, 4}}, true, {{0, 3}, {1, 2}}).message(15, {2, 0x01020304, 0, 0});
    return builder.compressed(0, 9, {101, 8, 6}).define(0, messageLap, {{25, 1}}).message(0, {2});
}

} // namespace

TEST(FitWalk, visitsEachMessageWithItsDefinition)
{
    // Definition, compressed, big-endian; local type, message, fields, developer fields; offset, size, payload.
    const std::vector<AnyNumber> expected[] = {
        {1, 0, 0, 0, 20, 3, 0, 0, 15, 0},    {0, 0, 0, 0, 20, 3, 0, 15, 10, 9}, {1, 0, 1, 15, 18, 2, 2, 25, 19, 0},
        {0, 0, 1, 15, 18, 2, 2, 44, 11, 10}, {0, 1, 0, 0, 20, 3, 0, 55, 10, 9}, {1, 0, 0, 0, 19, 1, 0, 65, 9, 0},
        {0, 0, 0, 0, 19, 1, 0, 74, 2, 1},
    };
    size_t count = 0;
    auto visit = [&](const FitMessage& m) {
        ASSERT_LT(count, std::size(expected));
        expectFigures({m.isDefinition, m.compressed, m.definition->bigEndian(), m.localType, m.globalMessage(),
                       m.definition->fieldCount, m.definition->developerFieldCount, m.offset, m.bytes.size(),
                       m.payload.size()},
                      expected[count++]);
    };
    FitImage image = imageOf(mixedBlock().data);
    FitWalk walk = startWalk(image);
    EXPECT_EQ(walkMessages(walk, visit), fitOk);
    EXPECT_EQ(count, std::size(expected));
    // A shorter definition leaves the triples behind its own as they were.
    EXPECT_EQ(walk.definitions[0].fields[1].number, 3);
    EXPECT_EQ(walk.definitions[0].fieldBytes, 1u);
}

TEST(FitWalk, cutAnywhereButBetweenMessagesItIsAFault)
{
    Bytes data = mixedBlock().data;
    for (size_t length = 0; length <= data.size(); ++length) {
        bool between = std::set<size_t>{0, 15, 25, 44, 55, 65, 74, 76}.contains(length);
        // In a vector of its own, so that the sanitizers see any read behind its end.
        FitImage image = imageOf(Bytes(data.begin(), data.begin() + static_cast<int>(length)));
        image.data.shrink_to_fit();
        EXPECT_EQ(walkMessages(image, [](const FitMessage&) {}), between ? fitOk : fitInvalid) << length;
        EXPECT_EQ(walksToItsEnd(image.data), between) << length;
    }
}

TEST(FitWalk, bit6AloneMakesADefinition)
{
    // A compressed header of local type 2 by the published layout.
    Bytes data = {0xC3, 0, 0, 20, 0, 1, 253, 4, 6, 3, 1, 2, 3, 4};
    std::vector<int> seen;
    walkMessages(imageOf(data), [&](const FitMessage& m) { seen.push_back(100 * m.isDefinition + m.localType); });
    EXPECT_EQ(seen, (std::vector<int>{103, 3}));
}

} // namespace torvane
