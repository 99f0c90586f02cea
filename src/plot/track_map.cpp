#include "plot/track_map.h"

#include "core/text.h"
#include "core/units.h"
#include "plot/graph.h"
#include "plot/palette.h"
#include "plot/text_width.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace torvane {

namespace {

constexpr int fine = 8; // coordinates in a pixel

// From low to high, from blue to orange, which those who confuse red and green tell apart as well. On either ground
// their contrast is 3 to 1.
constexpr Colour ramp[] = {rgb(0x2E7BD6), rgb(0x5B6FDB), rgb(0x7F62DB), rgb(0xA352CC),
                           rgb(0xC244A6), rgb(0xD43F77), rgb(0xDB4A45), rgb(0xC96400)};
constexpr Colour noValue = rgb(0x808790);

// Longitudes in one piece, where a track crosses the 180th.
double nearTo(double middle, double longitude)
{
    return longitude - 360 * std::round((longitude - middle) / 360);
}

struct Span {
    double least = INFINITY, most = -INFINITY;

    void take(double value)
    {
        least = std::min(least, value);
        most = std::max(most, value);
    }
    double middle() const
    {
        return (least + most) / 2;
    }
    double range() const
    {
        return most - least;
    }
};

bool isPlace(const TrackWay& way, size_t i)
{
    return std::isfinite(way.latitude[i]) && std::isfinite(way.longitude[i]);
}

double letterSize(const ChartSize& size)
{
    return std::clamp(10 + 0.012 * (std::min(size.width, size.height) - 240), 9.0, 30.0);
}

// Which colours the values have.
struct Ramp {
    double least = 0, most = 0;

    Colour of(double value) const
    {
        if (!plottable(value))
            return noValue;
        double share = most > least ? (value - least) / (most - least) : 0;
        return ramp[std::clamp(static_cast<int>(share * std::size(ramp)), 0, static_cast<int>(std::size(ramp)) - 1)];
    }
};

Ramp rampOf(std::span<const double> values)
{
    std::vector<double> known;
    std::ranges::copy_if(values, std::back_inserter(known), plottable);
    if (known.empty())
        return {};
    std::ranges::sort(known);
    size_t end = known.size() / 20;
    return {known[end], known[known.size() - 1 - end]};
}

struct Map {
    const TrackWay& way;
    const TrackColouring& colouring;
    const TrackScale& scale;
    const ChartSize& size;
    Picture& picture;
    Ramp colours = rampOf(colouring.values);

