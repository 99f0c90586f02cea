// The whole of a plan: the effort solved for, the pacing chosen, the course ridden, and what else would have come of
// it.
#pragma once

#include "plan/course_ride.h"

#include <array>
#include <string>
#include <vector>

namespace torvane {

// A part of the course that is ridden with one power.
struct Stretch {
    double from = 0, to = 0; // m
    double seconds = 0;      // pedalled
    double power = 0;        // W, mean over these
};

struct PlannedCourse {
    CourseRide ride = {};      // with its steps
    PowerProfile profile = {}; // that was asked for
    double power = 0;          // W: of even pacing that constant; else the normalised power that the pacing goes with
    // Of three and plan: what even power at the same normalised power takes.
    double evenPower = 0; // W
    CourseRide even = {}; // without steps
    // Of plan, at most as many as asked for; one of even power where following them is no faster than that.
    std::vector<Stretch> stretches = {};
    double stretchSeconds = 0;              // s in motion of a ride that keeps to these alone; 0 without them
    std::array<double, 3> threePowers = {}; // W up, flat, down, of pacing three
    double fastest = 0, slowest = 0;        // s, the band around ride.movingSeconds
    double coveredShare = 1;                // of the course by the ride that is ridden as, asRidden
    std::string unfitRide = {};             // path of the ride to ride as, where there is no plan on its account
    bool onAnotherRoad = false;             // was that ride, by the positions of both
    size_t stopsLeftOut = 0;                // at the end of the course or beyond
};

// fitOk, or a code of plan_codes.h. Calibrated, for the band, is who has a drag factor of a ride.
StatusCode planCourse(const Model& model, const ParameterBlock& settings, const Course& course,
                      const PlanOptions& options, PlannedCourse& planned, Progress* progress = nullptr);

enum WhatIf : int32_t { ifMorePower, ifLessWeight, ifHeadWind, ifLessDrag, ifLowerGear, whatIfCount };

struct WhatIfAnswer {
    double seconds = 0;       // more than the plan takes; negative: faster
    double lowestCadence = 0; // rpm at a steady speed; 0 who never pedals so
    double walkMetres = 0;
    int32_t teeth = 0; // of the sprocket of one gear lower
};

// 10 W more, 1 kg less, 2 m/s of head wind, 5 percent less drag, one gear lower; the power along the road stays.
std::array<WhatIfAnswer, whatIfCount> whatIfs(const Model& model, const ParameterBlock& settings, const Course& course,
                                              const PlanOptions& options, const PlannedCourse& planned);

} // namespace torvane
