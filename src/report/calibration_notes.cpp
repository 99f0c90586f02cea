#include "report/calibration_notes.h"

#include "core/calibration.h"
#include "core/text.h"
#include "gps/prepare.h"

namespace torvane {

namespace {

std::string leftOutText(const LeftOutSeconds& seconds)
{
    std::string text;
    for (int reason = leftSlow; reason < leftOutCount; ++reason)
        if (seconds[reason] != 0)
            appendFormat(text, "%s%u s %s", text.empty() ? "" : ", ", seconds[reason], leftOutNames[reason]);
    return text.empty() ? "it is too short" : "left out are " + text;
}

std::string faultText(const CalibratedRide& ride, const MeasuredRide& measured)
{
    switch (ride.fault) {
    case CalibrationFault::none:
        return {};
    case CalibrationFault::unreadable:
        return preparingFault(measured.code);
    case CalibrationFault::withoutPower:
        return "it holds no power of a meter";
    case CalibrationFault::stillMeter:
        return "all its powers are 0";
    case CalibrationFault::withoutAltitude:
        return "it holds no altitude, so nobody knows what its hills took";
    case CalibrationFault::withoutSpeed:
        return "it never moves";
    case CalibrationFault::constantSpeed:
        return "its speed never changes, as on no road";
    case CalibrationFault::shortShuttle:
        return "it goes to and fro over less than a kilometre; a loop or a longer way there and back would do";
    case CalibrationFault::tooFewWindows:
        return formatText("%zu of its minutes can be used, and it takes %zu: %s", ride.windows, leastCalibrationWindows,
                          leftOutText(ride.seconds).c_str());
    case CalibrationFault::givenTwice:
        return "it is given twice, and counts once";
    }
    return {};
}

struct DoubtText {
    uint32_t doubt;
    const char* text;
};

constexpr DoubtText doubtTexts[] = {
    {doubtFewWindows, "there are few minutes to learn from; half an hour and more would narrow the interval"},
    {doubtOneWay, "a ride does not come back, so its wind could not be found; the interval allows for that"},
    {doubtNoPositions, "a ride has no positions, so its wind could not be found; the interval allows for that"},
    {doubtAltitude, "a ride ends where it began, at another altitude: its barometer drifts with the weather"},
    {doubtBraking, "much of a ride is braking, which no meter shows"},
    {doubtMeterGaps, "the meter was silent for much of a ride"},
    {doubtSpikes, "the meter showed powers that nobody has; those seconds are left out"},
    {doubtVirtual, "a ride was ridden indoors or in front of a screen: it tells of that program's air, not of yours"},
    {doubtFactor, "the factor is beyond what riders have: are weight, tyres and where the meter sits right?"},
    {doubtWeight, "what climbs took does not fit the profile's weight: is it yours, with bicycle and bottles?"},
    {doubtRidesDiffer,
     "the rides differ by more than their intervals allow: not the same bicycle, clothes or position?"},
    {doubtHeldOut,
     "blocks that were not used are predicted worse than before: parts of the rides contradict each other, "
     "or the profile was right already"},
    {doubtUncertain, "too uncertain: its interval reaches beyond a quarter of the factor to a side, so that no profile "
                     "keeps it"},
};

} // namespace

std::vector<std::string> calibrationNotes(const CalibrationAnswer& answer, std::span<const MeasuredRide> rides)
{
    std::vector<std::string> notes;
    for (size_t i = 0; i < rides.size(); ++i)
        if (std::string why = faultText(answer.rides[i], rides[i]); !why.empty())
            notes.push_back(
                formatText("'%s' tells nothing of air drag: %s", shownFileName(rides[i].path).c_str(), why.c_str()));
    for (const DoubtText& row : doubtTexts)
        if (answer.doubts & row.doubt)
            notes.emplace_back(row.text);
    return notes;
}

std::string calibrationFailure(const CalibrationAnswer& answer, const Model& model, StatusCode code)
{
    AngleReach reach = angleReach(model);
    switch (code) {
    case calibrateNothingUsed:
        return "no ride could be used";
    case calibrateBeyond:
        return formatText("a profile takes a factor from %.1f to %.1f; %.3f was not saved", leastDragFactor,
                          mostDragFactor, answer.factor);
    case calibrateNoAngle:
        return formatText("torso angles reach factors from %.2f to %.2f; %.3f was not saved as one", reach.least,
                          reach.most, answer.factor);
    case calibrateUncertain:
        return formatText("%.3f between %.3f and %.3f is too uncertain and was not saved", answer.factor, answer.lowest,
                          answer.highest);
    case calibrateNotWritten:
        return "the profile file could not be written";
    default:
        return {};
    }
}

} // namespace torvane
