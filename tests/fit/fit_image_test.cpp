// Files in and out: headers, CRC, and what becomes of files that are no FIT files or not whole.
#include "core/files.h"
#include "fit/fit_builder.h"
#include "fit/fit_image.h"

namespace torvane {

namespace {

// One definition and one message of an unknown kind.
FitBuilder smallBlock()
{
    FitBuilder builder;
    builder.define(3, 1234, {{9, 4}, {8, 2}}).message(3, {0x11223344, 0x5566});
    return builder;
}

StatusCode loadBytes(FitImage& image, const Bytes& bytes, const char* name = "a.fit")
{
    TestFolder folder;
    writeBytes(folder.path + name, bytes);
    return loadFitImage(image, folder.path + name);
}

void putSize(Bytes& file, uint32_t size)
{
    for (int i = 0; i < 4; ++i)
        file[4 + static_cast<size_t>(i)] = static_cast<uint8_t>(size >> 8 * i);
}

// The file CRC made right again after a change of its bytes.
void renewCrc(Bytes& file)
{
    file.erase(file.end() - 2, file.end());
    uint16_t crc = bitwiseCrc(file);
    file.push_back(static_cast<uint8_t>(crc));
    file.push_back(static_cast<uint8_t>(crc >> 8));
}

} // namespace

TEST(FitImage, extensions)
{
    struct Case {
        const char* path;
        int kind;
    };
    constexpr Case cases[] = {{"/a/b.fit", 1}, {"b.tcx", 2}, {"b.gpx", 3},  {"b.kml", 4},
                              {"b.FIT", 0},    {"b.Fit", 0}, {"b.fit.", 0}, {"b.old.fit", 1},
                              {"fit", 0},      {"", 0},      {"b.fit ", 0}, {"/a.fit/b", 0}};
    for (const Case& c : cases)
        EXPECT_EQ(checkFileExtension(c.path), c.kind) << c.path;
}

TEST(FitImage, readsBothForms)
{
    for (int headerSize : {12, 14}) {
        FitImage image;
        ASSERT_EQ(loadBytes(image, smallBlock().file(headerSize)), fitOk) << headerSize;
        EXPECT_EQ(image.data, smallBlock().data);
        EXPECT_EQ(image.dataSize, 19);
        EXPECT_EQ(image.protocolVersion, 0x10);
        EXPECT_EQ(image.profileVersion, 0x0123);
        EXPECT_EQ(image.headerBytes[0], headerSize);
        EXPECT_EQ(image.headerBytes[12] != 0 || image.headerBytes[13] != 0, headerSize == 14);
    }
}

TEST(FitImage, refusals)
{
    const Bytes good = smallBlock().file(14);
    struct Case {
        const char* name;
        Bytes bytes;
        StatusCode code;
    };
    auto changed = [&](auto change) {
        Bytes bytes = good;
        change(bytes);
        return bytes;
    };
    const Case cases[] = {
        {"empty", {}, fitNotSupported},
        {"shorter than a header", Bytes(good.begin(), good.begin() + 9), fitNotSupported},
        {"no signature", changed([](Bytes& b) { b[9] = 'f'; }), fitNotSupported},
        {"header alone", Bytes(good.begin(), good.begin() + 14), fitWrongCrc},
        {"a byte changed", changed([](Bytes& b) { b[20] ^= 0x10; }), fitWrongCrc},
        {"stored CRC 0", changed([](Bytes& b) { b[b.size() - 1] = b[b.size() - 2] = 0; }), fitWrongCrc},
        {"size claims more", changed([](Bytes& b) { putSize(b, 20); }), fitWrongCrc},
        {"size claims 2 GiB less one", changed([](Bytes& b) { putSize(b, 0x7FFFFFFF); }), fitWrongCrc},
        {"size claims 4 GiB less one", changed([](Bytes& b) { putSize(b, 0xFFFFFFFF); }), fitWrongCrc},
        {"header size 13", changed([](Bytes& b) {
             b[0] = 13;
             renewCrc(b);
         }),
         fitWrongCrc},
        {"header size 255", changed([](Bytes& b) {
             b[0] = 255;
             renewCrc(b);
         }),
         fitWrongCrc},
        {"header CRC wrong, file CRC right", changed([](Bytes& b) {
             b[12] ^= 1;
             renewCrc(b);
         }),
         fitOk},
        {"bytes behind the end", changed([](Bytes& b) { b.push_back(0); }), fitOk},
    };
    for (const Case& c : cases) {
        FitImage image;
        EXPECT_EQ(loadBytes(image, c.bytes), c.code) << c.name;
        EXPECT_EQ(image.data.empty(), c.code != fitOk) << c.name;
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

TEST(FitImage, cutAtAnyByteItIsRefused)
{
    const Bytes whole = smallBlock().file(14);
    for (size_t length = 0; length < whole.size(); ++length) {
        FitImage image;
        StatusCode code = loadBytes(image, Bytes(whole.begin(), whole.begin() + static_cast<int>(length)));
        EXPECT_EQ(code, length < 12 ? fitNotSupported : fitWrongCrc) << length;
    }
}

TEST(FitImage, headersOfRewrittenFiles)
{
    struct Case {
        int sourceSize, form, expectedSize;
    };
    for (Case c : {Case{12, formLegacy, 12},
                   {12, formModern, 14},
                   {12, formOfSource, 12},
                   {14, formLegacy, 12},
                   {14, formModern, 14},
                   {14, formOfSource, 14}}) {
        FitImage source;
        ASSERT_EQ(loadBytes(source, smallBlock().file(c.sourceSize)), fitOk);
        FitImage destination;
        destination.data = source.data;
        destination.dataSize = source.dataSize;
        EXPECT_EQ(buildFitHeader(destination, source, c.form), fitOk);
        destination.fileCrc = fitCrc(destination);

        TestFolder folder;
        ASSERT_EQ(writeFitFile(destination, folder.path + "out.fit"), 0);
        EXPECT_EQ(bytesOf(folder.path + "out.fit"), smallBlock().file(c.expectedSize)) << c.sourceSize << " " << c.form;
    }
    EXPECT_EQ(headerForm(0, 1), formOfSource);
    EXPECT_EQ(headerForm(1, 0), formLegacy);
    EXPECT_EQ(headerForm(1, 1), formModern);
}

TEST(FitImage, failedWriteIsTold)
{
    TestFolder folder;
    EXPECT_EQ(writeFitFile(FitImage(), folder.path + "none/out.fit"), 1);
}

} // namespace torvane
