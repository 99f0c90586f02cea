#include "plan/calibrate.h"

#include "core/units.h"
#include "fit/fit_time.h"
#include "model/constants.h"
#include "model/resistance.h"
#include "plan/between_rides.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double rollingError = 0.2;                  // share that the profile's rolling may be wrong by
constexpr double restError = 0.03;                    // share of all that nobody looks at: scales, meters, gusts
constexpr double unknownWind = 2;                     // m/s, standard deviation
constexpr size_t windowLength = 60, shortLength = 30; // s

// A ride on its way through the fit.
struct Worked {
    size_t place; // among the rides given
    ThrustRide thrust;
    SecondUse use = {};
};

CalibrationFault take(const Model& model, const MeasuredRide& ride, Stage meter, Worked& worked)
{
    if (CalibrationFault fault = faultOfRecords(ride); fault != CalibrationFault::none)
        return fault;
    worked.thrust = thrustOf(model, ride, meter);
    return faultOfTrack(worked.thrust);
}

// Without positions the wind may have come from ahead all the way.
void headEast(ThrustRide& ride)
{
    for (ThrustSecond& second : ride.seconds)
        second.east = 1;
}

// How far the whole of it is: a step is one look at one ride.
struct Steps {
    Progress* progress;
    size_t most;
    size_t done = 0;

    void take()
    {
        reportProgress(progress, static_cast<int>(100 * std::min(++done, most) / most));
    }
};
constexpr int passes = 3;                      // of a fit
constexpr size_t looksAtRide = 2 * passes + 2; // alone, with the others, told, and with a wind

std::vector<RideWindows> windowsOfAll(std::vector<Worked>& rides, const DragFit& fit, Steps& steps)
{
    std::vector<RideWindows> all;
    for (size_t i = 0; i < rides.size(); ++i) {
        steps.take();
        Worked& ride = rides[i];
        Wind wind = i < fit.winds.size() ? fit.winds[i] : Wind{};
        ride.use = markSeconds(ride.thrust, fit.factor, wind);
        all.push_back({windowsOf(ride.thrust, ride.use, windowLength), onwardShare(ride.thrust) < oneWayShare, {}});
    }
    return all;
}

// The brakes are looked for anew with each factor.
DragFit fitInPasses(std::vector<Worked>& rides, std::vector<RideWindows>& windows, Steps& steps)
{
    DragFit fit;
    for (int pass = 0; pass < passes; ++pass) {
        windows = windowsOfAll(rides, fit, steps);
        fit = fitDrag(windows);
    }
    return fit;
}

Wind meanHeading(const ThrustRide& ride)
{
    Wind sum;
    for (const ThrustSecond& second : ride.seconds) {
        sum.east += second.speed * second.east;
        sum.north += second.speed * second.north;
    }
    double length = std::hypot(sum.east, sum.north);
    return length > 0 ? Wind{sum.east / length, sum.north / length} : Wind{};
}

// How far the factor reaches down and up where a wind was there that could not be found, at the ends of 95 percent.
struct Reach {
    double down = 0, up = 0;
};

Reach unknownWindReach(const std::vector<Worked>& rides, const std::vector<RideWindows>& windows, double factor,
                       Steps& steps)
{
    Reach squares;
    for (size_t i = 0; i < rides.size(); ++i) {
        steps.take();
        if (windows[i].findsWind)
            continue;
        Wind along = meanHeading(rides[i].thrust);
        std::vector<RideWindows> changed = windows;
        for (double wind : {-unknownWind * normalReach, unknownWind * normalReach}) {
            changed[i].wind = {along.east * wind, along.north * wind};
            double change = fitDrag(changed).factor - factor;
            (change < 0 ? squares.down : squares.up) += change * change;
        }
    }
    return {std::sqrt(squares.down), std::sqrt(squares.up)};
}

void tellInterval(const std::vector<Worked>& rides, const std::vector<RideWindows>& windows, const DragFit& fit,
                  CalibrationAnswer& answer, Steps& steps)
{
    double drawn = drawnError(windows, fit);
    double more = fitDrag(windows, 1 + rollingError).factor, less = fitDrag(windows, 1 - rollingError).factor;
    double rest = restError * fit.factor, between = betweenRidesError(answer.rides);
    answer.rollingEffect = (more - less) / 2;
    answer.error =
        std::sqrt(drawn * drawn + answer.rollingEffect * answer.rollingEffect + rest * rest + between * between);
    Reach wind = unknownWindReach(rides, windows, fit.factor, steps);
    answer.lowest = std::max(0.0, fit.factor - std::hypot(normalReach * answer.error, wind.down));
    answer.highest = fit.factor + std::hypot(normalReach * answer.error, wind.up);
}

