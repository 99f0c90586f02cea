// Pages: what comes from outside stays text, the data are what a browser reads, and thinning loses no peak.
#include "core/text.h"
#include "page/html.h"
#include "page/page.h"
#include "page/power_section.h"
#include "page/thinning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace torvane {

namespace {

size_t countOf(const std::string& text, const std::string& part)
{
    size_t count = 0;
    for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST(Page, WhateverIsPutIntoItStaysText)
{
    std::string hostile = "\"'><img src=x onerror=alert(1)></script><script>alert(2)</script>\x1b\xff&amp;";
    HtmlPage page(hostile, hostile);
    page.section(hostile);
    page.paragraph(hostile);
    page.figures({{hostile, hostile}});
    page.notes({hostile});
    page.table({hostile, {hostile, hostile}, {{hostile, hostile}}});
    page.add({"x", hostile, hostile, 0, {0, 1}});
    page.chart({.title = hostile, .x = "x", .series = {"x"}});
    page.add({"y", hostile, hostile, 0, {1, 1}});
    page.map({hostile, {45, 46}, {8, 9}, {"y"}});
    page.picture(hostile, {10, 10, {}}, hostile, {hostile});
    std::string html = page.html();
    EXPECT_EQ(countOf(html, "<img"), 0u);
    EXPECT_EQ(countOf(html, "<script"), 1u);
    EXPECT_EQ(countOf(html, "onerror="), countOf(html, "&gt;&lt;img src=x onerror=alert(1)&gt;&lt;/script&gt;"));
    EXPECT_GE(countOf(html, "onerror="), 20u);
    EXPECT_EQ(html.find('\x1b'), html.npos);
    EXPECT_EQ(html.find('\xff'), html.npos);
}

// 1, -2 and no number as a browser's DataView has them.
TEST(Page, DataAreFloatsInBase64)
{
    double values[] = {1, -2, std::numeric_limits<double>::quiet_NaN()};
    EXPECT_EQ(base64Floats(values), "AACAPwAAAMAAAMB/");
    EXPECT_EQ(base64Floats(std::span(values).first(1)), "AACAPw==");
    EXPECT_EQ(base64Floats(std::span(values).first(2)), "AACAPwAAAMA=");
}

TEST(Page, ThinningKeepsEveryPeak)
{
    std::vector<double> wave(100'000), spikes(wave.size(), std::numeric_limits<double>::quiet_NaN());
    for (size_t i = 0; i < wave.size(); ++i)
        wave[i] = std::sin(static_cast<double>(i));
    for (size_t at : {5u, 50'001u, 99'998u})
        spikes[at] = static_cast<double>(at);
    const std::vector<double>* series[] = {&wave, &spikes};
    std::vector<size_t> places = thinnedPoints(wave.size(), series);
    EXPECT_LE(places.size(), mostPagePoints);
    EXPECT_TRUE(std::ranges::is_sorted(places));
    EXPECT_EQ(std::ranges::adjacent_find(places), places.end());
    for (size_t at : {size_t{0}, size_t{5}, size_t{50'001}, size_t{99'998}, wave.size() - 1})
        EXPECT_TRUE(std::ranges::binary_search(places, at)) << at;
    EXPECT_EQ(std::ranges::max(valuesAt(wave, places)), std::ranges::max(wave));
    EXPECT_EQ(thinnedPoints(300, series).size(), 300u);
}

// 4000 steps of which the last ten are without power: no row of the table is empty, and no column. The rows rise.
TEST(Page, BestMeansAreOverDurationsThatTheRowsHave)
{
    RideAnswer answer;
    answer.power[predictedFigure] = PowerFigures();
    auto rowsOf = [](uint32_t step) {
        std::vector<RiddenRow> rows(4000);
        for (uint32_t i = 0; i < rows.size(); ++i) {
            rows[i].timestamp = 1000 + step * (i + 1);
            rows[i].seconds = step;
            if (i < 3990)
                rows[i].power[predictedFigure] = 200;
        }
        return rows;
    };
    auto pageOf = [&](const std::vector<RiddenRow>& rows) {
        HtmlPage page("Ride", "");
        addPowerSection(page, Model{}, rows, answer);
        return page.html();
    };
    for (uint32_t step : {1u, 30u}) {
        std::string html = pageOf(rowsOf(step));
        size_t last = 0;
        for (const char* time : {"00:00:01", "00:00:30", "00:01:00", "00:20:00", "01:00:00", "01:06:30", "02:00:00",
                                 "11:00:00", "12:00:00", "24:00:00", "33:15:00"}) {
            size_t at = html.find(formatText("<th scope=\"row\">%s</th><td class=\"n\">200</td></tr>", time));
            bool shorter = std::string(time) <= "01:06:30", own = std::string(time) == "01:06:30";
            EXPECT_EQ(at != html.npos && at > last, step == 1 ? shorter : !own) << step << time;
            last = at == html.npos ? last : at;
        }
        EXPECT_EQ(html.find("<td>-</td>"), html.npos);
        EXPECT_EQ(html.find("Measured W"), html.npos);
        EXPECT_EQ(html.find("<p>-: "), html.npos);
    }
    // A meter that fails has its own longest time; the picture's axis is that of the script.
    std::vector<RiddenRow> rows = rowsOf(1);
    for (RiddenRow& row : std::span(rows).first(2000))
        row.power[measuredFigure] = 100;
    std::string html = pageOf(rows);
    for (const char* row : {"00:33:20</th><td class=\"n\">100</td><td class=\"n\">200<", "<p>-: ", ">20 min</text>"})
        EXPECT_NE(html.find(row), html.npos) << row;
}

} // namespace

} // namespace torvane
