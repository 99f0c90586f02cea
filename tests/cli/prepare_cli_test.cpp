// Preparing and comparing from the console, and the dialog whose entries they share.
#include "console_fixture.h"
#include "gps/prepare_fixture.h"

namespace torvane {

namespace {

// A ride as a device writes it: a record now and then, speed and altitude in the wider fields alone, a power meter.
Bytes recordedRide(int watts = 150)
{
    Recording ride({timeField, latitudeField, longitudeField, {73, 4, 0x86}, {78, 4, 0x86}, powerField, cadenceField});
    for (int i = 0; i < 200; ++i)
        ride.record({1000 + 3 * i, 500'000'000 + i * 3220, 100, 10000, 3000, watts == 0 ? 0 : watts + i % 10, 90});
    ride.define(localSession, 18, {timeField, {124, 4, 0x86}, {5, 1, 0}, {8, 4, 0x86}, {20, 2, 0x84}});
    ride.message(localSession, {1597, 10000, 2, 597000, 155});
    return ride.file();
}

} // namespace

struct PrepareConsole : ConsoleTest {
    std::string source = in + "in.fit", out = in + "out.fit";
};

TEST_F(PrepareConsole, PreparesAndTellsWhatItFound)
{
    writeBytes(source, recordedRide());
    Call done = call({"prepare", source, out});
    EXPECT_EQ(done.code, 0) << done.err;
    for (const char* line :
         {"\trecords: 200 read, 598 written\n", "\tsteps of more than a second, filled: 199\n",
          "\trecords filled in: 398\n", "\tenhanced speeds and altitudes put into the plain fields: 400\n",
          "\tdistance in no record, worked out of positions\n",
          "\taverage speed: 36.01 kph over 597 s, by the device 36.00 kph\n"})
        EXPECT_TRUE(contains(done.out, line));
    EXPECT_TRUE(contains(done.err, "success to prepare a fit file as 'out.fit'"));
    call({"prepare", "jumpSpeed=11", out, in + "again.fit"});
    EXPECT_EQ(bytesOf(in + "again.fit"), bytesOf(out));
    EXPECT_EQ(call({"prepare", "gapLimit=301", source, out}).code, 2);
    call({"prepare", "gapLimit=2", source, in + "gaps.fit"});
    EXPECT_LT(bytesOf(in + "gaps.fit").size(), bytesOf(source).size());
}

TEST_F(PrepareConsole, PreparesAnalysesAndWritesAtOneStroke)
{
    writeBytes(source, recordedRide());
    EXPECT_EQ(call({"at-one-stroke", source, out}).code, 2); // neither speed nor distance
    Call measured = call({"at-one-stroke", "--prepare", source, out});
    EXPECT_EQ(measured.code, 2);
    EXPECT_TRUE(contains(measured.err, "drop one of them to predict it"));
    Call done = call({"at-one-stroke", "--prepare", "dropPower=on", source, out});
    EXPECT_EQ(done.code, 0) << done.err;
    EXPECT_FALSE(contains(done.err, "dropPower has no effect"));
    EXPECT_TRUE(contains(done.out, "record data counted 598"));
    EXPECT_TRUE(contains(done.out, "\tpower of records, left out as asked\n"));
    EXPECT_EQ(folder.count(), 2u); // nothing in between

    Call compared = call({"compare", source, out});
    EXPECT_EQ(compared.code, 0) << compared.err;
    EXPECT_TRUE(
        contains(compared.out, "\tcommon seconds          : 200; in the first alone 0, in the second alone 398\n"));
    EXPECT_TRUE(contains(compared.out, ": first 154.5, second "));
    EXPECT_EQ(call({"compare", source, in + "none.fit"}).code, 1);
    EXPECT_EQ(call({"convert", "--prepare", source, out}).code, 2);
}

TEST_F(PrepareConsole, KeepsItsEntriesBesideTheParameterFile)
{
    writeBytes(source, recordedRide());
    std::string par = in + "Torvane.par", kept = in + "Torvane.settings";
    auto write = [&](const std::string& text) { writeBytes(kept, {text.begin(), text.end()}); };
    write("# mine\r\ngapLimit = 500\nlater=1\nno entry\n\ndropPower=maybe");
    Call told = call({"--par", par, "--save", "prepare", "jumpSpeed=55.25", "dropCadence=on", source, out});
    EXPECT_EQ(told.code, 0);
    for (const char* line : {"4: no entry\n", "gapLimit=500, which takes 1 to 300 sec\n", "dropPower=maybe"})
        EXPECT_TRUE(contains(told.err, line));
    EXPECT_EQ(
        textOf(kept),
        "# mine\r\ngapLimit=30\nlater=1\nno entry\n\ndropPower=off\njumpSpeed=55.25\ndropCadence=on\nsport=cycling\n");
    write("gapLimit=2\n");
    EXPECT_EQ(call({"--par", par, "prepare", source, in + "gaps.fit"}).code, 0);
    EXPECT_LT(bytesOf(in + "gaps.fit").size(), bytesOf(source).size());
    write({"\0no text", 8});
    EXPECT_EQ(call({"--par", par, "--save", "prepare", "jumpSpeed=40", source, out}).code, 1);
    EXPECT_EQ(textOf(kept).size(), 8u) << "nobody writes over it";
}

// What a ride cost: no refusal for a meter, and none without a second file.
TEST_F(PrepareConsole, TellsWhatARideCost)
{
    writeBytes(source, recordedRide());
    Call told = call({"ride", source});
    EXPECT_EQ(told.code, 0) << told.err;
    EXPECT_EQ(folder.count(), 1u);
    for (const char* line :
         {"\tmoving          : 00:09:57h, standing 00:00:00h\n", "\tdistance        : 5.97", " of measured 154 W\n"})
        EXPECT_TRUE(contains(told.out, line));
    EXPECT_TRUE(contains(told.err, "note: the file holds no distance"));
    EXPECT_TRUE(contains(told.out, "\tthe file holds no distance"));

    EXPECT_EQ(call({"ride", source, out}).code, 0);
    Call kept = call({"compare", source, out});
    EXPECT_TRUE(contains(kept.out, ": first 154.5, second 154.5 watts"));
    EXPECT_EQ(call({"ride", "--force", "dropPower=on", source, out}).code, 0);
    EXPECT_FALSE(contains(call({"compare", source, out}).out, "ratio 1.000"));
    EXPECT_EQ(call({"ride", source, out}).code, 2) << "two rides in one call, where a file to write was meant";
    writeBytes(in + "second.gpx", recordedRide());
    EXPECT_EQ(call({"ride", source, in + "second.gpx"}).code, 2) << "nor one with another ending";

    writeBytes(source, recordedRide(0));
    Call still = call({"ride", source});
    EXPECT_FALSE(contains(still.out, "  measured"));
    EXPECT_TRUE(contains(still.err, "note: all powers of the file are 0"));

    writeBytes(source, plainRide());
    Call tooShort = call({"ride", source});
    EXPECT_EQ(tooShort.code, 1);
    EXPECT_TRUE(contains(tooShort.err, "less than five minutes of 'in.fit' can be used"));
    EXPECT_TRUE(contains(tooShort.err, "note: the ride moves for 00:00:59h at 5.0 kph or faster"));
}

TEST_F(PrepareConsole, AdvisesToDivideSeveralSports)
{
    Recording ride({timeField, heartRateField});
    ride.record({100, 90}).define(localSession, 18, {{5, 1, 0}});
    ride.message(localSession, {2}).message(localSession, {1});
    writeBytes(source, ride.file());
    Call refused = call({"prepare", source, out});
    EXPECT_EQ(refused.code, 2);
    EXPECT_TRUE(contains(refused.err, "please divide it first"));
}

} // namespace torvane