// The longer side: a wind that was not found reaches further to one of them.
double halfInterval(const CalibrationAnswer& answer)
{
    return std::max(answer.factor - answer.lowest, answer.highest - answer.factor);
}

// What one ride says alone. The rolling is that of all rides and makes no difference between them.
void tellAlone(const RideWindows& windows, CalibratedRide& ride)
{
    std::span<const RideWindows> one(&windows, 1);
    DragFit fit = fitDrag(one);
    ride.factor = fit.factor;
    ride.error = std::hypot(drawnError(one, fit), restError * fit.factor);
}

void tellRides(std::span<const MeasuredRide> given, const std::vector<Worked>& rides,
               const std::vector<RideWindows>& windows, const DragFit& fit, CalibrationAnswer& answer, Steps& steps)
{
    for (size_t i = 0; i < rides.size(); ++i) {
        steps.take();
        CalibratedRide& ride = answer.rides[rides[i].place];
        const MeasuredRide& measured = given[rides[i].place];
        ride.seconds = countUse(rides[i].use);
        ride.windows = windows[i].windows.size();
        ride.foundWind = windows[i].findsWind;
        ride.wind = fit.winds[i];
        ride.drift = altitudeDrift(rides[i].thrust);
        ride.doubts = doubtsOf(measured, rides[i].thrust, ride.seconds);
        tellAlone(windows[i], ride);
        answer.doubts |= ride.doubts;
        answer.temperature += measured.temperature / static_cast<double>(rides.size());
        answer.day = std::max(answer.day, ride.start);
    }
}

// What is missed goes with height and speed where the weight is wrong. On flatter roads the noise of the altitude hides
// it.
double heightShare(const std::vector<RideWindows>& rides, const DragFit& fit)
{
    constexpr double hills = 80; // W, root of the mean square
    double missed = 0, squares = 0, count = 0;
    for (size_t i = 0; i < rides.size(); ++i)
        for (const EnergyWindow& window : rides[i].windows) {
            missed += (window.thrust - window.predicted(fit.factor, fit.winds[i])) * window.stored;
            squares += window.stored * window.stored;
            ++count;
        }
    return squares > hills * hills * count ? missed / squares : 0;
}

void addDoubts(CalibrationAnswer& answer)
{
    constexpr double leastUsual = 0.7, mostUsual = 1.6, mostHeightShare = 0.15;
    size_t windows = 0;
    for (const CalibratedRide& ride : answer.rides)
        windows += ride.windows;
    if (windows < plentyOfWindows)
        answer.doubts |= doubtFewWindows;
    if (answer.factor < leastUsual || answer.factor > mostUsual)
        answer.doubts |= doubtFactor;
    if (std::fabs(answer.heightShare) > mostHeightShare)
        answer.doubts |= doubtWeight;
    if (ridesDiffer(answer.rides))
        answer.doubts |= doubtRidesDiffer;
    if (answer.heldOut.after.blockError > answer.heldOut.before.blockError)
        answer.doubts |= doubtHeldOut;
    if (!isNarrow(answer.factor, halfInterval(answer)))
        answer.doubts |= doubtUncertain;
}

void tellRows(const std::vector<Worked>& rides, const std::vector<RideWindows>& windows, const DragFit& fit,
              CalibrationAnswer& answer)
{
    for (size_t i = 0; i < rides.size(); ++i)
        for (const EnergyWindow& window : windows[i].windows) {
            auto after = [&](double factor) { return window.predicted(factor, fit.winds[i]); };
            answer.rows.push_back({rides[i].place, window.from + window.seconds / 2, window.metres, window.thrust,
                                   window.predicted(answer.factorBefore, {}), after(fit.factor), after(answer.lowest),
                                   after(answer.highest)});
        }
}

std::vector<std::vector<EnergyWindow>> shortWindows(const std::vector<Worked>& rides)
{
    std::vector<std::vector<EnergyWindow>> all;
    for (const Worked& ride : rides) {
        SecondUse use = ride.use;
        all.push_back(windowsOf(ride.thrust, use, shortLength));
    }
    return all;
}

