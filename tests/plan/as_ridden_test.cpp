// Measured power in, time out: rides made by the model with a meter, gusts, and devices' noise.
#include "plan/plan_course.h"
#include "rides/made_ride.h"

#include "core/text.h"
#include "fit/fit_builder.h"
#include "fit/iso_times.h"
#include "model/model_fixture.h"

namespace torvane {

namespace {

std::string writeGpx(const TestFolder& folder, const MeasuredRide& ride)
{
    std::string text = "<gpx version='1.1'><trk><type>cycling</type><trkseg>";
    IsoTimes times;
    for (const auto& second : ride.seconds)
        appendFormat(text,
                     "<trkpt lat='%.9f' lon='%.9f'><ele>%.1f</ele><time>%s</time><extensions><power>%.0f</power>"
                     "</extensions></trkpt>",
                     second.latitude, second.longitude, second.altitude, times.of(second.timestamp).data(),
                     second.power);
    text += "</trkseg></trk></gpx>";
    writeBytes(folder.path + "ride.gpx", {text.begin(), text.end()});
    return folder.path + "ride.gpx";
}

} // namespace

TEST(AsRidden, TakesTheTimeThatTheRideTook)
{
    TestFolder folder;
    ParameterBlock block;
    setDefaults(block);
    for (unsigned i = 0; i < 20; ++i) {
        MadeCase made = madeCase(i, i % 3);
        block.temperature = 18;
        Model profile = modelOf(block);
        MeasuredRide ride = makeMeteredRide(profile, made.rider, made.ride);
        PlanOptions options;
        options.effort = effortAsRidden;
        options.asRidden = writeGpx(folder, ride);
        options.windSpeed = made.ride.windSpeed;
        options.windDirection = made.ride.windDirection;
        options.topSpeed = 15.5;
        Model model = profile; // a rider who knows all but the weight of the bottles
        model.calibration.dragFactor = static_cast<float>(made.rider.factor);
        for (double& coefficient : model.state.rollingCoefficient)
            coefficient *= made.rider.rolling;
        rebuildModel(model);
        Course course;
        PlannedCourse planned;
        ASSERT_EQ(loadCourse(options.asRidden, options, course), fitOk);
        ASSERT_EQ(planCourse(model, block, course, options, planned), fitOk);
        EXPECT_NEAR(planned.ride.seconds / made.ride.seconds, 1, 0.03)
            << i << ": " << course.length << " m, noisy " << course.findings.noisy;
    }
}

} // namespace torvane
