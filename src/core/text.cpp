#include "core/text.h"

#include "core/shown_text.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace torvane {

namespace {

void appendFormatted(std::string& text, const char* format, va_list arguments)
{
    char line[512];
    va_list again;
    va_copy(again, arguments);
    int length = vsnprintf(line, sizeof line, format, arguments);
    if (length >= static_cast<int>(sizeof line)) {
        size_t start = text.size();
        text.resize(start + static_cast<size_t>(length) + 1);
        vsnprintf(&text[start], static_cast<size_t>(length) + 1, format, again);
        text.pop_back();
    } else if (length > 0) {
        text.append(line, static_cast<size_t>(length));
    }
    va_end(again);
}

void appendRight(std::string& text, std::string_view digits, int width)
{
    if (width > static_cast<int>(digits.size()))
        text.append(static_cast<size_t>(width) - digits.size(), ' ');
    text += digits;
}

constexpr uint64_t powersOfTen[] = {1, 10, 100, 1000};
constexpr int mostFixedDecimals = 3; // 53 bits times 1000 stay below 64

// A magnitude below 2^53 times the power of ten, rounded to an integer as printf rounds: by the exact binary value, to
// even half way.
uint64_t roundedDecimals(double magnitude, uint64_t powerOfTen)
{
    constexpr int fractionBits = 52;
    constexpr uint64_t leadingOne = uint64_t{1} << fractionBits;
    uint64_t bits = std::bit_cast<uint64_t>(magnitude);
    uint64_t scaled = (bits % leadingOne + leadingOne) * powerOfTen;
    int shift = 1023 + fractionBits - static_cast<int>(bits / leadingOne); // not below 0
    if (shift == 0 || shift >= 64)
        return shift == 0 ? scaled : 0; // 0 and all that is far below half a unit
    uint64_t whole = scaled >> shift;
    uint64_t rest = scaled & ((uint64_t{1} << shift) - 1);
    uint64_t half = uint64_t{1} << (shift - 1);
    return whole + (rest > half || (rest == half && (whole & 1) != 0));
}

constexpr uint32_t eightDigits = 100'000'000;

// The eight digits of a number, each in a byte, the first in the lowest. Halves, quarters and single digits are divided
// side by side in one word: by a multiplication and a shift that are exact for numbers this small.
uint64_t digitsOf(uint32_t number)
{
    uint64_t halves = number / 10000 | uint64_t{number % 10000} << 32;
    uint64_t hundreds = halves * 5243 >> 19 & 0x7F'0000'007F;
    uint64_t quarters = hundreds | (halves - 100 * hundreds) << 16;
    uint64_t tens = quarters * 103 >> 10 & 0xF'000F'000F'000F;
    return tens | (quarters - 10 * tens) << 8;
}

} // namespace

char* writeInt32(char* to, int32_t value)
{
    static_assert(std::endian::native == std::endian::little);
    uint32_t rest = static_cast<uint32_t>(value);
    if (value < 0) {
        *to++ = '-';
        rest = 0 - rest;
    }
    int shown = 8; // of the last eight digits
    if (rest >= eightDigits) {
        to = std::to_chars(to, to + 2, rest / eightDigits).ptr;
        rest %= eightDigits;
    } else {
        shown -= std::countr_zero(digitsOf(rest) | uint64_t{1} << 56) / 8; // leading zeros go, the last digit stays
    }
    uint64_t text = (digitsOf(rest) | 0x3030303030303030) >> 8 * (8 - shown);
    std::memcpy(to, &text, sizeof text);
    return to + shown;
}

void appendInteger(std::string& text, int64_t value, int width)
{
    char digits[24];
    char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    appendRight(text, {digits, end}, width);
}

void appendFixed(std::string& text, double value, int width, int decimals)
{
    if (!(std::fabs(value) < 0x1p53) || decimals > mostFixedDecimals) {
        appendFormat(text, "%*.*f", width, decimals, value);
        return;
    }
    uint64_t power = powersOfTen[decimals];
    uint64_t rounded = roundedDecimals(std::fabs(value), power);
    char digits[32] = "-";
    char* end = digits + (std::signbit(value) ? 1 : 0);
    end = std::to_chars(end, digits + sizeof digits, rounded / power).ptr;
    if (decimals > 0)
        *end++ = '.';
    for (uint64_t rest = rounded % power, place = power / 10; place > 0; place /= 10)
        *end++ = static_cast<char>('0' + rest / place % 10);
    appendRight(text, {digits, end}, width);
}

std::string formatText(const char* format, ...)
{
    std::string text;
    va_list arguments;
    va_start(arguments, format);
    appendFormatted(text, format, arguments);
    va_end(arguments);
    return text;
}

void appendFormat(std::string& text, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    appendFormatted(text, format, arguments);
    va_end(arguments);
}

std::string asciiLower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::string asFolder(const std::string& path)
{
    return !path.empty() && lastSeparator(path) + 1 == path.size() ? path : path + pathSeparator;
}

size_t lastSeparator(std::string_view path)
{
#ifdef _WIN32
    return path.find_last_of('\\');
#else
    return path.find_last_of('/');
#endif
}

std::string reportedName(std::string_view path)
{
    size_t separator = lastSeparator(path);
    size_t start = separator == std::string_view::npos ? 1 : separator + 1;
    return start < path.size() ? shownText(path.substr(start)) : std::string();
}

std::string_view fileName(std::string_view path)
{
    size_t separator = lastSeparator(path);
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::string shownFileName(std::string_view path)
{
    return shownText(fileName(path));
}

std::string xmlEscaped(std::string_view text)
{
    std::string result;
    for (char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return result;
}

size_t pieceLength(std::string_view text, size_t limit)
{
    if (text.size() <= limit)
        return text.size();
    size_t lineEnd = text.substr(0, limit).rfind('\n');
    if (lineEnd != std::string_view::npos)
        return lineEnd + 1;
    size_t length = limit;
    while (length > 1 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    return length > 0 ? length : 1;
}

} // namespace torvane
