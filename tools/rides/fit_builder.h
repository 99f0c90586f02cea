// FIT files made byte by byte, without the program's own reading and writing code: what tests and sample rides are
// built with.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace torvane {

using Bytes = std::vector<uint8_t>;

// CRC-16 bit by bit, polynomial 0x8005 reflected.
inline uint16_t bitwiseCrc(const Bytes& bytes)
{
    unsigned crc = 0;
    for (uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xA001 : crc >> 1;
    }
    return static_cast<uint16_t>(crc);
}

// Grows a data block message by message and wraps it into a file.
struct FitBuilder {
    struct Field {
        int number, size, baseType = 2;
    };

    Bytes data;

    // A definition message; a developer part is written when there are developer fields.
    FitBuilder& define(int local, int message, std::vector<Field> fields, bool bigEndian = false,
                       std::vector<Field> developerFields = {})
    {
        put(0x40 | local | (developerFields.empty() ? 0 : 0x20));
        put(0);
        put(bigEndian ? 1 : 0);
        number(message, 2, bigEndian);
        triples(fields);
        if (!developerFields.empty())
            triples(developerFields);
        fields.insert(fields.end(), developerFields.begin(), developerFields.end());
        layouts[local] = {fields, bigEndian};
        return *this;
    }

    // A data message: one value for each field, developer fields behind the others.
    FitBuilder& message(int local, const std::vector<int64_t>& values)
    {
        put(local);
        payload(local, values);
        return *this;
    }

    FitBuilder& compressed(int local, int timeOffset, const std::vector<int64_t>& values)
    {
        put(0x80 | local << 5 | timeOffset);
        payload(local, values);
        return *this;
    }

    // The whole file, with a header of 12 or 14 bytes, protocol 1.0 and profile 0x0123.
    Bytes file(int headerSize = 14) const
    {
        FitBuilder out;
        out.put(headerSize);
        out.put(0x10);
        out.number(0x0123, 2, false);
        out.number(static_cast<int64_t>(data.size()), 4, false);
        for (char c : {'.', 'F', 'I', 'T'})
            out.put(c);
        if (headerSize == 14)
            out.number(bitwiseCrc(out.data), 2, false);
        out.data.insert(out.data.end(), data.begin(), data.end());
        out.number(bitwiseCrc(out.data), 2, false);
        return out.data;
    }

    void put(int byte)
    {
        data.push_back(static_cast<uint8_t>(byte));
    }
    void number(int64_t value, int size, bool bigEndian)
    {
        for (int i = 0; i < size; ++i) {
            int shift = 8 * (bigEndian ? size - 1 - i : i);
            put(shift < 64 ? static_cast<int>(value >> shift & 0xFF) : 0);
        }
    }

private:
    struct Layout {
        std::vector<Field> fields;
        bool bigEndian = false;
    };
    std::array<Layout, 16> layouts;

    void triples(const std::vector<Field>& fields)
    {
        put(static_cast<int>(fields.size()));
        for (const Field& field : fields)
            for (int byte : {field.number, field.size, field.baseType})
                put(byte);
    }
    void payload(int local, const std::vector<int64_t>& values)
    {
        const Layout& layout = layouts[local];
        if (values.size() != layout.fields.size()) {
            fprintf(stderr, "a message of local type %d has %zu fields, not %zu\n", local, layout.fields.size(),
                    values.size());
            std::abort();
        }
        for (size_t i = 0; i < values.size(); ++i)
            number(values[i], layout.fields[i].size, layout.bigEndian);
    }
};

} // namespace torvane
