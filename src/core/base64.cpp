#include "core/base64.h"

#include <array>

namespace torvane {

namespace {

constexpr uint8_t none = 64;

constexpr std::array<uint8_t, 256> valuesOfCharacters()
{
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<uint8_t, 256> values = {};
    values.fill(none);
    for (size_t i = 0; i < alphabet.size(); ++i)
        values[static_cast<uint8_t>(alphabet[i])] = static_cast<uint8_t>(i);
    return values;
}

constexpr std::array<uint8_t, 256> values = valuesOfCharacters();

} // namespace

// Three bytes in four characters; at the end one in two, or two in three.
std::optional<std::vector<uint8_t>> base64Bytes(std::string_view text)
{
    for (int padding = 0; padding < 2 && text.ends_with('='); ++padding)
        text.remove_suffix(1);
    if (text.size() % 4 == 1)
        return {};
    std::vector<uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    uint32_t bits = 0;
    int count = 0; // of the bits that wait
    for (char c : text) {
        uint8_t value = values[static_cast<uint8_t>(c)];
        if (value == none)
            return {};
        bits = bits << 6 | value;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<uint8_t>(bits >> count));
        }
    }
    return bytes;
}

} // namespace torvane
