#include "core/json.h"
#include "core/json_reader.h"

#include <gtest/gtest.h>

#include <utility>

namespace torvane {

TEST(Json, EscapesTexts)
{
    constexpr std::pair<const char*, const char*> cases[] = {
        {"a\tb\nc\"\\/", "\"a\\tb\\nc\\\"\\\\/\""},
        {"\x01\x1F\x7F\xE2\x80\xAE", "\"\\u0001\\u001f\\u007f\\u202e\""},
        {"\xC3\xBC \xE2\x82\xAC \xF0\x9F\x9A\xB4", "\"\xC3\xBC \xE2\x82\xAC \xF0\x9F\x9A\xB4\""},
        {"\xFF", "\"\xEF\xBF\xBD\""},
        {"\xC3", "\"\xEF\xBF\xBD\""},                                 // cut short
        {"\xC0\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\""},                 // longer than it needs to be
        {"\xED\xA0\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""}, // half of a UTF-16 pair
    };
    for (const auto& [text, json] : cases)
        EXPECT_EQ(jsonString(text), json);
}

TEST(Json, ReadsTextsInAnyFormOfTheirCharacters)
{
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {R"("\u00fc \u20AC \ud83d\udeb4 \/\n")", "\xC3\xBC \xE2\x82\xAC \xF0\x9F\x9A\xB4 /\n"},
        {R"("")", ""},
        {R"(")", std::nullopt},
        {R"("a"b)", std::nullopt},
    };
    for (const auto& [json, text] : cases)
        EXPECT_EQ(jsonText(json), text) << json;
}

} // namespace torvane
