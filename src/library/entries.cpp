#include "torvane/entries.h"

#include <array>
#include <charconv>
#include <utility>

namespace torvane::library {

Entry::Entry(std::string entryName, std::string entryValue) : name(std::move(entryName)), value(std::move(entryValue))
{
}

Entry::Entry(std::string entryName, const char* entryValue) : name(std::move(entryName)), value(entryValue) {}

Entry::Entry(std::string entryName, double entryValue) : name(std::move(entryName))
{
    std::array<char, 32> text;
    value.assign(text.data(), std::to_chars(text.data(), text.data() + text.size(), entryValue).ptr);
}

} // namespace torvane::library
