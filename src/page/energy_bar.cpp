#include "page/energy_bar.h"

#include "core/text.h"
#include "plot/palette.h"
#include "plot/text_width.h"

#include <cmath>

namespace torvane {

namespace {

constexpr int barWidth = 720, barHeight = 84, margin = 8, barTop = 8, barBottom = 48;
constexpr int keyTop = 60, keySize = 10, textTop = 57, textHeight = 15;
constexpr double worthSeeing = 0.5; // kJ

int widthOf(const std::string& text)
{
    return static_cast<int>(std::ceil(textWidth(text) * textHeight * emOfHeight));
}

// Each part as long as it is large; below stand the names.
Picture barOf(const std::vector<EnergyPart>& parts, double sum)
{
    Picture picture{barWidth, barHeight, {}};
    double left = margin;
    int key = margin;
    for (size_t i = 0; i < parts.size(); ++i) {
        double right = left + parts[i].kiloJoule / sum * (barWidth - 2 * margin);
        Colour colour = curveColour(i).light;
        picture.items.push_back(PictureBox{static_cast<int>(std::lround(left)), barTop,
                                           static_cast<int>(std::lround(right)), barBottom, colour});
        std::string text = formatText("%s %.0f %%", parts[i].name, parts[i].kiloJoule / sum * 100);
        int wide = widthOf(text);
        picture.items.push_back(PictureBox{key, keyTop, key + keySize, keyTop + keySize, colour});
        picture.items.push_back(
            PictureText{{key + keySize + 4, textTop}, std::move(text), textHeight, inkColour.light, false});
        key += wide + keySize + 18;
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
    if (!spent.empty())
        page.picture("Energy spent", barOf(spent, sum), told);
    page.table(table);
}

} // namespace torvane
