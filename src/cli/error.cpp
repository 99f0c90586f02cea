#include "cli/error.h"

#include "core/json.h"
#include "library/errors.h"

namespace torvane {

namespace {

// In the order of library::ErrorKind. They are told, so they stay.
constexpr const char* kindNames[] = {
    "unknownCommand", "unknownEntry", "badValue",   "beyondLimits", "incomplete",  "refused",  "cannotRead",
    "cannotWrite",    "badFile",      "unsuitable", "noAnswer",     "outOfMemory", "internal",
};
static_assert(std::size(kindNames) == static_cast<size_t>(library::ErrorKind::internal) + 1);

std::string jsonLimits(const library::Limits& limits)
{
    JsonList object('{');
    if (limits.least)
        object.member("least", jsonNumber(*limits.least));
    if (limits.most)
        object.member("most", jsonNumber(*limits.most));
    if (!limits.unit.empty())
        object.member("unit", jsonString(limits.unit));
    return object.close();
}

} // namespace

CallError wrongUsage(std::string text)
{
    return {"wrongUsage", std::move(text), {}};
}

CallError errorOf(library::ErrorKind kind, std::string text)
{
    return {kindNames[static_cast<size_t>(kind)], std::move(text), {}};
}

CallError errorOf(const library::Error& error)
{
    return {kindNames[static_cast<size_t>(error.kind)], error.text, error.entry, error.limits};
}

CallError errorOf(const EntryFaults& faults, const std::vector<Box>& boxes)
{
    CallError error = errorOf(library::errorOf(faults, boxes));
    error.given = faults.refusals.empty() ? faults.given : faults.refusals.front().given;
    return error;
}

std::string jsonError(const CallError& error)
{
    JsonList object('{');
    object.member("kind", jsonString(error.kind));
    if (!error.entry.empty())
        object.member("entry", jsonString(error.entry));
    if (error.limits)
        object.member("limits", jsonLimits(*error.limits));
    if (!error.given.empty())
        object.member("given", jsonString(error.given));
    object.member("text", jsonString(error.text));
    return object.close();
}

} // namespace torvane
