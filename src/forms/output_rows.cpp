#include "forms/output_rows.h"

#include <cstring>

namespace torvane {

int32_t wordAt(const ParameterBlock& block, size_t offset)
{
    int32_t word;
    std::memcpy(&word, reinterpret_cast<const char*>(&block) + offset, sizeof word);
    return word;
}

bool convertIsEnabled(const FormState& state, const Row& row)
{
    return wordAt(state.values, convertEnabledOf(static_cast<size_t>(row.index))) != 0;
}

bool sportIsEnabled(const FormState& state, const Row& row)
{
    return wordAt(state.values, sportEnabledOf(static_cast<size_t>(row.index))) != 0;
}

const Row* pathRow(const FormState& state, size_t file)
{
    for (const Row& row : state.form->rows)
        if (row.kind == RowKind::path && static_cast<size_t>(row.index) == file)
            return &row;
    return nullptr;
}

Verdict aboutPaths(FormState& state, Verdict verdict)
{
    if (!verdict.passed)
        state.refused = pathRow(state, verdict.file);
    return verdict;
}

} // namespace torvane
