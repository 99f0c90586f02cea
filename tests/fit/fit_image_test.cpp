// Files in and out: headers, CRC, and what becomes of files that are no FIT files or not whole.
#include "core/files.h"
#include "fit/fit_builder.h"
#include "fit/fit_image.h"

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

// The file CRC made right again after a change of its bytes.
void renewCrc(Bytes& file)
{
    file.resize(file.size() - 2);
    uint16_t crc = bitwiseCrc(file);
    file.insert(file.end(), {static_cast<uint8_t>(crc), static_cast<uint8_t>(crc >> 8)});
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
    const Bytes good = smallBlock().file(14);
    struct Case {
        const char* name;
        Bytes bytes;
        StatusCode code;
    };
    auto changed = [&](auto change, bool renewed = false) {
        Bytes bytes = good;
        change(bytes);
        if (renewed)
            renewCrc(bytes);
        return bytes;
    };
    const Case cases[] = {
        {"no signature", changed([](Bytes& b) { b[9] = 'f'; }), fitNotSupported},
        {"a byte changed", changed([](Bytes& b) { b[20] ^= 0x10; }), fitWrongCrc},
        {"size claims more", changed([](Bytes& b) { b[4] += 2; }), fitWrongCrc},
        {"size claims 2 GiB", changed([](Bytes& b) { b[7] = 0x7F; }), fitWrongCrc},
        {"size claims 4 GiB", changed([](Bytes& b) { b[7] = 0xFF; }), fitWrongCrc},
        {"header size 13", changed([](Bytes& b) { b[0] = 13; }, true), fitWrongCrc},
        {"header size 255", changed([](Bytes& b) { b[0] = 255; }, true), fitWrongCrc},
        {"header CRC wrong, file CRC right", changed([](Bytes& b) { b[12] ^= 1; }, true), fitOk},
        {"bytes behind the end", changed([](Bytes& b) { b.push_back(0); }), fitOk},
    };
    for (const Case& c : cases) {
        FitImage image;
        EXPECT_EQ(loadBytes(image, c.bytes), c.code) << c.name;
        EXPECT_EQ(image.data.empty(), c.code != fitOk) << c.name;
    }
    for (size_t length = 0; length < good.size(); ++length) { // cut at any byte
        FitImage image;
        StatusCode code = loadBytes(image, Bytes(good.begin(), good.begin() + static_cast<int>(length)));
        EXPECT_EQ(code, length < 12 ? fitNotSupported : fitWrongCrc) << length;
    }
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
