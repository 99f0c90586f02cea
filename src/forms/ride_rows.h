// Rows that the dialogs of the ride simulations share. For their tables alone.
#pragma once

#include "forms/rows.h"

namespace torvane {

constexpr Range powers = {0, 3000}, velocities = {0, 200}, inclinations = {-100, 100, 0.1};
constexpr Range distances = {0, 100000}, legTimes = {0, 1000, 0.1};

// Calculation target or reference factor.
constexpr Row rideTargetRow(int id, std::span<const char* const> labels)
{
    return choiceRow(id, TORVANE_FIELD(rideTarget), labels);
}

constexpr Row rideRow(int id, Field field, Range range, const char* messageName, const char* unit)
{
    return realRow(id, id + 10, field, range, "%7.1lf", messageName, unit);
}

constexpr Row velocityRow(int id, Field field, const char* messageName)
{
    return inKph(rideRow(id, field, velocities, messageName, ""));
}

constexpr Row inclinationRow(int id, Field field)
{
    return rideRow(id, field, inclinations, "an inclination", "%");
}

constexpr Form rideForm(int id, const char* title, RideMode rideMode, std::span<const Row> rows)
{
    return {.id = id,
            .title = title,
            .confirm = "Calculate",
            .saveBox = 3031 + rideMode,
            .saveFlag = offsetof(ParameterBlock, rideSaveFlag) + static_cast<size_t>(rideMode) * sizeof(int32_t),
            .rows = rows};
}

} // namespace torvane
