#include "page/page_texts.h"

#include "core/text.h"
#include "report/fit_report.h"
#include "report/time_text.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace torvane {

std::string timeText(double seconds)
{
    std::string text = hms(wholeSeconds(std::round(seconds)));
    text.pop_back(); // its "h"
    return text;
}

std::string changeText(double seconds)
{
    auto whole = static_cast<int>(std::lround(std::fabs(seconds)));
    const char* sign = whole == 0 ? "" : seconds < 0 ? "-" : "+";
    return formatText("%s%d:%02d min", sign, whole / 60, whole % 60);
}

std::string nameWithoutEnding(std::string_view path)
{
    std::string name = shownFileName(path);
    if (name.ends_with(".gz"))
        name.resize(name.size() - 3);
    size_t ending = name.rfind('.');
    return name.substr(0, ending == 0 ? std::string::npos : ending);
}

std::string dateText(uint32_t seconds)
{
    std::string text = formatDateTime(seconds) + " UTC";
    std::ranges::replace(text, ',', ' ');
    return text;
}

std::string_view shownUnit(std::string_view unit)
{
    constexpr std::pair<std::string_view, std::string_view> written[] = {
        {"Cel", "\u00B0C"}, {"mpss", "m/s\u00B2"}, {"sec", "s"}};
    auto found = std::ranges::find(written, unit, &std::pair<std::string_view, std::string_view>::first);
    return found == std::end(written) ? unit : found->second;
}

std::string riderText(const Model& model)
{
    return formatText("Rider %.4g kg, bicycle %.4g kg, %.4g kg in all.", model.state.humanWeight,
                      model.state.bikeWeight, model.state.totalWeight);
}

} // namespace torvane
