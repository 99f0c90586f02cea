// Recorded rides through the commands, from file to file: made rides of every shape are written, loaded again and held
// against what the report said.
#include "command/gps_command.h"

#include "captured_screens.h"
#include "command/course_command.h"
#include "command/fill.h"
#include "command/gps_load_command.h"
#include "command/ride_answer_command.h"
#include "figures.h"
#include "fit/fit_tools.h"
#include "forms/form.h"
#include "gps/analysis.h"
#include "gps/gps_load.h"
#include "gps/one_stroke_check.h"
#include "gps/ride_maker.h"

#include <algorithm>
#include <tuple>

namespace torvane {

class GpsCommandTest : public ModelTest {
protected:
    GpsCommandTest()
    {
        session.model = model;
    }

    TestFolder folder;
    CapturedScreens shown;
    Session session = {shown.screens};
    std::string source = folder.path + "ride.fit";
    std::string destination = folder.path + "out.fit";

    StatusCode loadMade(const Bytes& file)
    {
        writeBytes(source, file);
        session.chosenRide = source;
        session.inputs = {};
        session.inputs.files[0].path = source;
        session.inputs.files[toolDestination].path = destination;
        return loadGpsFile(session);
    }
    // What the reports of the loaded ride tell.
    FitSummary toldOf(const std::string& path)
    {
        LoadedRide ride = session.ride;
        Analysis analysis;
        loadFitImage(ride.image, path);
        EXPECT_EQ(analyseRide(model, session.working, ride, analysis), fitOk);
        return analysis.stats.summary;
    }
    StatusCode loadMade(const GpsRecords& records, const FileShape& shape = {})
    {
        return loadMade(fitOf(records, shape).file());
    }
};

namespace {

// What a file holds, read by the program's own load.
struct Reread {
    LoadedRide ride;
    GpsRecords records;
};

Reread reread(const std::string& path)
{
    Reread file;
    EXPECT_EQ(loadFitImage(file.ride.image, path), fitOk);
    EXPECT_EQ(gatherActivity(file.ride), fitOk);
    file.records.resize(file.ride.inventory.recordCount);
    EXPECT_EQ(fillRecords(file.ride.image, file.records), fitOk);
    return file;
}

// With a cadence, without altitude.
Bytes cadenceRide()
{
    FitBuilder fit;
    fit.define(2, 0, {{0, 1}}).message(2, {4}).define(0, 20, {{253, 4}, {5, 4}, {6, 2}, {4, 1}});
    for (int i = 0; i < 20; ++i)
        fit.message(0, {1000 + i, i * 800, 8000, 77});
    return fit.file();
}

GpsRecords shortRide(const Model& model)
{
    static const GpsRecords records = makeRide(model, {.seconds = 320});
    return records;
}

} // namespace

TEST_F(GpsCommandTest, shapesOfFilesAtOneStroke)
{
    struct Case {
        const char* name;
        FileShape shape;
        size_t kept = 320;
        bool meanHolds = true; // the 200 W come back
        void (*change)(GpsRecords& records) = [](GpsRecords&) {};
    };
    const Case cases[] = {
        {"all fields", {}},
        {"big-endian", {.bigEndian = true}},
        {"developer fields", {.developerField = true}},
        {"defined twice", {.definedTwice = true}},
        {"compressed timestamps", {.timestamp = false, .compressed = true}},
        {"no altitude", {.altitude = false}, 320, false},
        {"no position", {.position = false}},
        {"no timestamps", {.timestamp = false}},
        {"speed from distance", {.speed = false}},
        {"speed alone", {.timestamp = false, .position = false, .altitude = false, .distance = false}, 320, false},
        {"the second of the start twice", {}, 3, false, [](GpsRecords& r) { r[1].timestamp = r[0].timestamp; }},
        {"a missing minute", {}, 260, true, [](GpsRecords& r) { r.erase(r.begin() + 100, r.begin() + 160); }},
        {"one record", {}, 1, false, [](GpsRecords& r) { r.resize(1); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        GpsRecords made = shortRide(model);
        c.change(made);
        ASSERT_EQ(loadMade(made, c.shape), fitOk);
        FitSummary told = toldOf(source);
        EXPECT_EQ(atOneStroke(session), fitOk) << shown.lower;
        EXPECT_EQ(shown.status, "status : saved a fit file with prediction data as 'out.fit'");
        EXPECT_EQ(shown.lower.find("nan"), std::string::npos) << shown.lower;

        Reread file = reread(destination);
        ASSERT_EQ(file.records.size(), c.kept);
        double sum = 0, power = 0, cadence = 0;
        for (const GpsRecord& record : file.records) {
            sum += record.power;
            power = std::max<double>(power, record.power);
            cadence = std::max<double>(cadence, record.cadence);
        }
        double kept = static_cast<double>(c.kept);
        EXPECT_TRUE(!c.meanHolds || std::fabs(sum / kept / 200 - 1) < 0.06) << sum / kept << " W";
        expectFigures({power, cadence, file.ride.sessions[0].recordCount, file.ride.laps[0].recordCount},
                      {told.maxPower, told.maxCadence, kept, kept});
    }
}

TEST_F(GpsCommandTest, theWrittenFileHoldsWhatTheReportSaid)
{
    session.working.expressFieldsData = 1;
    session.working.analyseWindSpeed = 8; // felt by headings, which rows show
    ASSERT_EQ(loadMade(shortRide(model)), fitOk);
    FitSummary told = toldOf(source);
    ASSERT_EQ(atOneStroke(session), fitOk);
    // Each row of the table against the record of the file: sector, time, heading, altitude, slope, speed, distance,
    // cadence, power.
    Reread file = reread(destination);
    std::string rows = shown.lower.substr(shown.lower.find("kph,       km,      rpm,        W\n"));
    size_t line = 0;
    for (const GpsRecord& record : file.records) {
        line = rows.find('\n', line) + 1;
        SCOPED_TRACE(rows.substr(line, rows.find('\n', line) - line));
        double speed, distance, cadence, power;
        int hour, minute, second, sector;
        ASSERT_EQ(std::sscanf(rows.c_str() + line, "%d,%d:%d:%d,%*f,%*f,%*f,%lf,%lf,%lf,%lf", &sector, &hour, &minute,
                              &second, &speed, &distance, &cadence, &power),
                  8);
        EXPECT_EQ(static_cast<uint32_t>((hour * 60 + minute) * 60 + second), record.timestamp % 86400);
        EXPECT_NEAR(speed / 3.6, record.speed, 0.015);
        EXPECT_NEAR(distance * 1000, record.distance, 0.51);
        EXPECT_NEAR(cadence, record.cadence + 0.5, 0.551); // truncated in the file
        EXPECT_NEAR(power, record.power + 0.5, 0.551);
    }
    for (const SessionLapEntry& entry : {file.ride.sessions[0], file.ride.laps[0]}) {
        expectFigures({entry.avgPower, entry.avgCadence, entry.totalDistance, entry.avgSpeed / 2},
                      {told.avgPower, told.avgCadence, told.totalDistance, told.avgSpeed / 2}, 1);
        expectFigures({entry.maxPower, entry.maxSpeed, entry.totalTimer, entry.startTime},
                      {told.maxPower, told.maxSpeed, told.totalTimer, told.startTimestamp});
    }
    Bytes written = bytesOf(destination);
    session.working.expressFieldsData = 0;
    ASSERT_EQ(atOneStroke(session), fitOk);
    EXPECT_TRUE(sameBytes(bytesOf(destination), written)) << "whether or not rows are shown";
}

TEST_F(GpsCommandTest, failuresAreTold)
{
    const std::tuple<StatusCode, const char*, void (*)(Session&)> cases[] = {
        {fitNoSector, "no effective sector. please try to set the threshold speed to be more shorter",
         [](Session& s) { s.working.thresholdSpeed = 200; }},
        {fitSaveFailed, "failed to save the data to a fit file 'x.fit'",
         [](Session& s) { s.inputs.files[toolDestination].path = "/no/such/folder/x.fit"; }},
        {fitCannotOpen, "failed to open the file 'ride.fit'",
         [](Session& s) { std::filesystem::remove(s.inputs.files[0].path); }},
    };
    for (const auto& [code, text, spoil] : cases) {
        setDefaults(session.working);
        ASSERT_EQ(loadMade(shortRide(model)), fitOk);
        spoil(session);
        for (StatusCode (*command)(Session&) : {createAnalysedFile, atOneStroke}) {
            session.graph.emplace(); // of an earlier answer
            EXPECT_EQ(command(session), code) << text;
            EXPECT_EQ(shown.status, std::string("status : ") + text);
            EXPECT_FALSE(session.graph) << text;
        }
    }
    for (ResultStatus (*command)(Session&) : {answerRideCommand, planCommand}) { // the last source is gone
        session.graph.emplace();
        EXPECT_NE(command(session), fitOk);
        EXPECT_FALSE(session.graph);
    }
}

TEST_F(GpsCommandTest, aStrokeLeavesTheLoadedRideUntilItSucceeds)
{
    ASSERT_EQ(loadMade(shortRide(model)), fitOk);
    std::string other = folder.path + "other.fit";
    writeBytes(other, cadenceRide());
    auto settingsOf = [this](const LoadedRide& ride) { // flat course, predicted cadence
        FormState state;
        openForm(state, *findForm(2053), session.saved, session.working, model, false, ride);
        return std::pair(state.values.flatCourse, state.values.predictCadence);
    };
    std::pair own(0, 1), ofOther(1, 0);
    FormState stroke;
    openForm(stroke, *findForm(2060), session.saved, session.working, model, false, session.ride);
    for (const Row& row : stroke.form->rows) {
        if (row.id == 8611)
            setPath(stroke, row, other);
        if (row.kind == RowKind::button) {
            EXPECT_TRUE(pressButton(stroke, row, session.working).passed);
        }
    }
    EXPECT_EQ(settingsOf(stroke.ride), ofOther);
    EXPECT_EQ(settingsOf(session.ride), own) << "the dialog was cancelled";
    session.inputs.files[toolDestination].path = "/no/such/folder/x.fit";
    EXPECT_EQ(atOneStroke(session), fitSaveFailed);
    EXPECT_EQ(settingsOf(session.ride), own) << "the stroke failed";
    EXPECT_EQ(expressSourceData(session), fitOk);
    EXPECT_NE(shown.lower.find("record data counted 320\n"), std::string::npos);
    session.inputs.files[toolDestination].path = destination;
    EXPECT_EQ(atOneStroke(session), fitOk);
    EXPECT_EQ(session.ride.path, destination);
    EXPECT_EQ(session.readiness, nothingToPredict);
    FitBuilder twoSports;
    twoSports.define(1, 18, {{5, 1}}).message(1, {1}).message(1, {2});
    EXPECT_NE(loadMade(twoSports.file()), fitOk);
    EXPECT_EQ(session.ride.path, destination) << "the load failed";
}

TEST_F(GpsCommandTest, checkOfTheSource)
{
    ToolInputs inputs;
    inputs.files[0].path = source;
    LoadedRide scanned;
    auto boxOf = [&](const Bytes& file, bool both) {
        writeBytes(source, file);
        Verdict verdict = checkOneStrokeSource(inputs, {}, both, scanned);
        return verdict.boxes.empty() ? "" : verdict.boxes[0].text;
    };
    const std::tuple<int, std::vector<FitBuilder::Field>, const char*> cases[] = {
        {4, {{6, 2}}, ""},
        {4, {{253, 4}, {5, 4}}, "can not analyse and predict due to a source file"},
        {6, {{6, 2}}, "found an invalid file id type of a source file"},
    };
    for (const auto& [fileType, fields, box] : cases) {
        FitBuilder fit;
        fit.define(2, 0, {{0, 1}}).message(2, {fileType}).define(0, 20, fields);
        fit.message(0, std::vector<int64_t>(fields.size(), 1));
        EXPECT_EQ(boxOf(fit.file(), false), box);
    }
    Bytes whole = fitOf(shortRide(model)).file();
    Bytes broken = whole;
    broken.back() ^= 1;
    EXPECT_EQ(boxOf({1, 2, 3}, true), "detect an invalid source file structure");
    EXPECT_EQ(boxOf(broken, true), "failed to read a source file which might be an invalid structure");
    inputs.files[toolDestination].path = folder.path + "no/out.fit";
    EXPECT_EQ(boxOf(whole, true), "not existing directory for a destination file");
    inputs.files[toolDestination].path = folder.path + "out.txt";
    EXPECT_TRUE(checkOneStrokeSource(inputs, {}, true, scanned).passed);
    EXPECT_EQ(inputs.files[toolDestination].path, folder.path + "out.txt.fit");
    EXPECT_EQ(scanned.presence.positionFlags, 0x77);
    EXPECT_EQ(scanned.presence.temperatureFlags, 0);
    const std::vector<Assignment> entries = {{"analyseUnrealAccele", "99"}};
    RunFiles files = {{source}, destination};
    Filling filling = {session, *findCommand("at-one-stroke"), entries, files};
    EXPECT_FALSE(fillDialog(filling)) << "what is refused behind a button of the dialog";
}

} // namespace torvane
