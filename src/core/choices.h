// What the records hold as an index: one enumeration for each choice, its count last, and beside it the labels that
// forms offer. The records keep the index as the int32_t that their files hold. Some labels are misspelt and have
// always been; they stay so. The choices of the calculators and simulations are in ride_choices.h, those of written
// rides in fit_choices.h.
#pragma once

#include <cstdint>
#include <iterator>

namespace torvane {

// Rider

enum Position : int32_t {
    positionTorsoAngle, // the angle is entered
    positionAerobar,
    positionDrop,
    positionBracket,
    positionTop,
    positionDancing,
    positionCount
};
inline constexpr const char* positionNames[] = {"-- torso angle --", "aerobar",      "drop position",
                                                "bracket",           "top position", "dancing"};
static_assert(std::size(positionNames) == positionCount);

enum Wear : int32_t { wearSkinSuit, wearBikeSummer, wearBikeWinter, wearCasualSummer, wearCasualWinter, wearCount };
inline constexpr const char* wearNames[] = {"skin suit", "bike summer", "bike winter", "casual summer",
                                            "casual winter"};
static_assert(std::size(wearNames) == wearCount);

enum Helmet : int32_t { helmetNone, helmetNormal, helmetAero, helmetCount };
inline constexpr const char* helmetNames[] = {"none", "normal", "aero"};
static_assert(std::size(helmetNames) == helmetCount);

// Machine

enum ShellType : int32_t { shellNormal, shellAero, shellTypeCount };
inline constexpr const char* shellTypeNames[] = {"normal", "aero"};
static_assert(std::size(shellTypeNames) == shellTypeCount);

// Pairs of the records, and the wheel that the predict dialog last served.
enum Wheel : int32_t { wheelFront, wheelRear, wheelCount };
inline constexpr const char* wheelNames[] = {"front", "rear"};
static_assert(std::size(wheelNames) == wheelCount);

enum BrakeType : int32_t { brakeRim, brakeDisc, brakeTypeCount };
inline constexpr const char* brakeTypeNames[] = {"rim brake", "disc brake"};
static_assert(std::size(brakeTypeNames) == brakeTypeCount);

enum BrakeMaterial : int32_t { materialCarbon, materialAluminum, materialStainless, brakeMaterialCount };
inline constexpr const char* brakeMaterialNames[] = {"carbon", "aluminum", "stainless"};
static_assert(std::size(brakeMaterialNames) == brakeMaterialCount);

enum MotorLocation : int32_t { motorNone, motorCrank, motorHub, motorLocationCount };
inline constexpr const char* motorLocationNames[] = {"none", "crank", "hub"};
static_assert(std::size(motorLocationNames) == motorLocationCount);

constexpr int32_t assistRangeCount = 3; // one above the other

// The first range starts at rest, where there is no ratio before it to come from: it has no "linear".
enum RangeMode : int32_t { rangeNone, rangeConstant, rangeLinear, rangeModeCount };
inline constexpr const char* rangeModeNames[] = {"none", "constant", "linear"};
static_assert(std::size(rangeModeNames) == rangeModeCount);

// Condition

enum PressureSource : int32_t { pressureComputed, pressureEntered, pressureSourceCount };
inline constexpr const char* pressureSourceNames[] = {"altitude + temp", "hecto pascal"};
static_assert(std::size(pressureSourceNames) == pressureSourceCount);

enum RoadSurface : int32_t { surfaceDry, surfaceDamp, surfaceRain, roadSurfaceCount };
inline constexpr const char* roadSurfaceNames[] = {"dry", "damp", "rain"};
static_assert(std::size(roadSurfaceNames) == roadSurfaceCount);

enum PelotonMode : int32_t { pelotonEntered, pelotonCalculated, pelotonModeCount };
inline constexpr const char* pelotonModeNames[] = {"input ratio", "calculate"};
static_assert(std::size(pelotonModeNames) == pelotonModeCount);

enum TopOfTrain : int32_t { topStays, topRotates, topOfTrainCount };
inline constexpr const char* topOfTrainNames[] = {"not", "rotate"};
static_assert(std::size(topOfTrainNames) == topOfTrainCount);

// Preferences

enum IntervalMode : int32_t { intervalAuto, intervalInput, intervalModeCount };
inline constexpr const char* intervalModeNames[] = {"auto", "input"};
static_assert(std::size(intervalModeNames) == intervalModeCount);

enum InitialValueMode : int32_t { initialDefaults, initialPrevious, initialValueModeCount };
inline constexpr const char* initialValueModeNames[] = {"always default values", "reflect previous input"};
static_assert(std::size(initialValueModeNames) == initialValueModeCount);

} // namespace torvane
