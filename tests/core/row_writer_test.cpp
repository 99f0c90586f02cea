// Tables as programs take them: quoting, what looks like a formula, empty cells, pieces.
#include "core/row_writer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <tuple>

namespace torvane {

namespace {

std::string tableOf(RowFormat format, std::span<const RowColumn> columns, const std::function<void(RowWriter&)>& write)
{
    std::string table;
    RowWriter rows(format, [&](std::span<const uint8_t> piece) {
        table.append(piece.begin(), piece.end());
        return true;
    });
    rows.begin(columns);
    write(rows);
    EXPECT_TRUE(rows.finish());
    return table;
}

} // namespace

TEST(RowWriter, WritesCellsInEachFormat)
{
    constexpr RowColumn columns[] = {{"name"}, {"power_W", 1}, {"none"}};
    const std::tuple<RowFormat, const char*, const char*> cases[] = {
        {RowFormat::csv, "plain", "name,power_W,none\nplain,-0.3,\n"},
        {RowFormat::csv, "a,\"b\"\n", "name,power_W,none\n\"a,\"\"b\"\"\n\",-0.3,\n"},
        {RowFormat::csv, "=1+1", "name,power_W,none\n'=1+1,-0.3,\n"},
        {RowFormat::tsv, "@a\tb", "name\tpower_W\tnone\n'@a b\t-0.3\t\n"},
        {RowFormat::ndjson, "=\"", "{\"name\": \"=\\\"\", \"power_W\": -0.3, \"none\": null}\n"},
    };
    for (const auto& [format, text, wanted] : cases) {
        auto write = [text = text](RowWriter& rows) {
            rows.text(text);
            rows.number(-0.26);
            rows.number(std::nan(""));
            rows.endRow();
        };
        EXPECT_EQ(tableOf(format, columns, write), wanted) << text;
    }
    EXPECT_EQ(rowFormatOf("a.b.tsv"), RowFormat::tsv);
    EXPECT_EQ(rowFormatOf("a.ndjson"), RowFormat::ndjson);
    EXPECT_EQ(rowFormatOf("-"), RowFormat::csv);
}

TEST(RowWriter, WritesNumbersWithTheirDecimals)
{
    const std::tuple<double, int, const char*> cases[] = {
        {0, 0, "0"},         {-0.0, 2, "0.00"},         {0.004, 2, "0.00"},
        {0.05, 2, "0.05"},   {9.999, 2, "10.00"},       {-3.26e-6, 7, "-0.0000033"},
        {-1e-9, 3, "0.000"}, {12345.678, 1, "12345.7"}, {1e20, 1, "100000000000000000000.0"},
    };
    for (const auto& [value, decimals, wanted] : cases) {
        RowColumn column = {"a", decimals};
        auto write = [value = value](RowWriter& rows) { rows.number(value); };
        EXPECT_EQ(tableOf(RowFormat::csv, {&column, 1}, write), std::string("a\n") + wanted) << value;
    }
}

} // namespace torvane
