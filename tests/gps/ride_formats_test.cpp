// What a ride cost, for rides whose power is known: the same answer from every kind of file.
#include "gps/ride_answer.h"

#include "core/text.h"
#include "gps/ride_maker.h"

#include <gtest/gtest.h>

#include <chrono>

namespace torvane {

namespace {

Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

std::string timeText(uint32_t timestamp)
{
    using namespace std::chrono;
    sys_seconds time = sys_days(1989y / December / 31) + seconds(timestamp);
    year_month_day day = floor<days>(time);
    hh_mm_ss clock(time - floor<days>(time));
    return formatText("%04d-%02u-%02uT%02d:%02d:%02dZ", int{day.year()}, unsigned{day.month()}, unsigned{day.day()},
                      static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                      static_cast<int>(clock.seconds().count()));
}

// Positions alone, in the manner of a phone.
Bytes asGpx(const GpsRecords& records)
{
    std::string text = "<gpx version='1.1'><trk><type>cycling</type><trkseg>";
    for (const GpsRecord& r : records)
        appendFormat(text, "<trkpt lat='%.9f' lon='%.9f'><ele>%.2f</ele><time>%s</time></trkpt>", r.latitude,
                     r.longitude, r.altitude, timeText(r.timestamp).c_str());
    return bytesOf(text + "</trkseg></trk></gpx>");
}

Bytes asTcx(const GpsRecords& records)
{
    std::string text = "<TrainingCenterDatabase><Activities><Activity Sport='Biking'><Lap><Track>";
    for (const GpsRecord& r : records)
        appendFormat(text,
                     "<Trackpoint><Time>%s</Time><Position><LatitudeDegrees>%.9f</LatitudeDegrees>"
                     "<LongitudeDegrees>%.9f</LongitudeDegrees></Position><AltitudeMeters>%.2f</AltitudeMeters>"
                     "<DistanceMeters>%.3f</DistanceMeters></Trackpoint>",
                     timeText(r.timestamp).c_str(), r.latitude, r.longitude, r.altitude, r.distance);
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
            EXPECT_EQ(answer.recordsUsed, 2400u);
        }
    }
}

} // namespace torvane
