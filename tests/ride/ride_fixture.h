// A ride set up from the defaults, as tests of the simulations want to start. Change fields of the block first.
#pragma once

#include "model/model_fixture.h"
#include "ride/ride_run.h"

namespace torvane {

class RideTest : public ModelTest {
protected:
    RideInputs inputs(RideMode mode, int target)
    {
        block.rideMode = mode;
        block.rideTarget = target;
        restart();
        return takeRideInputs(block, {});
    }

    RideRun& prepare(RideMode mode, int target)
    {
        return ride.emplace(prepareRideRun(model, inputs(mode, target)));
    }

    RideRun& run(RideMode mode, int target)
    {
        return ride.emplace(runRide(model, inputs(mode, target)));
    }

    void useMotor(int location)
    {
        block.motorLocation = location;
        block.assistRangeMode[0] = block.assistRangeMode[1] = location == 0 ? 0 : 1;
    }

    std::optional<RideRun> ride; // the last one
};

} // namespace torvane
