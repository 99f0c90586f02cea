// One JSON object, read member by member.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvane {

// The members of a JSON object in their order, each value as it stands in the text, blanks around it taken off; none
// where the text is not one whole object. What a value holds is looked at as far as its end has to be found.
using JsonMembers = std::vector<std::pair<std::string, std::string_view>>;
std::optional<JsonMembers> readJsonObject(std::string_view text);

// The value of a key, as it stands in the text; empty where there is none.
std::string_view jsonMember(const JsonMembers& members, std::string_view key);

// The text of a JSON string, as UTF-8; none where the value is no sound string.
std::optional<std::string> jsonText(std::string_view value);

} // namespace torvane
