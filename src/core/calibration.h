// What a ride with a power meter has taught of a rider's air drag. The image of 16 bytes that stand in the parameter
// block and in the header of a profile file; all 0 where nothing was learned.
#pragma once

#include <cstdint>

namespace torvane {

struct Calibration {
    float dragFactor;   // on the whole air drag: shell, human and wheels
    float halfInterval; // half of its 95 percent interval; 0: entered by hand
    int32_t day;        // since 1970-01-01; 0: unknown
    float temperature;  // Cel, of that day's air
};

constexpr float leastDragFactor = 0.5F, mostDragFactor = 1.6F;

// Anything else stands for 1, as in files that were written before there was a factor.
constexpr bool hasDragFactor(const Calibration& calibration)
{
    return calibration.dragFactor >= leastDragFactor && calibration.dragFactor <= mostDragFactor;
}

constexpr double dragFactorOf(const Calibration& calibration)
{
    return hasDragFactor(calibration) ? calibration.dragFactor : 1.0;
}

// An interval that tells enough of a factor: half of it at most a quarter. Beyond, a guess by posture is as good.
constexpr bool isNarrow(double dragFactor, double halfInterval)
{
    return halfInterval <= dragFactor / 4;
}

// Whether a ride has taught the factor, and well enough that predictions are better for it.
constexpr bool isTaught(const Calibration& calibration)
{
    return hasDragFactor(calibration) && calibration.halfInterval > 0 &&
           isNarrow(calibration.dragFactor, calibration.halfInterval);
}

// What a file holds, without what cannot be: all 0 where there is no factor.
constexpr Calibration soundCalibration(const Calibration& read)
{
    constexpr int32_t lastDay = 100000; // of the year 2243
    if (!hasDragFactor(read))
        return {};
    bool isInterval = read.halfInterval >= 0.0F && read.halfInterval <= mostDragFactor;
    bool isDay = read.day >= 0 && read.day <= lastDay;
    bool isAir = read.temperature >= -100.0F && read.temperature <= 100.0F;
    return {read.dragFactor, isInterval ? read.halfInterval : 0.0F, isDay ? read.day : 0,
            isAir ? read.temperature : 0.0F};
}

} // namespace torvane
