#include "forms/entry_meanings.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr int any = 0;
constexpr int cadenceTheory = 2011;
constexpr int powerAndVelocity = 2021, patternBraking = 2024, inclination = 2025, cornering = 2026, convert = 2056,
              divideForm = 2058, fieldDump = 2092, prepareForm = 2093, oneRide = 2095, courseAhead = 2096,
              calibrateForm = 2097;

// A form's own meaning stands before the one for any form.
constexpr EntryMeaning meanings[] = {
    // Profile
    {any, "humanHeight", "height of the rider, with shoes"},
    {any, "humanWeight", "weight of the rider with clothes and shoes, as on the bicycle"},
    {any, "position", "how you sit; \"-- torso angle --\" takes the angle of torsoAngle"},
    {any, "torsoAngle", "of your back against the horizontal, as a photograph from the side shows it"},
    {any, "cadenceUsual", "what you pedal when nothing hurries you"},
    {any, "cadencePoweredMax", "where you are strongest in a short effort; the summit of the power over cadence"},
    {any, "cadenceShiftUp", "where you change gear when you speed up"},
    {any, "cadenceShiftDown", "where you change gear when you slow down"},
    {any, "ftp", "power that you hold for an hour; open when the preference useFtp is on"},
    {any, "dragFactor",
     "multiplies your whole air drag: what calibrate has learned of a ride with a power meter, 1 where nothing is "
     "known; "
     "counts with the preference useCalibration, and always in ride, plan and calibrate"},
    {any, "exceptWheels", "on: the bicycle is weighed without wheels and tyres, and theirs are added"},
    {any, "bikeWeight", "of the bicycle with its wheels, and with bottles, bags and lock if they come along"},
    {any, "bikeWeightExceptWheels", "the same without wheels and tyres"},
    {any, "wear", "what you wear"},
    {any, "helmet", "what is on your head"},
    {any, "shellType", "a frame of round tubes, or an aero frame"},
    {any, "shellAeroRatio", "drag of an aero frame against a round-tubed one"},
    {any, "shiftTimeLoss", "time without pressure on the pedals for each sprocket or ring that the chain passes"},
    {any, "crankLength", "stamped on the inside of the crank"},
    {any, "chainringCount", "how many chainrings there are"},
    {any, "chainring", "teeth, outer ring first; stamped on the ring"},
    {any, "sprocketCount", "how many sprockets there are"},
    {any, "sprocket", "teeth, smallest first; on the cassette's packing, or count"},
    {any, "wheelSize", "28 for a road wheel with its rim of 622 mm"},
    {any, "wheelWeight", "without tyre and tube; the maker's figure, plus cassette and rotor"},
    {any, "wheelResist", "air resistance of the wheel with a tyre of 23 mm, as tests in magazines give it"},
    {any, "wheelResistVelocity", "the velocity that the air resistance is told for"},
    {any, "predictWheel", "predicts the air resistance of this wheel from rimDepth, spokeCount and modelYear"},
    {any, "rimDepth", "height of the rim, for a prediction"},
    {any, "spokeCount", "spokes of the wheel, for a prediction"},
    {any, "modelYear", "year that the wheel was made in, for a prediction"},
    {any, "tyreSize", "width, printed on the tyre"},
    {any, "tyreWeight", "on the tyre's packing, with tube"},
    {any, "rollingCoefficient",
     "about 0.003 for a fast racing tyre, 0.004 for a good training tyre, 0.006 and more for a sturdy one; from drum "
     "tests add a third for real roads"},
    {any, "frictionCoefficient", "on dry asphalt: 0.75 for a hard, 0.85 for a soft compound"},
    {any, "brakeType", "rim or disc"},
    {any, "brakeMaterial", "[0] rim brakes: of the rim; [1] disc brakes: of the rotor; then front and rear"},
    {any, "brakeWeight", "of the rim alone, or of the rotor"},
    {any, "brakeSurfaceSize",
     "rim: height of the surface that carries heat, without depth that of its braking surface; rotor: diameter"},
    {any, "shellLossPercent", "what the frame swallows of the power"},
    {any, "shellLossTorque", "the torque at the crank that the loss of the frame is told for"},
    {any, "missionLossPercent", "what chain and bearings swallow: 2 for a clean chain, 5 for a neglected one"},
    {any, "wheelLossPercent", "what the rear wheel swallows of the power"},
    {any, "wheelLossTorque", "the torque at the hub that the loss of the wheel is told for"},
    {any, "motorLocation", "where the motor sits"},
    {any, "maxEPower", "what the motor gives at most"},
    {any, "assistRangeMode", "constant: a multiple of your power; linear: from the multiple of the range before"},
    {any, "assistRangeSpeed", "up to this speed the range works"},
    {any, "assistRangeRatio", "multiple of your power that the motor gives at the end of the range"},
    // Conditions
    {any, "windSpeed", "+ head wind, - tail wind"},
    {any, "airPressureSource", "pressure from altitude and temperature, or as hectoPascal tells it"},
    {any, "altitude", "of the place above the sea"},
    {any, "temperature", "of the air"},
    {any, "hectoPascal", "as a barometer at the place shows it"},
    {any, "bpn", "grip of the road's surface, 75 for good asphalt"},
    {any, "roadSurface", "how wet the road is"},
    {any, "pelotonMode", "drag in a train of riders: given, or calculated"},
    {any, "pelotonRatio", "drag in a train against riding alone: 0.7 behind one rider"},
    {any, "pelotonNumber", "riders of the train, to calculate from"},
    {any, "wheelDistance", "from your front wheel to the wheel in front, to calculate from"},
    {any, "rotateTop", "whether the riders take turns at the front"},
    {any, "pelotonVelocity", "of the train, to calculate from"},
    // Preferences
    {any, "useFtp", "adds training level and score to reports"},
    {any, "useCalibration", "every calculation takes the dragFactor of the profile"},
    {any, "energyEfficiency", "the part of food that reaches the pedals"},
    {any, "accelerationIntervalMode", "time step of accelerations: automatic or entered"},
    {any, "accelerationInterval", "smaller steps mean longer tables"},
    {any, "decelerationIntervalMode", "time step of decelerations: automatic or entered"},
    {any, "decelerationInterval", "smaller steps mean longer tables"},
    {any, "specificHeat", "of brakes: carbon [0], aluminum [1], stainless [2]"},
    {any, "emittance", "of brakes: carbon [0], aluminum [1], stainless [2]"},
    {any, "expressGraph", "the graph window opens after a ride, a course or a run over time"},
    {any, "bandGraphPowerVelocity", "the graph window opens after power and velocity"},
    {any, "bandGraphCornering", "the graph window opens after critical cornering"},
    {any, "initialValueMode", "whether dialogs open with the defaults or with what was entered last"},
    {any, "thresholdSpeed", "below it a record of a ride does not count as riding"},
    {any, "detectBraking", "a predicted ride tells braking force, temperature and heat of the brakes"},
    {any, "limitPowerPrediction", "a predicted power above thresholdPower is cut"},
    {any, "thresholdPower", "the greatest power that is predicted"},
    // Calculators
    {any, "theoryTarget", "what is looked for"},
    {any, "theoryCadence", "cadence"},
    {any, "theoryPower", "power at the pedals"},
    {cadenceTheory, "theoryPower", "power at the cadence"},
    {any, "theoryMaxPower", "power at the summit of the power over cadence"},
    {any, "theoryCadenceMax", "cadence of that summit"},
    {any, "theoryTorque", "torque at the crank"},
    {any, "theoryForce", "force at the pedal"},
    {any, "torqueOrForce", "which of the two is given"},
    {any, "theoryVelocity", "velocity that the gear is ridden at"},
    {any, "theoryInclination", "slope of the second block, which tells what the figures mean on the road; + uphill"},
    {any, "frontTooth", "teeth of the chainring; one that the profile lacks counts as the nearest one"},
    {any, "rearTooth", "teeth of the sprocket; one that the profile lacks counts as the nearest one"},
    {any, "useMissionProfile", "the gears are those of the profile"},
    // Rides
    {any, "rideTarget", "what is known of the effort: the reference factor"},
    {powerAndVelocity, "rideTarget", "what is looked for: the power for a velocity, or the velocity for a power"},
    {patternBraking, "rideTarget", "how the brakes are used"},
    {inclination, "rideTarget", "what is looked for: the velocity on a slope, or the slope for a velocity"},
    {cornering, "rideTarget", "what is looked for, from the two others"},
    {any, "ridePower", "the power that the reference factor speaks of"},
    {powerAndVelocity, "ridePower", "the power that is given"},
    {any, "ridePowerBase", "where the given power is measured: pedals, chainring (crank), rear hub, road (thrust)"},
    {any, "rideVelocity", "the velocity that is given"},
    {any, "rideInclination", "slope of the road; + uphill"},
    {any, "intensionCase", "how long the effort lasts: by time or by distance"},
    {any, "intensionFirst", "minutes [0], or kilometres [1]"},
    {any, "intensionSecond", "and seconds [0], or metres [1]"},
    {any, "rideStartVelocity", "from this velocity"},
    {any, "rideEndVelocity", "to this velocity"},
    {patternBraking, "rideEndVelocity", "the velocity that is held, or braked to"},
    {any, "rideLegTime", "the time that the run must take"},
    {inclination, "rideLegTime", "how long it rolls"},
    {any, "rideDistance", "the way that the run must take"},
    {inclination, "rideDistance", "how far it rolls"},
    {any, "rideAccele", "the mean acceleration that the run must have"},
    {any, "rideGravity", "the same in multiples of gravity"},
    {any, "startGearMode", "the gear to start in: by itself, or startGearIndex"},
    {any, "startGearIndex", "the gear to start in, chainring x sprocket"},
    {any, "initialKickTime", "how long a start from standstill counts as a push instead of a power"},
    {any, "rideForce", "force of the brakes, negative"},
    {any, "intervalDistance", "the brakes are used once in every such way"},
    {any, "totalDistance", "length of the descent"},
    {any, "brakingInclination", "slope of the road; each way of braking has its own"},
    {any, "inclinationLimit", "the end: once nothing changes any more, after a way, or after a time"},
    {any, "corneringRadius", "of the line that you ride"},
    {any, "safetyMargin", "0.1 keeps a tenth of the grip in reserve"},
    // Recorded rides
    {any, "expressSmoothing", "smooth and reject outliers; leave it on"},
    {any, "expressUnrealInclination", "a steeper slope is an error of the receiver"},
    {any, "expressUnrealAccele", "a greater acceleration is an error of the receiver"},
    {any, "flatCourse", "take the course as flat, when the altitude is useless"},
    {any, "analyseSmoothing", "smooth and reject outliers; leave it on"},
    {any, "analyseUnrealInclination", "a steeper slope is an error of the receiver"},
    {any, "analyseUnrealAccele", "a greater acceleration is an error of the receiver"},
    {any, "analyseWindSpeed", "at the rider: a weather report's, 10 m above open ground, is about twice that"},
    {any, "analyseWindDirection", "where the wind comes from: 0 north, 90 east"},
    {any, "averageTemperature", "of the air, when the file has none"},
    {any, "predictCadence", "predict the cadence"},
    {any, "predictPower", "predict the power"},
    {any, "analysePowerBase", "where the power is told for: pedals, chainring (crank), rear hub, road (thrust)"},
    {any, "expressFieldsData", "the report has a line for each record as well"},
    {any, "prepare", "put the ride in order first, as prepare does"},
    {any, "gapLimit", "steps up to this long are filled at one second; longer ones stay open"},
    {any, "jumpSpeed", "positions that are faster off the others are dropped and bridged"},
    {any, "dropPower", "take out a measured power, so that it is predicted"},
    {any, "dropCadence", "take out a measured cadence, so that it is predicted"},
    {any, "sport", "of a recording of several sports the legs of this one are taken"},
    {any, "meterPlace", "where the power meter sits; a meter in the hub sees less than one in the pedals"},
    {any, "asAngle", "save the torso angle of the same drag at 40 kph instead of a factor"},
    // Files
    {any, "source", "FIT file that is read, and stays as it is"},
    {prepareForm, "source", "recorded ride that is read, FIT, GPX or TCX; it stays as it is"},
    {oneRide, "source", "recorded ride, FIT, GPX or TCX"},
    {courseAhead, "source", "course or ride along the road ahead, FIT, GPX or TCX"},
    {calibrateForm, "source", "recorded ride with a power meter, FIT, GPX or TCX"},
    {any, "destination", "FIT file that is written"},
    {divideForm, "destination", "FIT files that are written: a number is added to this name for each of them"},
    {fieldDump, "destination", "table of all fields that is written"},
    {courseAhead, "destination", "file that is written for a device, FIT, GPX or TCX; without a name there is none"},
    {calibrateForm, "destination", "profile that takes what was learned; without a name there is none"},
    // FIT tools
    {any, "convertEnabled", "write the form of header that fitFormat names"},
    {any, "fitFormat", "form of the header: the older of 12 bytes, or the one of 14"},
    {convert, "convertEnabled", "change the form of the header; off to change the sport or the unit of speed alone"},
    {any, "sportEnabled", "write the sport that sportIndex names"},
    {any, "sportIndex", "the sport"},
    {any, "convertSpeedUnit", "for devices that write km/h where the format wants m/s"},
    {any, "addLap", "add a lap, summed up from the records"},
    {any, "addSession", "add a session, summed up from the records"},
    {any, "addActivity", "add an activity"},
    {any, "excludeLap", "take out all laps"},
    {any, "excludeSession", "take out all sessions"},
    {any, "excludeActivity", "take out all activities"},
    {any, "days", "that the clock was late"},
    {any, "hours", "that the clock was late, besides the days"},
    {any, "minutes", "that the clock was late, besides days and hours"},
    {any, "timestampOffset", "the same in seconds; negative for a clock that was early"},
    {any, "timestampTruncate", "round down to a multiple of 256 s, for files whose records carry compressed times"},
    // A course ahead
    {any, "effort",
     "what you give: a constant power, a normalised power, what a wanted time takes, a share of ftp, or "
     "the power of another ride"},
    {courseAhead, "power", "that you hold, or the normalised power of the ride"},
    {courseAhead, "time", "that you want to take, stops included"},
    {any, "ftpShare", "normalised power as a share of your ftp"},
    {any, "asRidden", "file of another ride with power along this road; its power is ridden again"},
    {any, "pacing", "even power, one power up, on the flat and down, or the least time at the same normalised power"},
    {any, "steepFrom", "slope from which the first of the three powers is ridden"},
    {any, "downBelow", "slope below which the last of the three powers is ridden"},
    {any, "steepShare", "of the three powers the one uphill, against the others"},
    {any, "flatShare", "of the three powers the one on the flat, against the others"},
    {any, "downShare", "of the three powers the one downhill, against the others"},
    {any, "least", "power that the plan never goes below while you pedal, of the normalised power"},
    {any, "most", "power that the plan never goes above, of the normalised power"},
    {any, "stretches", "in how many stretches of one power, of 300 m or more, the plan is told at most"},
    {any, "altitudeSmoothing", "length of road over which its altitudes are smoothed; longer where they are noisy"},
    {courseAhead, "windSpeed", "of the wind over the land, at your height"},
    {any, "windDirection", "where the wind comes from: 0 north, 90 east"},
    {any, "topSpeed", "faster you do not let it roll"},
    {any, "bendAcceleration", "to the side, that you take bends with at most; less where the tyres hold less"},
    {any, "brakeDeceleration", "with which you brake before bends and stops at most"},
    {any, "leastCadence", "who cannot turn the lowest gear as fast as this walks"},
    {any, "stops",
     "\"3x10min\" evenly over the course, or \"40:10min 85.5:300s\" at these kilometres; 10 days in all at most"},
    {any, "start", "\"8:30\" or \"2026-05-01 8:30\", in UTC; the answer then tells times of the day"},
    {any, "fileType", "of a written FIT file: a course to follow, or an activity as if it had been ridden"},
};

