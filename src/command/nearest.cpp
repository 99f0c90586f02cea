#include "command/nearest.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

namespace torvane {

namespace {

constexpr size_t longestName = 64; // nothing longer was ever a slip of the finger
constexpr size_t suggested = 3;

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

// Letters to insert, remove or replace.
size_t editDistance(std::string_view a, std::string_view b)
{
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i);
        for (size_t j = 1; j <= b.size(); ++j) {
            size_t replaced = diagonal + (a[i - 1] != b[j - 1]);
            diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, replaced}));
        }
    }
    return row[b.size()];
}

bool isPartOf(const std::string& part, const std::string& whole)
{
    return part.size() >= 3 && whole.find(part) != whole.npos;
}

// Small is near; a name that contains the other counts as two letters away. None where the two are not alike.
std::optional<size_t> distanceOf(const std::string& wanted, const std::string& name)
{
    size_t distance = editDistance(wanted, name);
    if (isPartOf(wanted, name) || isPartOf(name, wanted))
        return std::min<size_t>(distance, 2);
    if (distance > std::min<size_t>(3, wanted.size() / 3))
        return std::nullopt;
    return distance;
}

} // namespace

std::vector<std::string> nearestNames(std::string_view name, const std::vector<std::string>& names)
{
    std::string wanted = lowerCase(name.substr(0, longestName));
    std::vector<std::pair<size_t, std::string>> near;
    for (const std::string& candidate : names) {
        std::optional<size_t> distance = distanceOf(wanted, lowerCase(candidate));
        if (distance && std::ranges::find(near, std::pair(*distance, candidate)) == near.end())
            near.emplace_back(*distance, candidate);
    }
    std::ranges::stable_sort(near, {}, &std::pair<size_t, std::string>::first);
    std::vector<std::string> result;
    for (size_t i = 0; i < std::min(suggested, near.size()); ++i)
        result.push_back(near[i].second);
    return result;
}

std::string suggestion(std::string_view name, const std::vector<std::string>& names)
{
    std::vector<std::string> near = nearestNames(name, names);
    std::string text;
    for (size_t i = 0; i < near.size(); ++i)
        text += (i == 0 ? "; did you mean " : i + 1 == near.size() ? " or " : ", ") + near[i];
    return near.empty() ? text : text + "?";
}

} // namespace torvane
