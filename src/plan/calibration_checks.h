// What makes a ride useless for calibration, and what makes its answer doubtful.
#pragma once

#include "plan/energy_windows.h"
#include "plan/measured_ride.h"

#include <array>
#include <cstdint>

namespace torvane {

constexpr size_t leastCalibrationWindows = 9, plentyOfWindows = 15;

enum class CalibrationFault : uint8_t {
    none,
    unreadable, // its code says why
    withoutPower,
    stillMeter, // 0 W throughout
    withoutAltitude,
    withoutSpeed,
    constantSpeed,
    shortShuttle,  // to and fro over less than a kilometre
    tooFewWindows, // also where there is hardly a record
    givenTwice,    // a ride before it has its records
};

enum CalibrationDoubt : uint32_t {
    doubtFewWindows = 1u << 0,
    doubtOneWay = 1u << 1, // so no wind was found
    doubtNoPositions = 1u << 2,
    doubtAltitude = 1u << 3, // differs where the ride ends at its start
    doubtBraking = 1u << 4,
    doubtFactor = 1u << 5, // beyond what riders have
    doubtVirtual = 1u << 6,
    doubtSpikes = 1u << 7,
    doubtMeterGaps = 1u << 8,
    doubtRidesDiffer = 1u << 9, // more than their intervals allow
    doubtWeight = 1u << 10,     // climbs took another power than the profile's weight
    doubtHeldOut = 1u << 11,    // blocks that were not used are predicted worse than before
    doubtUncertain = 1u << 12,  // so wide an interval that nothing is kept
};

using LeftOutSeconds = std::array<uint32_t, leftOutCount>;

// By the records: a copy has another path.
bool isSameRide(const MeasuredRide& one, const MeasuredRide& other);

// Of the records as they are.
CalibrationFault faultOfRecords(const MeasuredRide& ride);

// Of the track that they make.
CalibrationFault faultOfTrack(const ThrustRide& ride);

// How far a ride comes back: the length of all its ways put together by their headings, as a share of its length. 1
// without positions.
double onwardShare(const ThrustRide& ride);
constexpr double oneWayShare = 0.8;

// Difference of altitude in m between end and start; 0 where they are not the same place.
double altitudeDrift(const ThrustRide& ride);

LeftOutSeconds countUse(const SecondUse& use);

uint32_t doubtsOf(const MeasuredRide& measured, const ThrustRide& ride, const LeftOutSeconds& seconds);

} // namespace torvane
