#include "core/base64.h"
#include "core/entry_file.h"
#include "core/shown_text.h"
#include "core/text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <tuple>

namespace torvane {

// The examples of RFC 4648, section 10.
TEST(Text, base64)
{
    constexpr std::pair<const char*, const char*> cases[] = {
        {"", ""},           {"Zg==", "f"},        {"Zg", "f"},           {"Zm8=", "fo"},       {"Zm8", "fo"},
        {"Zm9v", "foo"},    {"Zm9vYg==", "foob"}, {"Zm9vYmE=", "fooba"}, {"+/8=", "\xFB\xFF"}, {"Z", nullptr},
        {"Zm9vY", nullptr}, {"Zg===", nullptr},   {"Zm 8", nullptr},
    };
    for (const auto& [text, wanted] : cases) {
        std::optional<std::vector<uint8_t>> bytes = base64Bytes(text);
        ASSERT_EQ(bytes.has_value(), wanted != nullptr) << text;
        EXPECT_TRUE(!bytes || std::string(bytes->begin(), bytes->end()) == wanted) << text;
    }
}

TEST(Text, showsNothingThatSteersATerminal)
{
    constexpr std::pair<const char*, const char*> cases[] = {
        {"Übergröße 自転車 دراجة 🚲.fit", "Übergröße 自転車 دراجة 🚲.fit"},
        {"\x1B[2J\x1B]0;title\x07", "?[2J?]0;title?"},
        {"a\r\n\tb\x7F", "a???b?"},
        {"\xC2\x9Bm", "?m"},                 // the start of an escape sequence in one character
        {"\xE2\x80\xAEtif.exe", "?tif.exe"}, // written from right to left
        {"\xE2\x81\xA6\xD8\x9C\xE2\x80\xA8", "???"},
        {"\x9B\xE4\xC3", "???"}, // no UTF-8
    };
    for (auto [text, shown] : cases)
        EXPECT_EQ(shownText(text), shown);
}

// Values of every kind: any bits, usual sizes, halves of the last decimal and their neighbours.
double anyNumber(std::mt19937_64& random)
{
    uint64_t bits = random();
    const double scales[] = {1e-4, 1e-2, 1, 10, 1e3, 1e5, 1e9, 1e15, 1e16, 1e17};
    double usual = (static_cast<double>(bits >> 11) * 0x1p-52 - 1) * scales[bits % std::size(scales)];
    double tie = (static_cast<double>(bits >> 44) + 0.5) / static_cast<double>(16 << bits % 12);
    double near = std::nextafter(std::round(usual * 20) / 20, bits % 2 != 0 ? HUGE_VAL : -HUGE_VAL);
    const double kinds[] = {std::bit_cast<double>(bits), tie, near, usual};
    return kinds[random() % 4];
}

TEST(Text, fixedNumbersAndIntegersReadAsFormatted)
{
    std::mt19937_64 random(7);
    std::vector<double> values = {0.0, -0.0, 0.5, 1.5, 2.5, -0.04, 0.0625, 1e300, -HUGE_VAL, 0x1p53, -0x1p53, 5e-324};
    values.insert(values.end(), {std::nextafter(0x1p53, 0.0), std::nan("")});
    for (int i = 0; i < 100000; ++i)
        values.push_back(anyNumber(random));
    std::string text;
    for (size_t i = 0; i < values.size(); ++i) {
        int width = i % 3 == 0 ? 0 : 9;
        for (int decimals = 0; decimals < 5; ++decimals) {
            text.clear();
            appendFixed(text, values[i], width, decimals);
            ASSERT_EQ(text, formatText("%*.*f", width, decimals, values[i])) << formatText("%a", values[i]);
        }
        int64_t whole = std::bit_cast<int64_t>(values[i]) >> (i % 64);
        text.clear();
        appendInteger(text, whole, width);
        ASSERT_EQ(text, formatText("%*lld", width, static_cast<long long>(whole)));
        char digits[longestInt32];
        int32_t half = i == 7 ? INT32_MIN : static_cast<int32_t>(whole);
        ASSERT_EQ(std::string(digits, writeInt32(digits, half)), std::to_string(half));
    }
}

TEST(Text, cutsPiecesBehindLinesAndBetweenCharacters)
{
    const std::tuple<std::string, size_t, size_t> cases[] = {
        {"one\ntwo", 7, 7},    {"one\ntwo\nthree", 10, 8},  {"one\ntwo", 4, 4},     {"abcdef", 4, 4},
        {"abc\xC3\xA9", 4, 3}, {"a\xF0\x9F\x9A\xB2", 4, 1}, {"\x80\x80\x80", 1, 1}, {"", 4, 0},
    }; // characters of two and four bytes; never nothing
    for (const auto& [text, limit, length] : cases)
        EXPECT_EQ(pieceLength(text, limit), length) << text;
}

TEST(EntryFile, namesTheLinesThatAreNone)
{
    EntryFile file = {.lines = {"# own", " ", "a=1", "=3", " nonsense\r"}};
    EXPECT_EQ(brokenLines(file), (std::vector<std::string>{"4: =3", "5: nonsense"}));
}

} // namespace torvane
