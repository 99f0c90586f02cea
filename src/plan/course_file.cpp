#include "plan/course_file.h"

#include "fit/fit_types.h"
#include "gps/activity_messages.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace torvane {

namespace {

enum : uint8_t { localFileId, localEvent, localRecord, localLap, localCourse, localPoint, localSession, localActivity };

constexpr size_t courseNameBytes = 32, pointNameBytes = 24;

// Numbers of courses and course points as the public profile has them.
enum CourseFieldNumber : uint8_t { courseSport = 4, courseName = 5, courseCapabilities = 6 };
enum CoursePointFieldNumber : uint8_t {
    pointTime = 1,
    pointLatitude = 2,
    pointLongitude = 3,
    pointDistance = 4,
    pointType = 5,
    pointName = 6,
    messageIndex = 254,
};

constexpr FieldLayout courseLayout[] = {
    {courseSport, 1, byteEnum}, {courseCapabilities, 4, bits32}, {courseName, courseNameBytes, characters}};
constexpr FieldLayout pointLayout[] = {{messageIndex, 2, unsigned16},          {pointTime, 4, unsigned32},
                                       {pointLatitude, 4, signed32},           {pointLongitude, 4, signed32},
                                       {pointDistance, 4, unsigned32},         {pointType, 1, byteEnum},
                                       {pointName, pointNameBytes, characters}};
constexpr FieldLayout recordLayout[] = {{timestampField, 4, unsigned32}, {recordLatitude, 4, signed32},
                                        {recordLongitude, 4, signed32},  {recordAltitude, 2, unsigned16},
                                        {recordDistance, 4, unsigned32}, {recordSpeed, 2, unsigned16},
                                        {recordPower, 2, unsigned16},    {recordCadence, 1, unsigned8}};
// With the positions of start and end, by which devices find where a course begins.
constexpr FieldLayout courseLapLayout[] = {{timestampField, 4, unsigned32},
                                           {summaryStartTime, 4, unsigned32},
                                           {3, 4, signed32},
                                           {4, 4, signed32},
                                           {5, 4, signed32},
                                           {6, 4, signed32},
                                           {7, 4, unsigned32},
                                           {summaryTotalTimer, 4, unsigned32},
                                           {9, 4, unsigned32},
                                           {lapSport, 1, byteEnum}};

constexpr uint8_t summitPoint = 1, valleyPoint = 2, genericPoint = 0;

uint64_t typeOf(MarkKind kind)
{
    if (kind == MarkKind::summit)
        return summitPoint;
    return kind == MarkKind::foot ? valleyPoint : genericPoint;
}

class Writing {
public:
    Writing(const PlannedFile& file, uint8_t type) : planned(file)
    {
        writer.define(localFileId, messageFileId, fileIdLayout);
        writer.define(localEvent, messageEvent, eventLayout);
        writer.define(localRecord, messageRecord, recordLayout);
        writer.define(localLap, messageLap, courseLapLayout);
        writer.message(localFileId, fileIdLayout, {type, fitDevelopment, file.start});
    }

    void course()
    {
        constexpr uint64_t valid = 2, time = 4, distance = 8, position = 16, power = 64, cadence = 128;
        writer.define(localCourse, messageCourse, courseLayout);
        writer.message(localCourse, courseLayout, {fitCycling, valid | time | distance | position | power | cadence});
        writer.text(planned.name, courseNameBytes);
    }

    void lap()
    {
        const PlannedSecond& first = planned.seconds.front();
        const PlannedSecond& last = planned.seconds.back();
        writer.message(localLap, courseLapLayout,
                       {end(), planned.start, storedDegrees(first.latitude), storedDegrees(first.longitude),
                        storedDegrees(last.latitude), storedDegrees(last.longitude), milliseconds(), milliseconds(),
                        storedDistance(last.distance), fitCycling});
    }

    void timer(uint32_t second, uint8_t what)
    {
        writer.message(localEvent, eventLayout, {second, timerEvent, what});
    }

    void records()
    {
        timer(planned.start, timerStarts);
        double owed = 0; // W that rounding has left out so far, so that the mean stays
        for (const PlannedSecond& second : planned.seconds) {
            double power = std::max(0.0, std::round(second.power + owed));
            owed += second.power - power;
            record(second, power);
        }
    }

    void points()
    {
        writer.define(localPoint, messageCoursePoint, pointLayout);
        uint64_t index = 0;
        for (const CourseMark& mark : planned.marks) {
            const PlannedSecond& at = secondAt(planned, mark.distance);
            writer.message(localPoint, pointLayout,
                           {index++, planned.start + at.time, storedDegrees(at.latitude), storedDegrees(at.longitude),
                            storedDistance(mark.distance), typeOf(mark.kind)});
            writer.text(mark.name, pointNameBytes);
        }
    }

    void sessionAndActivity()
    {
        constexpr uint64_t oneSession = 1;
        writer.define(localSession, messageSession, sessionLayout);
        writer.define(localActivity, messageActivity, activityLayout);
        writer.message(localSession, sessionLayout,
                       {end(), planned.start, milliseconds(), milliseconds(),
                        storedDistance(planned.seconds.back().distance), fitCycling});
        writer.message(localActivity, activityLayout,
                       {end(), milliseconds(), oneSession, activityManual, activityEvent, activityStop});
    }

    void finish(FitImage& image)
    {
        wrapMessages(std::move(writer.block), image);
    }

    uint32_t end() const
    {
        return planned.start + planned.seconds.back().time;
    }

private:
    uint64_t milliseconds() const
    {
        return planned.seconds.back().time * uint64_t{1000};
    }

    void record(const PlannedSecond& second, double power)
    {
        writer.message(localRecord, recordLayout,
                       {planned.start + second.time, storedDegrees(second.latitude), storedDegrees(second.longitude),
                        storedAltitude(second.altitude), storedDistance(second.distance), storedSpeed(second.speed),
                        stored(power, 1, 0, 65534, UINT16_MAX), stored(second.cadence, 1, 0, 254, UINT8_MAX)});
    }

    const PlannedFile& planned;
    MessageWriter writer = {};
};

} // namespace

// Course and lap stand in front: devices show them before they have read on.
void makeCourseFile(const PlannedFile& planned, FitImage& image)
{
    Writing writing(planned, fileTypeCourse);
    writing.course();
    writing.lap();
    writing.records();
    writing.points();
    writing.timer(writing.end(), timerStops);
    writing.finish(image);
}

void makePlannedActivity(const PlannedFile& planned, FitImage& image)
{
    Writing writing(planned, fileTypeActivity);
    writing.records();
    writing.timer(writing.end(), timerStops);
    writing.lap();
    writing.sessionAndActivity();
    writing.finish(image);
}

} // namespace torvane
