#include "gps/ride_answer.h"

#include "core/large_pages.h"
#include "core/units.h"
#include "gps/activity.h"
#include "gps/analysed_fields.h"
#include "gps/analysed_writer.h"
#include "gps/climbs.h"
#include "gps/gps_load.h"
#include "gps/ride_laps.h"
#include "model/food.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace torvane {

namespace {

// As the analysis is to take the file: power and cadence are predicted beside what was measured.
FieldPresence presenceForPrediction(FieldPresence held)
{
    held.powerFlags = absentFromRecords;
    held.cadenceFlags = absentFromRecords;
    return held;
}

MeasuredRow measuredRowOf(const RideSample& sample)
{
    MeasuredRow row = {sample.timestamp};
    if (sample.has(ridePower))
        row.watts = static_cast<uint16_t>(sample.values[ridePower]);
    if (sample.has(rideCadence))
        row.turns = static_cast<uint8_t>(sample.values[rideCadence]);
    return row;
}
static_assert(rideFields[ridePower].marker() == MeasuredRow::noPower);
static_assert(rideFields[rideCadence].marker() == MeasuredRow::noCadence);

StatusCode readMeasured(AnsweredRide& ride)
{
    Activity activity;
    PrepareFindings findings;
    if (StatusCode code = readActivity(ride.prepared.image, activity, findings))
        return code;
    auto isMeasured = [](const RideSample& sample) { return sample.has(ridePower) || sample.has(rideCadence); };
    ride.measured.rows.reserve(static_cast<size_t>(std::ranges::count_if(activity.samples, isMeasured)));
    for (const RideSample& sample : activity.samples)
        if (isMeasured(sample))
            ride.measured.rows.push_back(measuredRowOf(sample));
    return fitOk;
}

// A speed between two that were measured hides their noise.
bool measuresSpeed(const PrepareFindings& findings)
{
    constexpr double nearly = 0.98;
    return findings.fields[rideSpeed].read >= nearly * findings.recordsWritten;
}

// A device without a meter may write 0 W throughout. Nobody rides so.
void forgetStillMeter(AnsweredRide& ride)
{
    std::vector<MeasuredRow>& rows = ride.measured.rows;
    bool has = std::ranges::any_of(rows, [](const MeasuredRow& row) { return row.power() == 0; });
    bool moves = std::ranges::any_of(rows, [](const MeasuredRow& row) { return row.power() > 0; });
    ride.answer.meterStill = has && !moves;
    if (ride.answer.meterStill)
        for (MeasuredRow& row : rows)
            row.watts = MeasuredRow::noPower;
}

StatusCode analysePrepared(const Model& model, const ParameterBlock& settings, AnsweredRide& ride)
{
    forgetStillMeter(ride);
    LoadedRide& prepared = ride.prepared;
    ParameterBlock own = settings;
    own.predictPower = 1;
    own.predictCadence = 1;
    FieldPresence held = std::exchange(prepared.presence, presenceForPrediction(prepared.presence));
    StatusCode code = analyseRide(model, own, prepared, ride.analysis, Physics::ofTheRoad);
    prepared.presence = held;
    return code == fitNoSector ? fitTooShort : code;
}

// A record that moves and still stands alone: no step of the interval of the others leads to it or from it.
uint32_t loneRecords(const Analysis& analysis)
{
    double threshold = analysis.settings.thresholdSpeed / kphPerMps;
    return static_cast<uint32_t>(std::ranges::count_if(
        analysis.records, [&](const GpsRecord& record) { return record.sector == 0 && record.speed >= threshold; }));
}

void countRecords(const AnsweredRide& ride, RideAnswer& answer)
{
    const PrepareFindings& f = ride.findings;
    uint32_t lost = f.withoutTimestamp + f.equalTimestamps + f.backwardTimestamps + f.leapingTimestamps;
    answer.recordsRead = f.recordsRead - f.recordsOfOtherSports;
    answer.recordsUsed = answer.recordsRead - std::min(answer.recordsRead, lost + loneRecords(ride.analysis));
}

StretchFigures stretchOf(RiddenRows rows)
{
    StretchFigures figures;
    if (rows.empty())
        return figures;
    figures.from = rows.front().distance - rows.front().metres;
    std::array<RowMeans, figureSourceCount> means = {RowMeans(predictedFigure), RowMeans(measuredFigure)};
    for (const RiddenRow& row : rows) {
        figures.metres += row.metres;
        figures.seconds += row.seconds;
        for (RowMeans& each : means)
            each.add(row);
    }
    figures.climbed = climbedHeight(rows);
    for (FigureSource source : {predictedFigure, measuredFigure}) {
        figures.power[source] = means[source].power();
        figures.cadence[source] = means[source].cadence();
    }
    return figures;
}

void tellLaps(RiddenRows rows, const FitImage& image, RideAnswer& answer)
{
    for (const LapTime& lap : readLaps(image))
        if (RiddenRows own = rowsOf(lap, rows); secondsOf(own) != 0)
            answer.laps.push_back(stretchOf(own));
    if (answer.laps.size() == 1)
        answer.laps.clear();
}

// The step that leads to the foot belongs to what lies before.
void tellClimbs(RiddenRows rows, RideAnswer& answer)
{
    for (const Climb& climb : findClimbs(rows)) {
        StretchFigures figures = stretchOf(rows.subspan(climb.foot + 1, climb.top - climb.foot));
        figures.metres = rows[climb.top].distance - rows[climb.foot].distance;
        figures.climbed = rows[climb.top].height - rows[climb.foot].height;
        answer.climbs.push_back(figures);
    }
}

// Rows in motion that have a power of one source.
class PowerTimes {
public:
    PowerTimes(RiddenRows rows, FigureSource from) : at(rows.begin()), source(from)
    {
        skip();
    }
    bool ended() const
    {
        return at == std::default_sentinel;
    }
    uint32_t time() const
    {
        // Devices smooth their speeds on the way, and are a second or more behind a meter with them.
        constexpr std::array<uint32_t, figureSourceCount> late = {1, 0}; // s
        return at->timestamp - late[source];
    }
    double watts() const
    {
        return at->power[source];
    }
    void next()
    {
        ++at;
        skip();
    }

private:
    void skip()
    {
        while (!ended() && !(at->seconds != 0 && watts() >= 0))
            ++at;
    }
    RiddenRows::Iterator at;
    FigureSource source;
};

std::optional<MeterFigures> compareWithMeter(RiddenRows rows)
{
    CommonMeans common;
    PowerTimes predicted(rows, predictedFigure), measured(rows, measuredFigure);
    while (!predicted.ended() && !measured.ended()) {
        if (predicted.time() == measured.time()) {
            common.add(predicted.time(), {predicted.watts(), measured.watts()});
            predicted.next();
            measured.next();
        } else {
            (predicted.time() < measured.time() ? predicted : measured).next();
        }
    }
    if (common.seconds() == 0)
        return std::nullopt;
    return MeterFigures{common.seconds(), {common.mean(predictedFigure), common.mean(measuredFigure)}, common.band()};
}

void tellPower(RiddenRows rows, const ParameterBlock& settings, RideAnswer& answer)
{
    for (FigureSource source : {predictedFigure, measuredFigure}) {
        answer.power[source] = powerFiguresOf(rows, source);
        if (answer.power[source])
            answer.foodKiloCalorie[source] =
                foodKiloCalorieFor(answer.power[source]->kiloJoule, settings.energyEfficiency);
    }
    if (answer.power[measuredFigure])
        answer.meter = compareWithMeter(rows);
}

void tellGears(const Model& model, RiddenRows rows, RideAnswer& answer)
{
    answer.gearSource = answer.whole.cadence[measuredFigure] ? measuredFigure : predictedFigure;
    answer.gears = gearUseOf(model, rows, answer.gearSource);
}

void tellBrakes(const Analysis& analysis, RideAnswer& answer)
{
    if (analysis.settings.detectBraking == 0)
        return;
    BrakeFigures& brakes = answer.brakes.emplace();
    for (const BrakeRecord& record : analysis.brakes) {
        brakes.mostForce = std::max(brakes.mostForce, record.force);
        brakes.highest[0] = std::max(brakes.highest[0], record.frontTemperature);
        brakes.highest[1] = std::max(brakes.highest[1], record.rearTemperature);
        brakes.kiloJoule[0] += record.frontFriction / 1000;
        brakes.kiloJoule[1] += record.rearFriction / 1000;
    }
}

void tellWay(RiddenRows rows, const GpsRecords& records, RideAnswer& answer)
{
    answer.start = records.front().timestamp;
    answer.elapsed = records.back().timestamp - records.front().timestamp;
    answer.whole = stretchOf(rows);
    for (const RiddenRow& row : rows)
        answer.highestSpeed = std::max(answer.highestSpeed, row.speed);
    answer.distance = rows.empty() ? 0 : rows.back().distance;
}

void tell(const Model& model, AnsweredRide& ride)
{
    const Analysis& analysis = ride.analysis;
    RideAnswer& answer = ride.answer;
    RiddenTrack rows(analysis, ride.measured);
    answer.hasAltitude = (ride.prepared.presence.altitudeFlags & presentInRecords) != 0;
    tellWay(rows, analysis.records, answer);
    tellPower(rows, analysis.settings, answer);
    tellGears(model, rows, answer);
    tellLaps(rows, ride.prepared.image, answer);
    tellClimbs(rows, answer);
    tellBrakes(analysis, answer);
}

// Power and cadence of each record as the file is to have them.
void takeMeasured(AnsweredRide& ride)
{
    auto measured = ride.measured.rows.begin(), end = ride.measured.rows.end();
    for (GpsRecord& record : ride.analysis.records) {
        while (measured != end && measured->timestamp < record.timestamp)
            ++measured;
        if (measured == end || measured->timestamp != record.timestamp)
            continue;
        if (measured->watts != MeasuredRow::noPower)
            record.power = measured->watts;
        if (measured->turns != MeasuredRow::noCadence)
            record.cadence = measured->turns;
    }
}

uint32_t fieldsToAdd(const AnsweredRide& ride)
{
    const FieldPresence& held = ride.prepared.presence;
    uint32_t added = addedFieldsOf(ride.analysis.flags);
    if (held.cadenceFlags & presentInRecords)
        added &= ~static_cast<uint32_t>(addCadence);
    if (held.powerFlags & presentInRecords)
        added &= ~static_cast<uint32_t>(addPower);
    return added;
}

// Where a field of the records comes from. What the file lacks and nobody predicts is no number.
FigureSource sourceOf(GpsRecords& records, double GpsRecord::*field, bool predicted, uint8_t held)
{
    if (predicted)
        return predictedFigure;
    if ((held & presentInRecords) == 0)
        for (GpsRecord& record : records)
            record.*field = noFigure;
    return measuredFigure;
}

} // namespace

