// A ride set up from the defaults, as tests of the simulations want to start. Change fields of workingBlock, then
// prepare; or change runState after it.
#pragma once

#include "model/model_fixture.h"
#include "ride/ride_run.h"

namespace torvane {

class RideTest : public ModelTest {
protected:
    static void prepare(RideMode mode, int target)
    {
        workingBlock.rideMode = mode;
        workingBlock.rideTarget = target;
        restart();
        prepareRideRun();
    }

    static void useMotor(int location)
    {
        workingBlock.motorLocation = location;
        workingBlock.assistRangeMode[0] = workingBlock.assistRangeMode[1] = location == 0 ? 0 : 1;
    }

    static RideResult ride(RideMode mode, int target)
    {
        prepare(mode, target);
        RideResult result;
        runRide(result);
        return result;
    }
};

} // namespace torvane
