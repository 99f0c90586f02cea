#include "gps/activity_messages.h"

#include <cmath>

namespace torvane {

uint64_t stored(double value, double scale, double least, double most, uint64_t missing)
{
    double scaled = std::round(value * scale);
    if (!(scaled >= least && scaled <= most))
        return missing;
    return static_cast<uint64_t>(static_cast<int64_t>(scaled));
}

uint64_t storedDegrees(double degrees)
{
    constexpr double semicircles = 2147483648.0 / 180.0;
    return stored(degrees, semicircles, -2147483648.0, 2147483646.0, INT32_MAX);
}

uint64_t storedAltitude(double metres)
{
    return stored(metres + 500, 5, 0, 65534, UINT16_MAX);
}

uint64_t storedDistance(double metres)
{
    return stored(metres, 100, 0, 4294967294.0, UINT32_MAX);
}

uint64_t storedSpeed(double metresPerSecond)
{
    return stored(metresPerSecond, 1000, 0, 65534, UINT16_MAX);
}

void wrapMessages(std::vector<uint8_t>&& block, FitImage& image)
{
    constexpr uint8_t protocol = 0x10;
    constexpr uint16_t profile = 2132;
    image = {};
    image.headerBytes = {modernHeaderSize, protocol, profile & 0xFF, profile >> 8, 0, 0, 0, 0, '.', 'F', 'I', 'T'};
    image.protocolVersion = protocol;
    image.profileVersion = profile;
    FitImage form = image;
    image.data = std::move(block);
    image.dataSize = static_cast<int32_t>(image.data.size());
    buildFitHeader(image, form, formModern);
    image.fileCrc = fitCrc(image);
}

} // namespace torvane
