// Files that a device did not finish, and several in one.
#include "gps/fit_parts.h"

#include "prepare_fixture.h"

namespace torvane {

namespace {

Bytes fileOfRecords(int from, int to)
{
    Recording ride({timeField, heartRateField});
    for (int i = from; i < to; ++i)
        ride.record({i, i % 100});
    ride.define(localSession, 18, {timeField, {2, 4, 0x86}, {7, 4, 0x86}, {5, 1, 0}});
    ride.message(localSession, {to - 1, from, (to - 1 - from) * 1000, 2});
    return ride.file(14);
}

Bytes joined(Bytes first, const Bytes& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Prepared preparedFrom(Bytes file, SourceFindings& found)
{
    FitImage image;
    EXPECT_EQ(takeFitParts(image, std::move(file), found), fitOk);
    return Prepared(image, found);
}

} // namespace

TEST(FitParts, OfABrokenFileWhatCanBeReadIsRead)
{
    Bytes whole = fileOfRecords(1000, 1100);
    Bytes wrongCrc = whole, neverClosed = whole, roomLeft = whole, cut = whole;
    wrongCrc.back() ^= 1;
    std::fill_n(neverClosed.begin() + 4, 4, uint8_t{0});
    roomLeft = neverClosed;
    roomLeft.resize(roomLeft.size() - 2);
    roomLeft.insert(roomLeft.end(), 5001, 0);
    cut.resize(300);
    const std::tuple<const char*, Bytes, bool SourceFindings::*, size_t> cases[] = {
        {"wrong CRC", wrongCrc, &SourceFindings::crcWrong, 100},
        {"never closed", neverClosed, &SourceFindings::neverClosed, 100},
        {"room left", roomLeft, &SourceFindings::neverClosed, 100},
        {"cut", cut, &SourceFindings::cut, 40}, // of six bytes, behind 57
    };
    for (const auto& [name, file, fault, records] : cases) {
        SCOPED_TRACE(name);
        SourceFindings found;
        Prepared done = preparedFrom(file, found);
        EXPECT_TRUE(found.*fault);
        EXPECT_EQ(found.cut, fault == &SourceFindings::cut);
        EXPECT_EQ(done.records(3).size(), records);
        EXPECT_EQ(done.values(18, 7), (std::vector<int64_t>{static_cast<int64_t>(records - 1) * 1000}));
        EXPECT_EQ(done.values(18, 9), (std::vector<int64_t>{found.cut ? 0 : -1})) << "no way is told";
        EXPECT_EQ(done.values(34, 1).size(), fault == &SourceFindings::cut ? 1u : 0u);
        EXPECT_EQ(Prepared(done.image.data).image.data, done.image.data);
    }
}

TEST(FitParts, SeveralFilesInOneAreOneRide)
{
    Recording settings({timeField});
    settings.message(localFileId, {2, 1});
    Bytes early = fileOfRecords(1000, 1010), late = fileOfRecords(2000, 2020);
    SourceFindings found;
    Prepared done = preparedFrom(joined(late, joined(settings.file(12), early)), found);
    EXPECT_EQ(found.parts, 3u);
    EXPECT_EQ(done.records(253).size(), 30u);
    EXPECT_EQ(done.records(253).front(), 1000);
    EXPECT_EQ(done.values(0, 0), std::vector<int64_t>{4});
    EXPECT_EQ(done.values(34, 1), std::vector<int64_t>{2}) << "sessions of the one activity";
}

TEST(FitParts, WithoutARecordNothingIsRead)
{
    Bytes start = fileOfRecords(1000, 1100);
    start.resize(60);
    Bytes text = {'n', 'o', ' ', 'F', 'I', 'T'};
    SourceFindings found;
    FitImage image;
    EXPECT_EQ(takeFitParts(image, std::move(start), found), fitWrongCrc);
    EXPECT_EQ(takeFitParts(image, std::move(text), found), fitNotSupported);
}

} // namespace torvane
