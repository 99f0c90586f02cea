#include "core/row_writer.h"

#include "core/json.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace torvane {

namespace {

constexpr size_t pieceSize = 1 << 16;

// A table program would take such a cell for a formula.
bool looksLikeFormula(std::string_view text)
{
    return !text.empty() && std::string_view("=+-@").find(text[0]) != std::string_view::npos;
}

std::string quotedText(std::string_view text)
{
    std::string quoted = "\"";
    for (char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

// Whether a cell would end within the text, or would not read as it is.
bool needsQuotes(std::string_view text)
{
    return std::ranges::any_of(text,
                               [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n' || c == '\t'; });
}

// There is no way to quote in these; what would end a cell becomes a blank.
std::string tsvText(std::string_view text)
{
    std::string plain(text);
    std::ranges::replace_if(
        plain, [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return plain;
}

constexpr int mostDecimals = 7;
constexpr uint64_t powersOfTen[mostDecimals + 1] = {1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000};
constexpr double mostExact = 0x1p52;
constexpr size_t longestNumber = 32;

// Whether a number goes by whole numbers of its last decimal.
bool isPlain(double value, int decimals)
{
    return decimals <= mostDecimals && std::fabs(value) * static_cast<double>(powersOfTen[decimals]) < mostExact;
}

// Returns the end. Rounded in binary: a half of the last decimal can go either way.
char* writePlain(char* to, double value, int decimals)
{
    constexpr double wholesAlone = 0x1p52; // a sum of this size has no decimals: rounded as IEEE does, without a call
    double scaled = std::fabs(value) * static_cast<double>(powersOfTen[decimals]);
    uint64_t whole = static_cast<uint64_t>(scaled + wholesAlone - wholesAlone);
    if (value < 0 && whole != 0)
        *to++ = '-';
    int digits = decimals + 1;
    for (uint64_t power = powersOfTen[decimals] * 10; whole >= power; power *= 10)
        ++digits;
    char* end = to + digits + (decimals > 0 ? 1 : 0);
    char* place = end;
    for (int i = 0; i < digits; ++i) { // from the last one on
        if (i == decimals && decimals > 0)
            *--place = '.';
        *--place = static_cast<char>('0' + whole % 10);
        whole /= 10;
    }
    return end;
}

} // namespace

RowFormat rowFormatOf(std::string_view path)
{
    if (path.ends_with(".tsv"))
        return RowFormat::tsv;
    return path.ends_with(".ndjson") ? RowFormat::ndjson : RowFormat::csv;
}

void RowWriter::begin(std::span<const RowColumn> ofTable)
{
    columns = ofTable;
    if (format == RowFormat::ndjson)
        return;
    for (size_t i = 0; i < columns.size(); ++i) {
        if (i > 0)
            put(format == RowFormat::csv ? "," : "\t");
        put(columns[i].name);
    }
    put("\n");
}

char* RowWriter::room(size_t bytes)
{
    if (piece.size() < used + bytes)
        piece.resize(2 * piece.size() + bytes + pieceSize);
    return piece.data() + used;
}

void RowWriter::put(std::string_view characters)
{
    std::memcpy(room(characters.size()), characters.data(), characters.size());
    used += characters.size();
}

void RowWriter::beginCell()
{
    if (format == RowFormat::ndjson) {
        put(column == 0 ? "{\"" : ", \"");
        put(columns[column].name);
        put("\": ");
    } else if (column > 0) {
        *room(1) = format == RowFormat::csv ? ',' : '\t';
        ++used;
    }
    ++column;
}

void RowWriter::number(double value)
{
    if (!std::isfinite(value))
        return empty();
    int decimals = columns[column].decimals;
    beginCell();
    if (decimals == exactDecimals)
        return put(jsonExact(value));
    if (!isPlain(value, decimals))
        return put(formatText("%.*f", decimals, value));
    char* start = room(longestNumber);
    used += static_cast<size_t>(writePlain(start, value, decimals) - start);
}

void RowWriter::text(std::string_view value)
{
    beginCell();
    if (format == RowFormat::ndjson)
        return put(jsonString(value));
    if (looksLikeFormula(value))
        put("'");
    if (!needsQuotes(value))
        return put(value);
    put(format == RowFormat::csv ? quotedText(value) : tsvText(value));
}

void RowWriter::empty()
{
    beginCell();
    if (format == RowFormat::ndjson)
        put("null");
}

void RowWriter::endRow()
{
    put(format == RowFormat::ndjson ? "}\n" : "\n");
    column = 0;
    if (used >= pieceSize)
        handOver();
}

void RowWriter::handOver()
{
    taken = taken && write({reinterpret_cast<const uint8_t*>(piece.data()), used});
    used = 0;
}

bool RowWriter::finish()
{
    handOver();
    return taken;
}

} // namespace torvane
