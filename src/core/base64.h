// Bytes as text of 64 characters, as JSON carries them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace torvane {

// The bytes that a text in the usual alphabet (A-Z, a-z, 0-9, + and /) stands for, with "=" at its end or without; none
// where it is no such text.
std::optional<std::vector<uint8_t>> base64Bytes(std::string_view text);

} // namespace torvane
