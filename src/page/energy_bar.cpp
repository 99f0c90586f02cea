#include "page/energy_bar.h"

#include "core/text.h"
#include "plot/palette.h"

#include <cmath>

namespace torvane {

namespace {

constexpr int barWidth = 720, barHeight = 40;
constexpr double worthSeeing = 0.5; // kJ

bool isSpent(const EnergyPart& part)
{
    return part.kiloJoule >= worthSeeing;
}

// Each part as long as it is large, in the colour of its place.
Picture barOf(std::span<const EnergyPart> parts, double sum)
{
    Picture picture{barWidth, barHeight, {}};
    double left = 0;
    for (size_t i = 0; i < parts.size(); ++i) {
        if (!isSpent(parts[i]))
            continue;
        double right = left + parts[i].kiloJoule / sum * barWidth;
        picture.items.push_back(PictureBox{static_cast<int>(std::lround(left)), 0, static_cast<int>(std::lround(right)),
                                           barHeight, curveColour(i).light});
        left = right;
    }
    return picture;
}

} // namespace

void addEnergy(HtmlPage& page, const std::string& title, std::span<const EnergyPart> parts)
{
    PageTable table = {title, {"For", "kJ"}, {}};
    std::string told = "Share of the energy spent:";
    double sum = 0;
    for (const EnergyPart& part : parts) {
        table.rows.push_back({part.name, formatText("%.0f", std::round(part.kiloJoule) + 0.0)});
        sum += isSpent(part) ? part.kiloJoule : 0;
    }
    std::vector<std::string> keys;
    for (const EnergyPart& part : parts) {
        keys.push_back(isSpent(part) ? formatText("%s %.0f %%", part.name, part.kiloJoule / sum * 100) : "");
        if (isSpent(part))
            appendFormat(told, " %s %.0f kJ", part.name, part.kiloJoule);
    }
    if (sum > 0)
        page.picture("Energy spent", barOf(parts, sum), told, keys);
    page.table(table);
}

} // namespace torvane