    double em() const
    {
        return scale.em;
    }
    bool coloured() const
    {
        return !colouring.values.empty();
    }
    Pixel place(size_t i) const
    {
        return {static_cast<int>(std::lround(scale.x(way.longitude[i]) * fine)),
                static_cast<int>(std::lround(scale.y(way.latitude[i]) * fine))};
    }
    Colour colourAt(size_t i) const
    {
        return i < colouring.values.size() ? colours.of(colouring.values[i]) : curveColour(0).light;
    }
};

Pixel pixel(double x, double y)
{
    return {static_cast<int>(std::lround(x * fine)), static_cast<int>(std::lround(y * fine))};
}

void addText(const Map& map, double x, double middle, std::string text)
{
    double height = map.em() / emOfHeight;
    map.picture.items.push_back(PictureText{pixel(x, middle - height / 2), std::move(text),
                                            static_cast<int>(std::lround(height * fine)), inkColour.light, false});
}

void addLine(const Map& map, std::vector<Pixel> points, double width, Colour colour)
{
    if (points.size() > 1)
        map.picture.items.push_back(
            PictureLine{std::move(points), static_cast<int>(std::lround(width * fine)), colour});
}

void addBox(const Map& map, double left, double top, double right, double bottom, Colour colour)
{
    Pixel from = pixel(left, top), to = pixel(right, bottom);
    map.picture.items.push_back(PictureBox{from.x, from.y, to.x, to.y, colour});
}

// The way in pieces of one colour; places within the same pixel are drawn once.
void drawWay(const Map& map)
{
    std::vector<Pixel> piece;
    double width = std::max(2.0, 0.22 * map.em());
    Colour colour = 0;
    auto finish = [&] { addLine(map, std::exchange(piece, {}), width, colour); };
    for (size_t i = 0; i < map.way.latitude.size(); ++i) {
        if (!isPlace(map.way, i)) {
            finish();
            continue;
        }
        Pixel at = map.place(i);
        if (!piece.empty() && std::abs(at.x - piece.back().x) < fine && std::abs(at.y - piece.back().y) < fine)
            continue;
        if (Colour now = map.colourAt(i); piece.empty() || now != colour) {
            std::vector<Pixel> next;
            if (!piece.empty()) {
                piece.push_back(at);
                next.push_back(at);
                finish();
            }
            colour = now;
            piece = std::move(next);
        }
        if (piece.empty() || piece.back() != at)
            piece.push_back(at);
    }
    finish();
}

void drawEnd(const Map& map, Pixel at, const char* name, const ThemeColour& colour)
{
    double half = 0.4 * map.em(), x = static_cast<double>(at.x) / fine, y = static_cast<double>(at.y) / fine;
    addBox(map, x - half, y - half, x + half, y + half, inkColour.light);
    addBox(map, x - half + 1, y - half + 1, x + half - 1, y + half - 1, colour.light);
    double wide = textWidth(name) * map.em();
    bool roomAtRight = x + 0.8 * map.em() + wide < map.size.width;
    addText(map, roomAtRight ? x + 0.8 * map.em() : x - 0.8 * map.em() - wide, y, name);
}

// Ends that stand on each other are named by one text.
void drawEnds(const Map& map)
{
    size_t first = 0, last = map.way.latitude.size() - 1;
    while (!isPlace(map.way, first))
        ++first;
    while (!isPlace(map.way, last))
        --last;
    Pixel start = map.place(first), end = map.place(last);
    bool together = std::hypot(start.x - end.x, start.y - end.y) < 4 * map.em() * fine;
    drawEnd(map, end, together ? "start and end" : "end", curveColour(4));
    if (together)
        drawEnd(map, start, "", curveColour(2));
    else
        drawEnd(map, start, "start", curveColour(2));
}

// In the strip below the map: from the left a bar of a round length, from the right the arrow.
double stripMiddle(const Map& map)
{
    return map.size.height - 1.1 * map.em();
}

void drawBar(const Map& map)
{
    double room = 0.3 * map.size.width / map.scale.pixelsPerMetre; // m
    double length = std::pow(10.0, std::floor(std::log10(room)));
    for (double times : {5.0, 2.0})
        if (times * length <= room) {
            length *= times;
            break;
        }
    double left = 0.6 * map.em(), y = stripMiddle(map), right = left + length * map.scale.pixelsPerMetre;
    double tick = 0.35 * map.em();
    addLine(map, {pixel(left, y - tick), pixel(left, y), pixel(right, y), pixel(right, y - tick)}, 1.5,
            inkColour.light);
    addText(map, right + 0.5 * map.em(), y,
            length < 1000 ? formatText("%.4g m", length) : formatText("%.6g km", length / 1000));
}

void drawNorth(const Map& map)
{
    double x = map.size.width - 1.2 * map.em(), y = stripMiddle(map), up = 0.8 * map.em(), wing = 0.4 * map.em();
    addLine(map, {pixel(x, y + up), pixel(x, y - up)}, 1.5, inkColour.light);
    addLine(map, {pixel(x - wing, y - up + wing), pixel(x, y - up), pixel(x + wing, y - up + wing)}, 1.5,
            inkColour.light);
    addText(map, x - 1.6 * map.em(), y, "N");
}

// Above the map: what the colours mean.
void drawLegend(const Map& map)
{
    double y = 1.0 * map.em(), x = 0.6 * map.em(), step = 1.1 * map.em();
    auto write = [&](std::string text) {
        double wide = textWidth(text) * map.em();
        addText(map, x, y, std::move(text));
        x += wide + 0.5 * map.em();
    };
    write(std::string(map.colouring.name));
    write(formatText("%.3g", map.colours.least));
    for (Colour colour : ramp) {
        addBox(map, x, y - 0.4 * map.em(), x + step, y + 0.4 * map.em(), colour);
        x += step;
    }
    x += 0.5 * map.em();
    write(formatText("%.3g", map.colours.most));
}

} // namespace

TrackScale::TrackScale(const TrackWay& way, const ChartSize& size)
    : em(letterSize(size)), middleX(size.width / 2.0), middleY(size.height / 2.0)
{
    Span latitudes, longitudes;
    double first = NAN;
    for (size_t i = 0; i < way.latitude.size(); ++i)
        if (isPlace(way, i)) {
            first = std::isnan(first) ? way.longitude[i] : first;
            latitudes.take(way.latitude[i]);
            longitudes.take(nearTo(first, way.longitude[i]));
        }
    if (std::isnan(first))
        return;
    middleLatitude = latitudes.middle();
    middleLongitude = longitudes.middle();
    shrink = std::max(std::cos(middleLatitude * std::numbers::pi / 180), 1e-6);
    constexpr double leastShown = 50; // m: of who stood still, not the noise of the positions
    double wide = std::max(longitudes.range() * shrink * metresPerDegree, leastShown);
    double high = std::max(latitudes.range() * metresPerDegree, leastShown);
    double strip = 2.2 * em, side = 1.2 * em; // legend above, bar and arrow below
    pixelsPerMetre =
        std::max(std::min((size.width - 2 * side) / wide, (size.height - 2 * (strip + side)) / high), 1e-9);
}

double TrackScale::east(double longitude) const
{
    return (nearTo(middleLongitude, longitude) - middleLongitude) * shrink * metresPerDegree;
}

double TrackScale::north(double latitude) const
{
    return (latitude - middleLatitude) * metresPerDegree;
}

double TrackScale::x(double longitude) const
{
    return middleX + east(longitude) * pixelsPerMetre;
}

double TrackScale::y(double latitude) const
{
    return middleY - north(latitude) * pixelsPerMetre;
}

Picture drawTrackMap(const TrackWay& way, const TrackColouring& colouring, const ChartSize& size)
{
    Picture picture{size.width * fine, size.height * fine, {}, fine};
    TrackScale scale(way, size);
    if (scale.empty())
        return picture;
    Map map{way, colouring, scale, size, picture};
    drawWay(map);
    drawEnds(map);
    drawBar(map);
    drawNorth(map);
    if (map.coloured())
        drawLegend(map);
    return picture;
}

} // namespace torvane
