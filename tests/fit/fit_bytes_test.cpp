// The CRC, and numbers in and out of bytes.
#include "fit/fit_builder.h"
#include "fit/fit_bytes.h"
#include "fit/fit_crc.h"

#include <cmath>
#include <limits>

namespace torvane {

TEST(FitCrc, publishedCheckValue)
{
    const Bytes digits = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(extendFitCrc(0, digits), 0xBB3D);
}

TEST(FitCrc, anyLengthAndAnyCutAgreeWithTheBitwiseRule)
{
    Bytes bytes;
    uint32_t state = 12345;
    for (int length = 0; length < 70; ++length) {
        EXPECT_EQ(extendFitCrc(0, bytes), bitwiseCrc(bytes)) << length;
        size_t cut = bytes.size() / 3;
        uint16_t front = extendFitCrc(0, std::span(bytes).first(cut));
        EXPECT_EQ(extendFitCrc(front, std::span(bytes).subspan(cut)), bitwiseCrc(bytes)) << length;
        state = state * 1664525 + 1013904223;
        bytes.push_back(static_cast<uint8_t>(state >> 24));
    }
}

TEST(FitCrc, headerCountsAsLongAsItSays)
{
    const Bytes data = {7, 8, 9};
    struct Case {
        int firstByte;
        size_t counted;
    };
    for (Case c : {Case{0, 0}, {12, 12}, {13, 13}, {14, 14}, {255, 14}}) {
        Bytes header = {static_cast<uint8_t>(c.firstByte), 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
        Bytes whole(header.begin(), header.begin() + static_cast<int>(c.counted));
        whole.insert(whole.end(), data.begin(), data.end());
        EXPECT_EQ(fitCrc(header, data), bitwiseCrc(whole)) << c.firstByte;
    }
}

TEST(FitBytes, reads)
{
    const Bytes bytes = {0x01, 0x82, 0x83, 0x84, 0x85};
    struct Case {
        const char* name;
        size_t offset;
        bool bigEndian;
        uint8_t byte;
        uint16_t half;
        uint32_t word;
    };
    constexpr Case cases[] = {
        {"little", 0, false, 0x01, 0x8201, 0x84838201},
        {"big", 0, true, 0x01, 0x0182, 0x01828384},
        {"little, at the end", 1, false, 0x82, 0x8382, 0x85848382},
        {"little, two bytes over the end", 3, false, 0x84, 0x8584, 0x00008584},
        {"big, two bytes over the end", 3, true, 0x84, 0x8485, 0x84850000},
        {"little, last byte", 4, false, 0x85, 0x0085, 0x00000085},
        {"big, last byte", 4, true, 0x85, 0x8500, 0x85000000},
        {"outside", 5, true, 0, 0, 0},
        {"far outside", 100000, false, 0, 0, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(readUint8(bytes, c.offset), c.byte) << c.name;
        EXPECT_EQ(readUint16(bytes, c.offset, c.bigEndian), c.half) << c.name;
        EXPECT_EQ(readUint32(bytes, c.offset, c.bigEndian), c.word) << c.name;
    }
}

TEST(FitBytes, positionsOfBigEndianRecordsComeFromTheBytesInFront)
{
    const Bytes bytes = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88};
    EXPECT_EQ(copyUint32Bytes(bytes, 4, false), 0x88776655u);
    EXPECT_EQ(copyUint32Bytes(bytes, 4, true), 0x11223344u); // 0x44 lowest, 0x11 highest
    EXPECT_EQ(copyUint32Bytes(bytes, 2, true), 0x00001122u);
    EXPECT_EQ(copyUint32Bytes(bytes, 0, true), 0u);
    EXPECT_EQ(copyUint32Bytes(bytes, 9, true), 0x66778800u); // its nearest byte is beyond the end
}

TEST(FitBytes, writesTheWholeWidthOfAField)
{
    struct Case {
        size_t width;
        Bytes little, big;
    };
    const Case cases[] = {
        {0, {}, {}},
        {1, {0xD4}, {0xD4}},
        {2, {0xD4, 0xC3}, {0xC3, 0xD4}},
        {3, {0xD4, 0xC3, 0xB2}, {0xB2, 0xC3, 0xD4}},
        {4, {0xD4, 0xC3, 0xB2, 0xA1}, {0xA1, 0xB2, 0xC3, 0xD4}},
        {6, {0xD4, 0xC3, 0xB2, 0xA1, 0, 0}, {0, 0, 0xA1, 0xB2, 0xC3, 0xD4}},
        {10, {0xD4, 0xC3, 0xB2, 0xA1, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0xA1, 0xB2, 0xC3, 0xD4}},
    };
    for (const Case& c : cases) {
        Bytes field(c.width, 0xEE);
        writeUint32Field(field, 0xA1B2C3D4, false);
        EXPECT_EQ(field, c.little) << c.width;
        writeUint32Field(field, 0xA1B2C3D4, true);
        EXPECT_EQ(field, c.big) << c.width;
    }
}

TEST(FitBytes, doublesAreTruncatedTowardZero)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    struct Case {
        double value;
        int64_t whole;
    };
    constexpr Case cases[] = {{2.999, 2},  {-2.999, -2}, {0.0, 0},   {-0.4, 0},     {4294967296.5, 4294967296},
                              {9.3e18, 0}, {-9.3e18, 0}, {1e300, 0}, {infinity, 0}, {-infinity, 0},
                              {NAN, 0}};
    for (const Case& c : cases)
        EXPECT_EQ(truncateToInteger(c.value), c.whole) << c.value;
    Bytes field(2);
    writeUint16FromDouble(field, 65537.9, false); // low 16 bits
    EXPECT_EQ(field, (Bytes{1, 0}));
    writeUint32FromDouble(field, -1.5, true); // two's complement
    EXPECT_EQ(field, (Bytes{0xFF, 0xFF}));
}

} // namespace torvane
