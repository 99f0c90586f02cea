// Answers as pages, written by the console.
#include "console_fixture.h"

#include <filesystem>

namespace torvane {

namespace {

const std::string samples = TORVANE_CHECKOUT "/samples/rides/";

TEST_F(ConsoleTest, WritesAPageOfARideWhateverItsName)
{
    std::string ride = in + "<img src=x onerror=alert(1)>.fit", page = in + "page.html";
    std::filesystem::copy_file(samples + "meter.fit", ride);
    EXPECT_EQ(call({"ride", ride, "--page", page}).code, 0);
    EXPECT_EQ(call({"ride", ride, "--page", page}).code, 0) << "over its own kind";
    Bytes bytes = bytesOf(page);
    std::string html(bytes.begin(), bytes.end());
    EXPECT_TRUE(contains(html, "<title>&lt;img src=x onerror=alert(1)&gt;</title>"));
    EXPECT_FALSE(contains(html, "<img"));
    for (const char* part : {"id=\"s-measured30\"", "id=\"s-predicted\"", "id=\"s-easting\"", "data-kind=\"stack\"",
                             "data-kind=\"bars\"", ">Laps</caption>", ">Best mean powers</caption>", "vo2max"})
        EXPECT_TRUE(contains(html, part)) << part;
    Call same = call({"--force", "ride", ride, "--page", ride});
    EXPECT_TRUE(contains(same.err, "is read by this call")) << same.err;
    EXPECT_NE(call({"ride", in + "none.fit", "--page", in + "none.html"}).code, 0);
    EXPECT_FALSE(std::filesystem::exists(in + "none.html"));
}

} // namespace

} // namespace torvane
