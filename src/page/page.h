// A page: one HTML file that needs nothing else. What is put into it is text, and stays that whatever stands in it; the
// one script is the same in every page, and the page lets no other one run and fetches nothing.
#pragma once

#include "plot/picture.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvane {

// Values along the points of a chart, all of one chart equally many; what is no number is missing.
struct PageSeries {
    std::string id;    // "altitude", unique within the page
    std::string label; // "Altitude"
    std::string unit = {};
    int decimals = 0;
    std::vector<double> values = {};
    bool isTime = false; // s, shown as 1:02:03
};

enum class ChartKind { line, area, bars, scatter, stack };

struct PageChart {
    std::string title;
    ChartKind kind = ChartKind::line;
    std::string x;                                      // id of a series
    std::vector<std::string> series;                    // ids; without values, they are left out
    std::vector<std::string> shown = {};                // of them, at first; empty: as many as are readable
    std::vector<std::pair<double, double>> shades = {}; // stretches of x
    bool logarithmic = false;                           // x, durations in s
    bool fromZero = false;
    bool diagonal = false;                  // of a scatter: where both are equal
    std::pair<double, double> fit = {0, 0}; // of a scatter: slope and intercept; 0, 0: none
    std::string cursor = {};                // charts with the same one share it; empty: those of one x
};

struct PageMap {
    std::string title;
    std::vector<double> latitude, longitude; // degrees
    std::vector<std::string> series;         // ids of what colours it, the first one at first
};

struct PageTable {
    std::string title;
    std::vector<std::string> heads;
    std::vector<std::vector<std::string>>
        rows; // the first cell is the row's head; columns of figures stand to the right
};

class HtmlPage {
public:
    // A line under the title may be empty.
    HtmlPage(std::string_view title, std::string_view lead);

    void section(std::string_view title);
    void paragraph(std::string_view text);
    // Large figures: what, and how much with its unit.
    void figures(const std::vector<std::pair<std::string, std::string>>& figures);
    // Left out without rows.
    void table(const PageTable& table);
    // Left out where there are none.
    void notes(const std::vector<std::string>& notes);
    // A picture that stays as it is; below it the names of its colours, in their order; an empty
    // name is left out.
    void picture(std::string_view title, const Picture& picture, std::string_view told,
                 const std::vector<std::string>& keys);

    // Before the charts that draw it; false, and nothing kept, where no value is a number.
    bool add(PageSeries series);
    bool has(std::string_view id) const;
    // Left out where none of its series is there.
    void chart(const PageChart& chart);
    void map(const PageMap& map);
    // Charts between these two stand side by side where there is room.
    void beginCharts();
    void endCharts();

    std::string html() const;

private:
    const PageSeries* find(std::string_view id) const;
    std::vector<std::string> present(const std::vector<std::string>& ids) const;
    void figure(std::string_view kind, const std::string& attributes, std::string_view title, const Picture& picture);

    std::string title, lead, body;
    bool inSection = false;
    int figureCount = 0;
    std::vector<PageSeries> series = {};
};

} // namespace torvane
