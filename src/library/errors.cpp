#include "library/errors.h"

#include "core/command_ids.h"
#include "fit/fit_codes.h"
#include "plan/calibrate.h"

#include <algorithm>

namespace torvane::library {

namespace {

struct KindOfCode {
    StatusCode code;
    ErrorKind kind;
};

// All others, those of a ride without coherence among them, are of a whole ride that does not suit.
constexpr KindOfCode kindsOfCodes[] = {
    {fitNotSupported, ErrorKind::badFile},      {fitCannotOpen, ErrorKind::cannotRead},
    {fitInvalid, ErrorKind::badFile},           {fitWrongCrc, ErrorKind::badFile},
    {fitTooLarge, ErrorKind::badFile},          {fitNotLoaded, ErrorKind::incomplete},
    {fitSaveFailed, ErrorKind::cannotWrite},    {fitCombineFailed, ErrorKind::cannotWrite},
    {fitConvertFailed, ErrorKind::cannotWrite}, {fitAddFailed, ErrorKind::cannotWrite},
    {fitDivideFailed, ErrorKind::cannotWrite},  {calibrateNotWritten, ErrorKind::cannotWrite},
};

ErrorKind kindOf(const Command& command, ResultStatus status)
{
    if (command.answers == Answers::bits)
        return ErrorKind::noAnswer;
    const KindOfCode* found = std::ranges::find(kindsOfCodes, status, &KindOfCode::code);
    return found == std::end(kindsOfCodes) ? ErrorKind::unsuitable : found->kind;
}

ErrorKind kindOf(RefusalKind kind)
{
    if (kind == RefusalKind::badValue || kind == RefusalKind::beyondLimits)
        return kind == RefusalKind::badValue ? ErrorKind::badValue : ErrorKind::beyondLimits;
    return kind == RefusalKind::missing ? ErrorKind::incomplete : ErrorKind::unknownEntry;
}

// Without the blanks and empty lines around it.
std::string trimmed(const std::string& text)
{
    constexpr const char* blanks = " \t\n";
    size_t first = text.find_first_not_of(blanks);
    return first == text.npos ? std::string() : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string joined(const std::vector<Box>& boxes)
{
    std::string text;
    for (const Box& box : boxes)
        text += (text.empty() ? "" : "\n") + box.text;
    return text;
}

} // namespace

Limits limitsOf(const Row& row)
{
    Limits limits = {.unit = row.unit};
    if (row.leastBinds)
        limits.least = row.least;
    if (row.mostBinds)
        limits.most = row.most;
    return limits;
}

Error errorOf(const Refusal& refusal)
{
    Error error = {.kind = kindOf(refusal.kind), .text = refusal.text, .entry = refusal.entry};
    if (refusal.row)
        error.limits = limitsOf(*refusal.row);
    return error;
}

Error errorOf(const EntryFaults& faults, const std::vector<Box>& boxes)
{
    if (!faults.refusals.empty())
        return errorOf(faults.refusals.front());
    Error error = {.kind = ErrorKind::refused, .text = joined(boxes)};
    if (faults.refused && faults.refused->name)
        error.entry = faults.refused->name;
    if (faults.refused && faults.beyondLimits) {
        error.kind = ErrorKind::beyondLimits;
        error.limits = limitsOf(*faults.refused);
    }
    return error;
}

Error errorOf(const Command& command, ResultStatus status, const std::string& report, const std::string& statusLine)
{
    constexpr std::string_view mark = "status : ";
    ErrorKind kind = kindOf(command, status);
    std::string text = trimmed(report);
    // What could not be kept may stand in the report, and is not what went wrong.
    if (kind == ErrorKind::cannotWrite && statusLine.starts_with(mark))
        text = statusLine.substr(mark.size());
    return {.kind = kind, .text = text.empty() ? statusLine : text, .status = status};
}

} // namespace torvane::library
