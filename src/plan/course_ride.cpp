#include "plan/course_ride.h"

#include "core/units.h"
#include "model/brake_heat.h"
#include "model/constants.h"
#include "plan/ride_sums.h"
#include "plan/road_ahead.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double walkingSpeed = 4 / kphPerMps; // m/s
constexpr double leastRolled = 0.3;            // m/s; below it forces are those of there
constexpr double steadyAccele = 0.05;          // m/s2: who sets off turns slowly in any gear
constexpr double standsBelow = 0.6;            // m/s, of who brakes for a stop

struct Forces {
    double thrust, resistance; // W, at a speed
    double accele;             // m/s2
};

class Journey {
public:
    Journey(const RideConditions& conditions, const PowerProfile& wanted, CourseRide& into, bool keeps)
        : ride(conditions), profile(wanted), road(conditions), limits(speedLimits(conditions)),
          materials(brakeMaterialsOf(conditions.settings)), out(into), sums(into, conditions.options.timeStep),
          keepsSteps(keeps), dt(conditions.options.timeStep), mass(conditions.model.state.inertialWeight)
    {
        now.brakeTemperature = {ride.model.state.temperature, ride.model.state.temperature};
        keep();
    }

    StatusCode run()
    {
        constexpr int longestRest = 10000; // steps
        for (int rested = 0; now.distance < ride.course.length; ++rested) {
            if (now.speed > 0)
                rested = 0;
            if (rested > longestRest)
                return planNeverArrives;
            if (out.movingSeconds > mostRiding)
                return planTooSlow;
            while (atStop()) {
                stand(ride.options.stops[nextStop].seconds);
                setOff();
            }
            step();
            keep();
        }
        finish();
        return fitOk;
    }

private:
    Forces forcesAt(double speed, double power, RoadAhead::Losses losses)
    {
        double rolled = std::max(speed, leastRolled);
        Forces forces = {road.thrustFor(power, rolled, losses), road.resistance(rolled), 0};
        forces.accele = (forces.thrust - forces.resistance) / (rolled * mass);
        return forces;
    }

    void step()
    {
        double wanted = profile.at(now.distance);
        road.go(now.distance, std::max(now.speed * dt, 1.0));
        if (now.speed <= road.slowest() && !road.canRide(wanted)) {
            walk();
            return;
        }
        wanted *= std::min(legsLeft(), fallsTooSlowly(wanted));
        road.shift(now.speed, std::fabs(lastAccele) < steadyAccele);
        double middle =
            std::max(0.0, now.speed + forcesAt(now.speed, wanted, RoadAhead::Losses::asBefore).accele * dt / 2);
        Forces forces = forcesAt(middle, wanted, RoadAhead::Losses::exact);
        lastAccele = forces.accele;
        double speed = std::max(0.0, now.speed + forces.accele * dt);
        double allowed = allowedAfter(speed);
        now.going = road.power > 0 ? Going::pedalling : Going::coasting;
        now.brake = 0;
        if (speed > allowed) {
            speed = allowed;
            hold((speed - now.speed) / dt, std::max(middle, leastRolled), forces);
        }
        advance(speed, middle, forces);
    }

    // Nobody pedals up to the brakes: legs rest within the last share of a speed that the road allows, here or soon.
    double legsLeft() const
    {
        constexpr double soon = 2, last = 0.05; // s, share
        double allowed = std::min(limitAt(now.distance), limitAt(now.distance + now.speed * soon));
        return now.speed > 0 ? std::clamp((allowed / now.speed - 1) / last, 0.0, 1.0) : 1;
    }

    // Nor where the road alone leads to the top speed, or nearly: 0 there, 1 where the power still counts.
    double fallsTooSlowly(double wanted)
    {
        if (road.now.slopeLoad >= 0 || wanted <= 0)
            return 1;
        return std::clamp(2 * road.resistance(ride.options.topSpeed) / wanted, 0.0, 1.0);
    }

    // Softer pedalling, or the brakes, so that no more acceleration than this is left.
    void hold(double accele, double speed, Forces& forces)
    {
        forces.thrust = accele * mass * speed + forces.resistance;
        now.brake = std::max(0.0, -forces.thrust);
        road.driveBack(forces.thrust, speed);
        forces.thrust = std::max(0.0, forces.thrust);
        forces.accele = accele;
        now.going = now.brake > 0 ? Going::braking : forces.thrust > 0 ? Going::pedalling : Going::coasting;
    }

    // The highest speed for the end of a step that the road allows there; whoever is slower by then has not come so
    // far.
    double allowedAfter(double speed) const
    {
        auto allows = [this](double end) { return end <= limitAt(now.distance + (now.speed + end) / 2 * dt); };
        if (allows(speed))
            return speed;
        constexpr int rounds = 16;
        double low = 0, high = speed;
        for (int round = 0; round < rounds; ++round) {
            double middle = (low + high) / 2;
            (allows(middle) ? low : high) = middle;
        }
        return low;
    }

    double limitAt(double distance) const
    {
        const std::vector<CoursePoint>& points = ride.course.points;
        size_t i = std::min(pointAt(ride.course, distance), points.size() - 2);
        double part = (distance - points[i].distance) / (points[i + 1].distance - points[i].distance);
        double from = limits[i] * limits[i], to = limits[i + 1] * limits[i + 1];
        return std::sqrt(std::max(0.0, from + (to - from) * std::clamp(part, 0.0, 1.0)));
    }

    void walk()
    {
        road.go(now.distance, walkingSpeed * dt);
        road.thrustFor(0, walkingSpeed);
        out.energy.walked += kineticAt(walkingSpeed) - kineticAt(now.speed);
        now.going = Going::walking;
        now.brake = 0;
        now.speed = walkingSpeed;
        double resistance = road.resistance(walkingSpeed);
        advance(walkingSpeed, walkingSpeed, {resistance, resistance, 0});
    }

