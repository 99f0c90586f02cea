// The curves that a simulation hands to the graph window: named series, one row of values for each point.
// Says what is to be plotted, nothing of pixels and scales (plot).
#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace torvane {

struct GraphSeries {
    int width = 640; // pixels of a fresh window
    int height = 480;
    int graphKind = 0; // 0 to 8, see checkGraphSeries
    std::vector<std::string> seriesNames;
    std::vector<int> scaleGroup; // for each series; series with a common bit share one vertical scale
    std::vector<double> values;  // one row for each point, series within the row
    // In place of values: what is told of so many points, anew whenever it is asked for. Keeps the owner
    // of what it is told from.
    std::function<double(int point, int series)> told;
    int toldPoints = 0;
    int alongs = 1; // of a graph with two curves to choose: the first so many series can lie along the X axis
    std::vector<double> latitude, longitude; // of each point, degrees, for a map beside; empty: there is none

    // What only the kinds 0 and 4 to 8 show; no simulation fills these.
    std::vector<std::string> pointLabels;
    std::vector<std::string> pointTags;    // beside each mark; empty: none
    std::vector<std::string> secondLabels; // of the second search list
    std::vector<std::string> vectorNames;
    std::vector<double> vectorValues; // a row of as many values as there are series for each vector
    int vectorStyle = 0;              // 0 line with a head at its far end, 1 arrow on the line

    int seriesCount() const
    {
        return static_cast<int>(seriesNames.size());
    }
    int pointCount() const
    {
        if (told)
            return toldPoints;
        return seriesNames.empty() ? 0 : static_cast<int>(values.size() / seriesNames.size());
    }
    double value(int point, int series) const
    {
        if (told)
            return told(point, series);
        return values[static_cast<size_t>(point) * seriesNames.size() + static_cast<size_t>(series)];
    }
};

enum class GraphLayout {
    frequencyBand, // powers and resistances over the velocity
    process,       // acceleration, deceleration
    braking,       // motion and brake temperatures
    rolling,       // motion alone
    corneringBand, // radius over velocity or margin
    calibration,   // measured and predicted powers over the distance
    course,        // a course ahead over its distance
};

// Empties the record, gives it the kind, names and scale groups of a layout, and takes memory for the points expected.
void beginGraphSeries(GraphSeries& graph, GraphLayout layout, int pointsExpected);

// Appends a point: a value for each series, in their order.
void addGraphPoint(GraphSeries& graph, std::initializer_list<double> row);

// Keeps what is told so far: what it is told from may change then.
void keepValues(GraphSeries& graph);

// Whether the number of series fits the kind. 0 it does; 1 it does not, with a kind of lines, bars or marks; 2 it does
// not, with a kind of vectors; 4 there is no such kind.
int checkGraphSeries(const GraphSeries& graph);

} // namespace torvane
