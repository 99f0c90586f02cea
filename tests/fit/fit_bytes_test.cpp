// The CRC, and numbers in and out of bytes.
#include "figures.h"
#include "fit/fit_builder.h"
#include "fit/fit_bytes.h"
#include "fit/fit_crc.h"

#include <cmath>
#include <limits>
#include <utility>

namespace torvane {

TEST(FitCrc, anyLengthAndAnyCutAgreeWithTheBitwiseRule)
{
    EXPECT_EQ(extendFitCrc(0, Bytes{'1', '2', '3', '4', '5', '6', '7', '8', '9'}), 0xBB3D); // published
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

TEST(FitBytes, positionsOfBigEndianRecordsComeFromTheBytesInFront)
{
    Bytes bytes = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88};
    // Of those at 4 0x44 is the lowest, of those at 9 the nearest is beyond the end.
    expectFigures({copyUint32Bytes(bytes, 4, false), copyUint32Bytes(bytes, 4, true), copyUint32Bytes(bytes, 2, true),
                   copyUint32Bytes(bytes, 0, true), copyUint32Bytes(bytes, 9, true)},
                  {0x88776655, 0x11223344, 0x00001122, 0, 0x66778800});
}

TEST(FitBytes, doublesAreTruncatedTowardZero)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr std::pair<double, int64_t> cases[] = {{2.999, 2},     {-2.999, -2}, {4294967296.5, 4294967296},
                                                    {9.3e18, 0},    {-9.3e18, 0}, {infinity, 0},
                                                    {-infinity, 0}, {NAN, 0}};
    for (auto [value, whole] : cases)
        EXPECT_EQ(truncateToInteger(value), whole) << value;
    Bytes field(2);
    writeUint16FromDouble(field, 65537.9, false); // low 16 bits
    EXPECT_EQ(field, (Bytes{1, 0}));
    writeUint32FromDouble(field, -1.5, true);
    EXPECT_EQ(field, (Bytes{0xFF, 0xFF}));
}

} // namespace torvane