std::string labelOf(const FormState& state, const Row& choice, int value)
{
    if (choice.kind == RowKind::check)
        return value != 0 ? "on" : "off";
    return rowLabels(state, choice)[static_cast<size_t>(value)];
}

// Whether any row of the entry's name changes an answer.
bool counts(const FormState& state, std::string_view entry)
{
    return std::ranges::any_of(state.form->rows, [&](const Row& row) {
        return row.name && row.name == entry && isPresent(state, row) && takesEffect(state, row);
    });
}

std::vector<std::string> countingValues(const FormState& state, const Row& choice, std::string_view entry, int of)
{
    std::vector<std::string> values;
    for (int value = 0; value < of; ++value) {
        FormState chosen = state;
        choose(chosen, choice, value);
        if (counts(chosen, entry))
            values.push_back(labelOf(state, choice, value));
    }
    return values;
}

} // namespace

std::span<const EntryMeaning> entryMeanings()
{
    return meanings;
}

std::string_view entryStem(std::string_view entry)
{
    return entry.substr(0, entry.find_first_of("[0123456789"));
}

const char* meaningOf(const Form& form, std::string_view entry)
{
    std::string_view stem = entryStem(entry);
    for (int id : {form.id, any})
        for (const EntryMeaning& meaning : meanings)
            if (meaning.form == id && stem == meaning.name)
                return meaning.text;
    return "";
}

Counting countingOf(const FormState& state, std::string_view entry)
{
    Counting counting = {counts(state, entry)};
    for (const Row& choice : state.form->rows) {
        if (!isChosen(choice) || !choice.name || choice.name == entry || !isEnabled(state, choice))
            continue;
        int of = choice.kind == RowKind::check ? 2 : static_cast<int>(rowLabels(state, choice).size());
        std::vector<std::string> values = countingValues(state, choice, entry, of);
        if (!values.empty() && values.size() < static_cast<size_t>(of))
            counting.by.push_back({&choice, values});
    }
    return counting;
}

} // namespace torvane