// Drag in N at 40 kph of the model as it is, in the air that it is stated for.
double dragAt40Kph(const Model& model)
{
    Evaluation now = {};
    now.physics = Physics::ofTheRoad;
    now.airRatio = 1;
    resistanceAtVelocity(model, now, 40 / kphPerMps);
    return now.airDrag * standardGravity;
}

double dragArea(const Model& model, double factor)
{
    constexpr double density = 1.2041; // kg/m3 at 20 Cel and sea level
    double speed = 40 / kphPerMps;
    return factor * dragAt40Kph(withoutFactor(model)) / (density / 2 * speed * speed);
}

double factorOfAngle(const Model& model, double angle)
{
    Model bent = withoutFactor(model);
    double now = dragAt40Kph(bent);
    bent.state.torsoAngle = angle;
    keepDragFactors(bent);
    return dragAt40Kph(bent) / now;
}

constexpr double leastAngle = 0, mostAngle = 90; // deg, as the page of the rider takes them

std::vector<Worked> takeRides(const Model& model, std::span<const MeasuredRide> rides, Stage meter,
                              CalibrationAnswer& answer, Steps& steps)
{
    std::vector<Worked> taken;
    for (size_t i = 0; i < rides.size(); ++i) {
        CalibratedRide& told = answer.rides.emplace_back();
        told.temperature = rides[i].temperature;
        told.start = rides[i].seconds.empty() ? 0 : rides[i].seconds.front().timestamp;
        Worked worked = {i, {}};
        bool known = std::ranges::any_of(rides.first(i), [&](const auto& one) { return isSameRide(one, rides[i]); });
        told.fault = known ? CalibrationFault::givenTwice : take(model, rides[i], meter, worked);
        if (told.fault != CalibrationFault::none)
            continue;
        if (!worked.thrust.hasPositions)
            headEast(worked.thrust);
        std::vector<Worked> alone = {std::move(worked)};
        std::vector<RideWindows> windows;
        fitInPasses(alone, windows, steps);
        told.windows = windows[0].windows.size();
        told.seconds = countUse(alone[0].use);
        if (told.windows < leastCalibrationWindows)
            told.fault = CalibrationFault::tooFewWindows;
        else
            taken.push_back(std::move(alone[0]));
    }
    return taken;
}

} // namespace

CalibrationAnswer calibrateRides(const Model& model, std::span<const MeasuredRide> rides,
                                 const CalibrationOptions& options, Progress* progress)
{
    CalibrationAnswer answer;
    Steps steps = {progress, looksAtRide * rides.size()};
    std::vector<Worked> worked = takeRides(model, rides, static_cast<Stage>(options.meter), answer, steps);
    answer.ridesUsed = worked.size();
    if (worked.empty())
        return answer;
    std::vector<RideWindows> windows;
    DragFit fit = fitInPasses(worked, windows, steps);
    answer.factor = fit.factor;
    answer.factorBefore = dragFactorOf(model.calibration);
    answer.residual = fit.spread;
    answer.heightShare = heightShare(windows, fit);
    answer.dragArea = dragArea(model, fit.factor);
    answer.angle = angleOfFactor(model, fit.factor);
    tellRides(rides, worked, windows, fit, answer, steps);
    tellInterval(worked, windows, fit, answer, steps);
    tellRows(worked, windows, fit, answer);
    answer.heldOut = holdOut(windows, shortWindows(worked), answer.factorBefore);
    addDoubts(answer);
    return answer;
}

Calibration calibrationOf(const CalibrationAnswer& answer)
{
    constexpr int64_t secondsPerDay = 86400;
    if (answer.ridesUsed == 0 || (answer.doubts & doubtUncertain))
        return {};
    return soundCalibration({static_cast<float>(answer.factor), static_cast<float>(halfInterval(answer)),
                             static_cast<int32_t>((answer.day + fitEpoch) / secondsPerDay),
                             static_cast<float>(answer.temperature)});
}

AngleReach angleReach(const Model& model)
{
    return {factorOfAngle(model, leastAngle), factorOfAngle(model, mostAngle)};
}

std::optional<double> angleOfFactor(const Model& model, double factor)
{
    constexpr int halvings = 40;
    double low = leastAngle, high = mostAngle;
    if (factor < factorOfAngle(model, low) || factor > factorOfAngle(model, high))
        return std::nullopt;
    for (int i = 0; i < halvings; ++i) {
        double middle = (low + high) / 2;
        (factorOfAngle(model, middle) < factor ? low : high) = middle;
    }
    return (low + high) / 2;
}

} // namespace torvane
