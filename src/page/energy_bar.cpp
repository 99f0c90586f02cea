#include "page/energy_bar.h"

#include "core/text.h"
#include "plot/palette.h"

#include <cmath>

namespace torvane {

namespace {

constexpr int barWidth = 720, barHeight = 40;
constexpr double worthSeeing = 0.5; // kJ

// Each part as long as it is large.
Picture barOf(const std::vector<EnergyPart>& parts, double sum)
{
    Picture picture{barWidth, barHeight, {}};
    double left = 0;
    for (size_t i = 0; i < parts.size(); ++i) {
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
    std::vector<EnergyPart> spent;
    PageTable table = {title, {"For", "kJ"}, {}};
    std::string told = "Share of the energy spent:";
    double sum = 0;
    for (const EnergyPart& part : parts) {
        table.rows.push_back({part.name, formatText("%.0f", std::round(part.kiloJoule) + 0.0)});
        if (part.kiloJoule < worthSeeing)
            continue;
        spent.push_back(part);
        sum += part.kiloJoule;
        appendFormat(told, " %s %.0f kJ", part.name, part.kiloJoule);
    }
    std::vector<std::string> keys;
    for (const EnergyPart& part : spent)
        keys.push_back(formatText("%s %.0f %%", part.name, part.kiloJoule / sum * 100));
    if (!spent.empty())
        page.picture("Energy spent", barOf(spent, sum), told, keys);
    page.table(table);
}

} // namespace torvane