Verdict checkRide(const ToolInputs& inputs, const PrepareOptions& options, LoadedRide& scanned)
{
    PrepareFindings findings;
    scanned = {};
    StatusCode code = loadPrepared(scanned.image, inputs.files[0].path, options, findings);
    if (code == fitOk)
        code = gatherActivity(scanned);
    if (const char* fault = preparingFault(code))
        return {false, {{"error", fault}}};
    scanned.image.data = std::vector<uint8_t>();
    scanned.presence = presenceForPrediction(scanned.presence);
    setReadiness(scanned);
    return {};
}

StatusCode answerRide(const Model& model, const ParameterBlock& settings, const std::string& path,
                      const PrepareOptions& options, AnsweredRide& ride, Progress* progress)
{
    LoadedRide& prepared = ride.prepared;
    prepared.path = path;
    if (StatusCode code = loadPrepared(prepared.image, path, options, ride.findings, progress))
        return code;
    prepared.prepared = true;
    prepared.measuredSpeed = measuresSpeed(ride.findings);
    if (StatusCode code = gatherActivity(prepared))
        return code;
    if (StatusCode code = readMeasured(ride))
        return code;
    constexpr size_t worthGivingBack = 1 << 20;
    if (prepared.image.data.size() >= worthGivingBack)
        giveBackFreed(); // as much as the file, and the samples
    prepared.image.progress = progress;
    StatusCode code = analysePrepared(model, settings, ride);
    prepared.image.progress = nullptr;
    countRecords(ride, ride.answer);
    if (code != fitOk)
        return code;
    tell(model, ride);
    return ride.answer.whole.seconds < leastRide ? fitTooShort : fitOk;
}

AnsweredRide answerOfAnalysis(const Model& model, const LoadedRide& loaded, const Analysis& analysis)
{
    AnsweredRide ride = {{}, loaded, analysis};
    GpsRecords& records = ride.analysis.records;
    ride.measured.ofPowers =
        sourceOf(records, &GpsRecord::power, (analysis.flags & analysisPredictPower) != 0, loaded.presence.powerFlags);
    ride.measured.ofCadences = sourceOf(records, &GpsRecord::cadence, (analysis.flags & analysisPredictCadence) != 0,
                                        loaded.presence.cadenceFlags);
    tell(model, ride);
    return ride;
}

StatusCode saveAnsweredFile(AnsweredRide& ride, const OutputChoice& options, const std::string& path, Flush flush)
{
    takeMeasured(ride);
    return saveAnalysedFile(path, ride.prepared.image, ride.analysis.records, fieldsToAdd(ride), options,
                            ride.analysis.stats.summary.totalTimer, flush);
}

} // namespace torvane
