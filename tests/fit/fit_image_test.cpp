// Files in and out: headers, CRC, and what becomes of files that are no FIT files or not whole.
#include "core/files.h"
#include "fit/fit_builder.h"
#include "fit/fit_crc.h"
#include "fit/fit_image.h"

#include <tuple>
#include <utility>

namespace torvane {

namespace {

// One definition and one message of an unknown kind.
FitBuilder smallBlock()
{
    return FitBuilder().define(3, 1234, {{9, 4}, {8, 2}}).message(3, {0x11223344, 0x5566});
}

StatusCode loadBytes(FitImage& image, const Bytes& bytes, const char* name = "a.fit")
{
    TestFolder folder;
    writeBytes(folder.path + name, bytes);
    return loadFitImage(image, folder.path + name);
}

} // namespace

TEST(FitImage, extensions)
{
    constexpr std::pair<const char*, int> cases[] = {{"/a/b.fit", 1}, {"b.tcx", 2}, {"b.gpx", 3},  {"b.kml", 4},
                                                     {"b.FIT", 0},    {"b.Fit", 0}, {"b.fit.", 0}, {"b.old.fit", 1},
                                                     {"fit", 0},      {"", 0},      {"b.fit ", 0}, {"/a.fit/b", 0}};
    for (const auto& [path, kind] : cases)
        EXPECT_EQ(checkFileExtension(path), kind) << path;
}

TEST(FitImage, refusals)
{
    Bytes good = smallBlock().file(14);
    // Place and change, of the signature, the data, the size it claims, the size of the header, and the header's own
    // CRC; whether the file's CRC is made right again.
    constexpr std::tuple<size_t, uint8_t, bool, StatusCode> cases[] = {
        {9, 0x20, false, fitNotSupported}, {20, 0x10, false, fitWrongCrc}, {4, 4, false, fitWrongCrc},
        {7, 0x7F, false, fitWrongCrc},     {7, 0xFF, false, fitWrongCrc},  {0, 14 ^ 13, true, fitWrongCrc},
        {0, 14 ^ 255, true, fitWrongCrc},  {12, 1, true, fitOk},
    };
    for (auto [place, change, renewed, code] : cases) {
        Bytes bytes(good.begin(), good.end() - 2);
        bytes[place] ^= change;
        uint16_t crc = bitwiseCrc(renewed ? bytes : Bytes(good.begin(), good.end() - 2));
        bytes.insert(bytes.end(), {static_cast<uint8_t>(crc), static_cast<uint8_t>(crc >> 8), 0}); // one byte behind
        FitImage image;
        EXPECT_EQ(loadBytes(image, bytes), code) << place << ' ' << int{change};
        EXPECT_EQ(image.data.empty(), code != fitOk) << place << ' ' << int{change};
    }
    for (size_t length = 0; length < good.size(); ++length) { // cut at any byte
        FitImage image;
        StatusCode code = loadBytes(image, Bytes(good.begin(), good.begin() + static_cast<int>(length)));
        EXPECT_EQ(code, length < 12 ? fitNotSupported : fitWrongCrc) << length;
    }
}

TEST(FitImage, nothingHasACrcAsWell)
{
    Bytes bytes = smallBlock().data;
    EXPECT_EQ(fitCrc({}, bytes), bitwiseCrc(bytes));
    FitImage image;
    EXPECT_EQ(takeFitImage(image, FitBuilder().file(14)), fitOk);
}

TEST(FitImage, pathsThatCannotBeRead)
{
    TestFolder folder;
    FitImage image;
    EXPECT_EQ(loadFitImage(image, folder.path + "missing.fit"), fitCannotOpen);
    std::filesystem::create_directory(folder.path + "folder.fit");
    EXPECT_EQ(loadFitImage(image, folder.path + "folder.fit"), fitCannotOpen);
    EXPECT_EQ(loadBytes(image, smallBlock().file(), "RIDE.FIT"), fitNotSupported);
    EXPECT_EQ(readFitFile(image, folder.path + "missing.fit"), fitCannotOpen);
}

} // namespace torvane
