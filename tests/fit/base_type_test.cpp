// Values and "invalid" markers of every base type, in both byte orders.
#include "fit/base_type.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace torvane {

TEST(BaseType, TellsValuesFromMarkers)
{
    constexpr std::optional<int64_t> none;
    struct Case {
        uint8_t baseType, size;
        uint64_t bytes; // the first of them the lowest
        std::optional<int64_t> value;
    };
    constexpr uint64_t all = ~uint64_t{0}, wide = 0x100000001, oneAndAHalf = 0x3FF8000000000000;
    constexpr Case cases[] = {
        {0x00, 1, 0xFF, none},     {0x00, 1, 0xFE, 254},        {0x01, 1, 0x7F, none},      {0x01, 1, 0xFF, -1},
        {0x02, 1, 0xFF, none},     {0x83, 2, 0x7FFF, none},     {0x83, 2, 0x8000, -32768},  {0x84, 2, 0xFFFF, none},
        {0x84, 2, 0x1234, 0x1234}, {0x85, 4, 0x7FFFFFFF, none}, {0x85, 4, 0xFFFFFFFE, -2},  {0x86, 4, 0xFFFFFFFF, none},
        {0x86, 4, 70001, 70001},   {0x88, 4, 0xFFFFFFFF, none}, {0x88, 4, 0xC1200000, -10}, {0x89, 8, all, none},
        {0x89, 8, oneAndAHalf, 2}, {0x0A, 1, 0, none},          {0x0A, 1, 0xFF, 255},       {0x8B, 2, 0, none},
        {0x8C, 4, 0, none},        {0x0D, 1, 0xFF, none},       {0x8E, 8, all / 2, none},   {0x8F, 8, all, none},
        {0x8F, 8, wide, wide},     {0x90, 8, 0, none},          {0x83, 4, ~1u, ~1u},        {0x02, 3, 0x030201, none},
    };
    for (const Case& c : cases) {
        for (bool bigEndian : {false, true}) {
            SCOPED_TRACE(testing::Message() << std::hex << int{c.baseType} << ' ' << c.bytes << ' ' << bigEndian);
            std::vector<uint8_t> bytes;
            for (int i = 0; i < c.size; ++i)
                bytes.push_back(static_cast<uint8_t>(c.bytes >> 8 * i));
            if (bigEndian)
                std::ranges::reverse(bytes);
            NumberReader reader = numberReader({0, c.size, c.baseType}, 1, bigEndian, false);
            bytes.insert(bytes.begin(), 0xAA);
            EXPECT_EQ(readValue(bytes, reader), c.value);
            bytes.pop_back();
            EXPECT_EQ(readValue(bytes, reader), none);
        }
    }
}

TEST(BaseType, KnowsFieldsThatHoldNothing)
{
    const std::tuple<uint8_t, std::vector<uint8_t>, bool> cases[] = {
        {0x84, {0xFF, 0xFF, 0xFF, 0xFF}, true},
        {0x84, {0xFF, 0xFF, 0xFE, 0xFF}, false},
        {0x07, {0, 0, 0}, true},
        {0x07, {'a', 0, 0}, false},
        {0x84, {0xFF, 0xFF, 0xFF}, false}, // no whole number of elements
        {0x1F, {0xFF}, false},             // no known type
    };
    for (const auto& [baseType, bytes, nothing] : cases)
        EXPECT_EQ(holdsNothing(bytes, baseType, false), nothing) << testing::PrintToString(bytes);
}

} // namespace torvane
