// A track made clean against the plain form of its rules, to the last bit: any pace, bends, gaps and broken values.
#include "plain/track.h"

#include "gps/track.h"
#include "model/model_fixture.h"

#include <gtest/gtest.h>

#include <limits>

namespace torvane {

namespace {

// A ride that wanders, now and then with a leap, a gap, a stop or a value that is none.
GpsRecords wander(Random& random, size_t count, double pace)
{
    GpsRecords records(count);
    double heading = uniform(random, 0, 360), distance = 0, north = uniform(random, -70, 70), east = 11;
    for (size_t i = 0; i < count; ++i) {
        bool strange = random() % 40 == 0;
        heading += uniform(random, -20, 20) + (strange ? 100 : 0);
        double step = random() % 50 == 0 ? 0 : pace * uniform(random, 0.5, 1.5);
        north += step * std::cos(heading) / metresPerDegree * (strange ? 200 : 1);
        east += step * std::sin(heading) / metresPerDegree * (strange && pace < 6 ? 40000 : 1);
        distance += step;
        records[i].sector = i / 300 % 3;
        records[i].timestamp = static_cast<uint32_t>(i + i / 70 * (random() % 9));
        records[i].latitude = north;
        records[i].longitude = east;
        records[i].altitude = uniform(random, 90, 92) + (strange ? 1200 : 0);
        records[i].distance = distance;
        records[i].speed = step * uniform(random, 0.9, 1.1);
        if (random() % 300 == 0)
            records[i].altitude = std::numeric_limits<double>::quiet_NaN();
    }
    return records;
}

} // namespace

TEST(PlainTrack, everyPassEqualsThePlainFormToTheLastBit)
{
    Random random(1492);
    constexpr size_t counts[] = {1, 2, 3, 5, 9, 11, 255, 256, 257, 519, 1200};
    for (int round = 0; round < 220; ++round) {
        double pace = uniform(random, 1, 12); // all windows
        GpsRecords quick = wander(random, counts[static_cast<size_t>(round) % std::size(counts)], pace);
        GpsRecords plainly = quick;
        ASSERT_EQ(choosePositionWindow(quick), plain::positionWindow(quick)) << "pace " << pace;
        refineTrack(quick, 12, 1.0, analysisSmoothing | analysisPosition);
        plain::refineTrack(plainly, 12, 1.0);
        for (size_t i = 0; i < quick.size(); ++i) {
            for (RecordField field :
                 {&GpsRecord::latitude, &GpsRecord::longitude, &GpsRecord::heading, &GpsRecord::distance,
                  &GpsRecord::speed, &GpsRecord::altitude, &GpsRecord::inclination, &GpsRecord::acceleration})
                ASSERT_EQ(bitsOf(quick[i].*field), bitsOf(plainly[i].*field))
                    << "round " << round << " row " << i << " of " << quick.size();
        }
    }
}

// Steps so near to a limit that a rough mean lies beyond it.
TEST(PlainTrack, theWindowOfPositionsIsThatOfTheFullMean)
{
    for (double limit : {5.0, 7.0}) {
        for (int nearness = -400; nearness <= 400; ++nearness) {
            double step = limit * (1 + nearness * 1e-6) / metresPerDegree * std::sqrt(0.5);
            GpsRecords records(400);
            for (size_t i = 0; i < records.size(); ++i) {
                records[i].latitude = 60 + step * static_cast<double>(i);
                records[i].longitude = 2 * step * static_cast<double>(i);
            }
            ASSERT_EQ(choosePositionWindow(records), plain::positionWindow(records)) << limit << " " << nearness;
        }
    }
}

} // namespace torvane
