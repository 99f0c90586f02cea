#include "made_files.h"

#include "core/text.h"
#include "fit/fit_walk.h"
#include "fit/iso_times.h"

#include <unistd.h>

#include <map>

namespace torvane {

namespace {

constexpr int madeSeconds = 5000; // of riding by the model; longer rides repeat them

// Some of the ride's seconds again, further on in time and along the road.
GpsRecord recordAt(const GpsRecords& made, int index)
{
    int round = index / madeSeconds;
    GpsRecord record = made[static_cast<size_t>(index % madeSeconds)];
    record.timestamp += static_cast<uint32_t>(round * madeSeconds);
    record.distance += round * made.back().distance;
    return record;
}

void defineRecords(FitBuilder& fit)
{
    fit.define(
        0, messageRecord,
        {{253, 4, 0x86}, {0, 4, 0x85}, {1, 4, 0x85}, {2, 2, 0x84}, {5, 4, 0x86}, {6, 2, 0x84}, {3, 1, 2}, {13, 1, 1}});
}

void addRecord(FitBuilder& fit, const GpsRecord& record)
{
    auto semicircles = [](double degrees) { return std::llround(degrees * 2147483648.0 / 180); };
    fit.message(0, {record.timestamp, semicircles(record.latitude), semicircles(record.longitude),
                    std::llround((record.altitude + 500) * 5), std::llround(record.distance * 100),
                    std::llround(record.speed * 1000), 120 + record.timestamp % 40, 20});
}

void addSummaries(FitBuilder& fit, uint32_t start, uint32_t end)
{
    int64_t elapsed = int64_t{end - start} * 1000;
    fit.define(3, messageLap, {{253, 4}, {2, 4}, {7, 4}, {8, 4}, {9, 4}, {13, 2}, {14, 2}, {25, 1}});
    fit.message(3, {end, start, elapsed, elapsed, 0, 0, 0, 2});
    fit.define(4, messageSession, {{253, 4}, {2, 4}, {7, 4}, {8, 4}, {9, 4}, {14, 2}, {15, 2}, {5, 1}});
    fit.message(4, {end, start, elapsed, elapsed, 0, 0, 0, 2});
    fit.define(5, messageActivity, {{253, 4}, {0, 4}, {1, 2}}).message(5, {end, elapsed, 1});
}

const GpsRecords& madeRecords()
{
    static const GpsRecords made =
        makeRide(plainModel(), {.seconds = madeSeconds, .speedNoise = 0.02, .altitudeNoise = 0.1});
    return made;
}

Bytes makeGpx(int count)
{
    std::string text = "<?xml version=\"1.0\"?>\n<gpx version=\"1.1\"><trk><type>cycling</type><trkseg>\n";
    IsoTimes times;
    for (int i = 0; i < count; ++i) {
        GpsRecord record = recordAt(madeRecords(), i);
        appendFormat(
            text,
            "<trkpt lat=\"%.7f\" lon=\"%.7f\"><ele>%.1f</ele><time>%s</time><extensions><hr>%u</hr></extensions>"
            "</trkpt>\n",
            record.latitude, record.longitude, record.altitude, times.of(record.timestamp).data(),
            120 + record.timestamp % 40);
    }
    text += "</trkseg></trk></gpx>\n";
    return {text.begin(), text.end()};
}

Bytes makeFile(int count, MadeFile kind)
{
    if (kind == MadeFile::gpx)
        return makeGpx(count);
    const GpsRecords& made = madeRecords();
    FitBuilder fit;
    fit.define(1, messageFileId, {{0, 1, 0}, {1, 2, 0x84}}).message(1, {4, 1});
    defineRecords(fit);
    for (int i = 0; i < count; ++i) {
        if (kind == MadeFile::inTwoParts && i == count / 2)
            defineRecords(fit);
        addRecord(fit, recordAt(made, i));
    }
    if (kind == MadeFile::whole)
        addSummaries(fit, made.front().timestamp, recordAt(made, count - 1).timestamp);
    return fit.file();
}

// In memory where that is to be had: a disk's own speed is none of the program's.
std::filesystem::path place()
{
    return std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
}

struct Folder {
    std::string path = (place() / formatText("torvane-bench-%d/", getpid())).string();

    Folder()
    {
        std::filesystem::create_directories(path);
    }
    ~Folder()
    {
        std::filesystem::remove_all(path);
    }
};

} // namespace

Model plainModel()
{
    ParameterBlock block;
    setDefaults(block);
    return modelOf(block);
}

const std::string& madeRide(int records, MadeFile kind)
{
    static std::map<std::pair<int, MadeFile>, std::string> files;
    std::string& path = files[{records, kind}];
    if (path.empty()) {
        const char* type = kind == MadeFile::gpx ? "gpx" : "fit";
        path = benchmarkFolder() + formatText("ride-%d-%d.%s", records, static_cast<int>(kind), type);
        writeBytes(path, makeFile(records, kind));
    }
    return path;
}

const std::string& benchmarkFolder()
{
    static const Folder folder;
    return folder.path;
}

} // namespace torvane
