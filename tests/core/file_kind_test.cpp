// What files are taken for, by what is in them.
#include "core/file_kind.h"

#include "core/parameter_file.h"
#include "fit/fit_builder.h"

#include <gtest/gtest.h>

#include <string>

namespace torvane {
namespace {

Bytes text(std::string_view characters)
{
    return {characters.begin(), characters.end()};
}

Bytes ofSize(size_t size, std::initializer_list<uint8_t> front = {})
{
    Bytes bytes(front);
    bytes.resize(size);
    return bytes;
}

TEST(FileKind, isToldByContent)
{
    const std::tuple<const char*, Bytes, FileKind> cases[] = {
        {"ride.csv", FitBuilder().file(), FileKind::fit},
        {"cut.fit", {14, 0x10, 0, 0, 0, 0, 0, 0, '.', 'F', 'I', 'T'}, FileKind::fit},
        {"ride.fit", text("no ride"), FileKind::unknown},
        {"rider", ofSize(876, {2}), FileKind::profile},
        {"rider.pro", ofSize(876, {3}), FileKind::unknown},
        {"rider.pro", ofSize(877, {2}), FileKind::unknown},
        {"Torvane.par", ofSize(2416, {0, 0, 0, 0, 0, 0x40, 0x66, 0x40}), FileKind::parameters},
        {"Torvane.par", ofSize(2417), FileKind::unknown},
        {"notes", text(std::string(2416, 'n')), FileKind::unknown},
        {"picture", text("<svg xmlns=\"\"/>"), FileKind::svg},
        {"picture.csv", text("\xEF\xBB\xBF<?xml version='1.0'?>\n<!DOCTYPE svg>\n<!-- <x> --> <svg>"), FileKind::svg},
        {"page.svg", text("<html><svg></svg></html>"), FileKind::html},
        {"page.svg", text("<?xml version='1.0'"), FileKind::unknown},
        {"table.CSV", text("a, b\r\n\xE9, 2\n"), FileKind::csv},
        {"table.csv", Bytes{'a', 0, 'b'}, FileKind::unknown},
        {"table.csv", Bytes{'a', 0x1B, 'b'}, FileKind::unknown},
        {"table.fit", text("a, b\n"), FileKind::unknown},
        {"anything", {}, FileKind::empty},
    };
    TestFolder folder;
    for (const auto& [name, bytes, kind] : cases) {
        writeBytes(folder.path + name, bytes);
        EXPECT_EQ(kindName(fileKind(folder.path + name)), kindName(kind)) << name << " of " << bytes.size();
    }
    std::filesystem::create_symlink("gone", folder.path + "loose");
    EXPECT_EQ(fileKind(folder.path + "loose"), FileKind::nothing);
    EXPECT_EQ(fileKind(folder.path), FileKind::folder);
}

} // namespace
} // namespace torvane
