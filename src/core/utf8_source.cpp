#include "core/byte_source.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>
#include <string_view>
#include <utility>

namespace torvane {

namespace {

enum class Encoding { asItIs, latin1, windows1252, utf16Little, utf16Big };

constexpr char32_t noCharacter = 0xFFFD;

// Where Windows-1252 differs from ISO 8859-1: 0x80 to 0x9F.
constexpr std::array<char32_t, 32> windows1252 = {
    0x20AC, noCharacter, 0x201A,      0x0192, 0x201E,      0x2026,      0x2020, 0x2021,      0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152,      noCharacter, 0x017D, noCharacter, noCharacter, 0x2018, 0x2019,      0x201C, 0x201D, 0x2022,
    0x2013, 0x2014,      0x02DC,      0x2122, 0x0161,      0x203A,      0x0153, noCharacter, 0x017E, 0x0178,
};

struct NamedEncoding {
    std::string_view name; // in small letters
    Encoding encoding;
};
constexpr NamedEncoding namedEncodings[] = {
    {"iso-8859-1", Encoding::latin1},       {"iso8859-1", Encoding::latin1},   {"latin1", Encoding::latin1},
    {"latin-1", Encoding::latin1},          {"l1", Encoding::latin1},          {"windows-1252", Encoding::windows1252},
    {"windows1252", Encoding::windows1252}, {"cp1252", Encoding::windows1252},
};

struct Mark {
    std::string_view bytes;
    size_t length; // of what is no character of the text
    Encoding encoding;
};
constexpr Mark marks[] = {
    {"\xEF\xBB\xBF", 3, Encoding::asItIs},
    {"\xFF\xFE", 2, Encoding::utf16Little},
    {"\xFE\xFF", 2, Encoding::utf16Big},
    {std::string_view("<\0?\0", 4), 0, Encoding::utf16Little},
    {std::string_view("\0<\0?", 4), 0, Encoding::utf16Big},
};

void appendUtf8(std::vector<uint8_t>& text, char32_t character)
{
    auto put = [&](char32_t byte) { text.push_back(static_cast<uint8_t>(byte)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | character >> 18);
        put(0x80 | (character >> 12 & 0x3F));
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    }
}

// The encoding that an XML declaration at the start names.
Encoding declaredEncoding(std::string_view text)
{
    text = text.substr(0, text.find("?>"));
    size_t word = text.find("encoding");
    if (!text.starts_with("<?xml") || word == std::string_view::npos)
        return Encoding::asItIs;
    size_t from = text.find_first_of("\"'", word);
    if (from == std::string_view::npos)
        return Encoding::asItIs;
    std::string name(text.substr(from + 1, text.find(text[from], from + 1) - from - 1));
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
    const auto* found = std::ranges::find(namedEncodings, std::string_view(name), &NamedEncoding::name);
    return found == std::end(namedEncodings) ? Encoding::asItIs : found->encoding;
}

// The declaration names an encoding that holds no longer, and parsers differ in what they make of that, and of blanks
// in front of the first element.
void dropDeclaration(std::vector<uint8_t>& piece)
{
    std::string_view text(reinterpret_cast<const char*>(piece.data()), piece.size());
    constexpr std::string_view end = "?>";
    size_t closes = text.starts_with("<?xml") ? text.find(end) : std::string_view::npos;
    size_t from = closes == std::string_view::npos ? 0 : closes + end.size();
    size_t begins = std::min(text.find_first_not_of(" \t\r\n", from), text.size());
    piece.erase(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(begins));
}

bool isHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

class Recoding {
public:
    explicit Recoding(NextPiece textPieces) : text(std::move(textPieces)) {}

    SourceFault next(std::vector<uint8_t>& piece)
    {
        do {
            bool isStart = !looked;
            piece.clear();
            if (SourceFault fault = isStart ? lookAtStart(piece) : text(piece); fault != SourceFault::none)
                return fault;
            if (piece.empty())
                return finish(piece);
            recode(piece);
            if (isStart)
                dropDeclaration(piece);
        } while (piece.empty());
        return SourceFault::none;
    }

private:
    SourceFault lookAtStart(std::vector<uint8_t>& piece)
    {
        looked = true;
        if (SourceFault fault = text(piece); fault != SourceFault::none)
            return fault;
        std::string_view start(reinterpret_cast<const char*>(piece.data()), piece.size());
        for (const Mark& mark : marks)
            if (start.starts_with(mark.bytes)) {
                encoding = mark.encoding;
                piece.erase(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(mark.length));
                return SourceFault::none;
            }
        constexpr size_t longestDeclaration = 512;
        encoding = declaredEncoding(start.substr(0, longestDeclaration));
        return SourceFault::none;
    }

    void recode(std::vector<uint8_t>& piece)
    {
        if (encoding == Encoding::asItIs)
            return;
        std::vector<uint8_t> recoded;
        recoded.reserve(piece.size() + piece.size() / 8);
        for (uint8_t byte : piece)
            if (encoding == Encoding::latin1 || byte < 0x80 || byte >= 0xA0 || encoding != Encoding::windows1252)
                takeByte(recoded, byte);
            else
                appendUtf8(recoded, windows1252[byte - 0x80]);
        piece = std::move(recoded);
    }

    void takeByte(std::vector<uint8_t>& to, uint8_t byte)
    {
        if (encoding != Encoding::utf16Little && encoding != Encoding::utf16Big)
            return appendUtf8(to, byte);
        hasHalf = !hasHalf;
        if (hasHalf)
            half = byte;
        else
            takeUnit(to, encoding == Encoding::utf16Big ? half << 8 | byte : byte << 8 | half);
    }

    void takeUnit(std::vector<uint8_t>& to, int unit)
    {
        char32_t character = static_cast<char32_t>(unit);
        char32_t before = std::exchange(high, 0);
        if (before != 0 && isLowSurrogate(character))
            return appendUtf8(to, 0x10000 + ((before - 0xD800) << 10) + (character - 0xDC00));
        if (before != 0)
            appendUtf8(to, noCharacter);
        if (isHighSurrogate(character))
            high = character;
        else
            appendUtf8(to, isLowSurrogate(character) ? noCharacter : character);
    }

    SourceFault finish(std::vector<uint8_t>& piece)
    {
        if (high != 0 || hasHalf)
            appendUtf8(piece, noCharacter);
        high = 0;
        hasHalf = false;
        return SourceFault::none;
    }

    NextPiece text;
    Encoding encoding = Encoding::asItIs;
    bool looked = false, hasHalf = false;
    int half = 0;
    char32_t high = 0; // surrogate that waits for its other one
};

} // namespace

NextPiece asUtf8(NextPiece text)
{
    return [recoding = std::make_shared<Recoding>(std::move(text))](std::vector<uint8_t>& piece) {
        return recoding->next(piece);
    };
}

} // namespace torvane
