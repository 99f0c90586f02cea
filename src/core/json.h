// One JSON object, written as it grows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace torvane {

// A quoted JSON string. Bytes that are no UTF-8 become the replacement character.
std::string jsonString(std::string_view text);
// Twelve digits, in which the mathematics libraries of all platforms agree; null for what JSON cannot hold.
std::string jsonNumber(double value);
// To the last digit; of a finite number.
std::string jsonExact(double value);

// Members of an object or elements of an array, with the commas between them.
class JsonList {
public:
    explicit JsonList(char opening) : text(1, opening) {}
    void element(std::string_view json);
    void member(std::string_view key, std::string_view json);
    std::string close();

private:
    std::string text;
    bool empty = true;
};

} // namespace torvane
