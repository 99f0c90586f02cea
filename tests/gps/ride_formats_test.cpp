// What a ride cost, for rides whose power is known: the same answer from every kind of file.
#include "gps/ride_answer.h"
#include "gps/ride_comparison.h"

#include "core/text.h"
#include "fit/iso_times.h"
#include "gps/ride_maker.h"

#include <gtest/gtest.h>

namespace torvane {

namespace {

Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

// Positions alone, in the manner of a phone.
Bytes asGpx(const GpsRecords& records)
{
    std::string text = "<gpx version='1.1'><trk><type>cycling</type><trkseg>";
    IsoTimes times;
    for (const GpsRecord& r : records)
        appendFormat(text, "<trkpt lat='%.9f' lon='%.9f'><ele>%.2f</ele><time>%s</time></trkpt>", r.latitude,
                     r.longitude, r.altitude, times.of(r.timestamp).data());
    return bytesOf(text + "</trkseg></trk></gpx>");
}

Bytes asTcx(const GpsRecords& records)
{
    std::string text = "<TrainingCenterDatabase><Activities><Activity Sport='Biking'><Lap><Track>";
    IsoTimes times;
    for (const GpsRecord& r : records)
        appendFormat(text,
                     "<Trackpoint><Time>%s</Time><Position><LatitudeDegrees>%.9f</LatitudeDegrees>"
                     "<LongitudeDegrees>%.9f</LongitudeDegrees></Position><AltitudeMeters>%.2f</AltitudeMeters>"
                     "<DistanceMeters>%.3f</DistanceMeters></Trackpoint>",
                     times.of(r.timestamp).data(), r.latitude, r.longitude, r.altitude, r.distance);
    return bytesOf(text + "</Track></Lap></Activity></Activities></TrainingCenterDatabase>");
}

} // namespace

TEST(RideFormats, giveTheSameAnswer)
{
    TestFolder folder;
    ParameterBlock settings = defaultBlock();
    settings.averageTemperature = 20;
    Model model = modelOf(settings);
    for (double hill : {1000.0, 4000.0}) {
        GpsRecords made =
            makeRide(model, {.seconds = 2400, .hillHeight = 30, .hillLength = hill, .physics = Physics::ofTheRoad});
        double highest = 0, climbed = 0;
        for (size_t i = 1; i < made.size(); ++i) {
            highest = std::max(highest, made[i].speed);
            climbed += std::max(0.0, made[i].altitude - made[i - 1].altitude);
        }
        const std::pair<const char*, Bytes> files[] = {
            {"ride.fit", fitOf(made).file()}, {"ride.gpx", asGpx(made)}, {"ride.tcx", asTcx(made)}};
        for (const auto& [name, bytes] : files) {
            SCOPED_TRACE(testing::Message() << name << ", hills of " << hill << " m");
            std::string path = folder.path + name;
            writeBytes(path, bytes);
            AnsweredRide ride;
            ASSERT_EQ(answerRide(model, settings, path, {}, ride), fitOk);
            const RideAnswer& answer = ride.answer;
            EXPECT_NEAR(answer.whole.power[predictedFigure].value_or(0), 200, 1);
            EXPECT_NEAR(answer.distance / made.back().distance, 1, 1e-3);
            EXPECT_EQ(answer.elapsed, 2399u);
            EXPECT_NEAR(answer.highestSpeed, highest, 0.2);
            EXPECT_NEAR(answer.whole.climbed, climbed, 3);
            EXPECT_EQ(answer.recordsUsed, 2400u);
        }
    }
    RideComparison comparison;
    EXPECT_FALSE(compareRides(folder.path + "none.fit", folder.path + "ride.fit", comparison).second);
    EXPECT_TRUE(compareRides(folder.path + "ride.fit", folder.path + "none.fit", comparison).second);
}

} // namespace torvane
