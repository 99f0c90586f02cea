// A picture put together from places that were worked out by hand, in pixels, and compared item by item.
#pragma once

#include "plot/svg.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace torvane {

struct ByHand {
    Picture picture;

    int of(double pixels) const
    {
        return static_cast<int>(std::lround(pixels * picture.perPixel));
    }
    void line(const std::vector<std::pair<double, double>>& places, double width, Colour colour)
    {
        PictureLine line{{}, of(width), colour};
        for (auto [x, y] : places)
            line.points.push_back({of(x), of(y)});
        picture.items.push_back(std::move(line));
    }
    void box(double left, double top, double right, double bottom, Colour fill)
    {
        picture.items.push_back(PictureBox{of(left), of(top), of(right), of(bottom), fill});
    }
    void text(double left, double top, const std::string& words, double height, Colour colour, bool emphasized = false)
    {
        picture.items.push_back(PictureText{{of(left), of(top)}, words, of(height), colour, emphasized});
    }
    void expect(const Picture& found) const
    {
        EXPECT_EQ(svgText(found), svgText(picture));
    }
};

} // namespace torvane
