// A table on its way out, row by row and in large pieces: as comma- or tab-separated values, or as a JSON object a
// line. One header row, a point as decimal sign whatever the locale, nothing padded, an empty cell where there is no
// value.
#pragma once

#include "core/files.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace torvane {

enum class RowFormat : uint8_t { csv, tsv, ndjson };

// By the ending of a name; values separated by commas for any other.
RowFormat rowFormatOf(std::string_view path);

constexpr int exactDecimals = -1; // as few digits as give the number back

struct RowColumn {
    const char* name; // with its unit: "speed_kph"
    int decimals = 3;
};

class RowWriter {
public:
    RowWriter(RowFormat rowFormat, WritePiece pieceWriter) : format(rowFormat), write(std::move(pieceWriter)) {}

    // Before the first row. The names outlive the table.
    void begin(std::span<const RowColumn> columns);
    bool hasBegun() const
    {
        return !columns.empty();
    }
    // The cells of a row from left to right, and behind the last one its end. What is not finite is an empty cell.
    void number(double value);
    void text(std::string_view value);
    void empty();
    void endRow();
    // False once a piece could not be written: no further row is of use.
    bool isTaken() const
    {
        return taken;
    }
    // Hands over what is left; false when a piece could not be written.
    bool finish();

private:
    void beginCell();
    void put(std::string_view characters);
    char* room(size_t bytes);
    void handOver();

    RowFormat format;
    WritePiece write;
    std::span<const RowColumn> columns = {};
    size_t column = 0;
    std::vector<char> piece = {}; // grown ahead of what is put
    size_t used = 0;              // of it
    bool taken = true;            // all pieces
};

} // namespace torvane