    void advance(double speed, double middle, const Forces& forces)
    {
        double way = (now.speed + speed) / 2 * dt;
        double left = ride.course.length - now.distance;
        double part = way > left ? left / way : 1; // the arrival is within the step
        now.time += part * dt;
        now.distance = part < 1 ? ride.course.length : now.distance + way;
        now.speed += (speed - now.speed) * part;
        now.power = road.power;
        now.motor = road.motor;
        now.cadence = road.cadence;
        now.gear = static_cast<int16_t>(road.gear);
        addEnergy(forces, std::max(middle, leastRolled), way * part);
        splitPower(forces, way / (std::max(middle, leastRolled) * dt));
        heatBrakes(part * dt);
        bool steady = std::fabs(forces.accele) < steadyAccele && speed > road.slowest();
        sums.add(now, part * dt, way * part, steady);
    }

    // J over a way; powers over their speed are forces.
    void addEnergy(const Forces& forces, double speed, double way)
    {
        EnergyBalance& energy = out.energy;
        double perPower = way / speed;
        (now.going == Going::walking ? energy.walked : energy.thrust) += forces.thrust * perPower;
        energy.slope += road.now.slopePower * perPower;
        energy.air += road.now.airDragPower * perPower;
        energy.rolling += road.now.rollingPower * perPower;
        energy.brakes += now.brake * perPower;
    }

    // What the way of a step makes of powers at a speed, as their energies have it.
    void splitPower(const Forces& forces, double share)
    {
        double left = forces.thrust - forces.resistance - now.brake;
        double made = now.going == Going::walking ? forces.thrust * share : now.power + now.motor;
        now.split = {road.now.airDragPower * share, road.now.rollingPower * share,
                     road.now.slopePower * share,   left * share,
                     made - forces.thrust * share,  now.brake * share};
    }

    void heatBrakes(double seconds)
    {
        for (int wheel = 0; wheel < wheelCount; ++wheel) {
            double share = wheel == 0 ? road.now.frontFrictionShare : road.now.rearFrictionShare;
            heat.brakeHeat[wheel] += now.brake * share * seconds;
            double held = heat.brakeHeat[wheel] + heat.brakeRadiated[wheel];
            if (held <= 0)
                continue;
            double loss = heatLossRate(ride.model, materials, heat, now.speed, wheel) * seconds;
            heat.brakeRadiated[wheel] -= std::min(held, loss);
            heatLossRate(ride.model, materials, heat, now.speed, wheel);
            now.brakeTemperature[static_cast<size_t>(wheel)] = heat.brakeTemperature[wheel];
        }
    }

    double kineticAt(double speed) const
    {
        return mass * speed * speed / 2;
    }

    bool atStop() const
    {
        const std::vector<Stop>& stops = ride.options.stops;
        if (nextStop == stops.size() || stops[nextStop].distance >= ride.course.length)
            return false;
        double place = placeOfStop();
        bool nearly = now.speed < standsBelow && now.distance > place - 1;
        return nearly || now.distance >= place;
    }

    double placeOfStop() const
    {
        return ride.course.points[pointAt(ride.course, ride.options.stops[nextStop].distance)].distance;
    }

    // From here on the road is as fast as it is behind the stop, where there may be another.
    void setOff()
    {
        size_t place = pointAt(ride.course, ride.options.stops[nextStop++].distance);
        constexpr double leastSpeed = 2; // m/s
        limits[place] = std::max(leastSpeed, limits[std::min(place + 1, limits.size() - 1)]);
    }

    void stand(double seconds)
    {
        out.energy.brakes += kineticAt(now.speed);
        now.speed = now.power = now.motor = now.brake = now.cadence = 0;
        now.split = {};
        now.going = Going::standing;
        now.distance = std::max(now.distance, placeOfStop());
        double whole = std::round(seconds);
        constexpr double coolsFor = 7200; // s
        for (double second = 0; second < std::min(whole, coolsFor); ++second)
            heatBrakes(1);
        now.time += whole;
        keep();
    }

    void keep()
    {
        if (keepsSteps)
            out.steps.push_back(now);
    }

    void finish()
    {
        out.seconds = now.time;
        sums.finish();
        out.energy.kinetic = kineticAt(now.speed);
        const std::vector<CoursePoint>& points = ride.course.points;
        for (size_t i = 0; i + 1 < points.size(); ++i) {
            double rise = std::sin(std::atan(points[i].slope / 100));
            out.energy.heights += rise * (points[i + 1].distance - points[i].distance);
        }
        out.energy.heights *= ride.model.state.totalWeight * standardGravity;
    }

    const RideConditions& ride;
    const PowerProfile& profile;
    RoadAhead road;
    std::vector<double> limits;
    BrakeMaterials materials;
    BrakeHeat heat = {};
    CourseStep now = {};
    CourseRide& out;
    RideSums sums;
    bool keepsSteps;
    double dt, mass;
    size_t nextStop = 0;
    double lastAccele = 1; // m/s2, of the step before
};

} // namespace

double PowerProfile::at(double distance) const
{
    size_t i = distance > 0 ? static_cast<size_t>(distance / step) : 0;
    return watts[std::min(i, watts.size() - 1)];
}

PowerProfile constantPower(double watts)
{
    return {1e9, {watts}};
}

StatusCode rideCourse(const RideConditions& conditions, const PowerProfile& profile, CourseRide& ride, bool keepsSteps)
{
    ride = {};
    return Journey(conditions, profile, ride, keepsSteps).run();
}

} // namespace torvane
