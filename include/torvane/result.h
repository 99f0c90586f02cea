// What every operation of the library gives back: a value, or an error that says what is wrong. Nothing is thrown,
// nothing is printed, and nothing ends the program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace torvane::library {

enum class ErrorKind {
    unknownCommand, // there is no such command, or it is one of windows alone
    unknownEntry,   // the command, or the profile, has no entry of this name
    badValue,       // the text of an entry is no number, or none of its choices
    beyondLimits,   // a figure is not within `limits`; nothing was computed
    incomplete,     // something more is needed: an entry, a ride, a file
    refused,        // a check speaks against it: `text` has its words
    cannotRead,     // a file is missing, or cannot be read
    cannotWrite,    // a file cannot be written; one that was there stands as it was
    badFile,        // the bytes are no ride or no profile, or they are damaged
    unsuitable,     // a whole ride that this cannot be done with
    noAnswer,       // there is none for these figures; `text` has the reason
    outOfMemory,    // more memory than there is; everything is as before the call
    internal,       // a fault of the library
};

// What an entry may hold, in the unit in which it is given. Both ends are legal; a missing one does not bind.
struct Limits {
    std::optional<double> least = {};
    std::optional<double> most = {};
    std::string unit = {}; // empty: a bare number
};

struct Error {
    ErrorKind kind = ErrorKind::internal;
    std::string text = {};             // one or more lines of English, UTF-8
    std::string entry = {};            // whose fault it is; empty: no one entry's
    std::optional<Limits> limits = {}; // of `entry`, with beyondLimits
    std::uint32_t status = 0;          // the status word of a command that ran; 0: none did
};

struct Done {}; // the value of an operation that has none

// A value, or an error. `value` and `error` may be asked for what is there alone, as operator bool tells.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) noexcept : content(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) noexcept : content(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const noexcept
    {
        return content.index() == 0;
    }

    T& value() & noexcept
    {
        return *std::get_if<0>(&content);
    }
    const T& value() const& noexcept
    {
        return *std::get_if<0>(&content);
    }
    // Of a result that goes at once: the value stays, also in `for (auto& x : *f())`.
    T value() && noexcept
    {
        return std::move(*std::get_if<0>(&content));
    }
    T& operator*() & noexcept
    {
        return value();
    }
    const T& operator*() const& noexcept
    {
        return value();
    }
    T operator*() && noexcept
    {
        return std::move(*this).value();
    }
    T* operator->() noexcept
    {
        return &value();
    }
    const T* operator->() const noexcept
    {
        return &value();
    }

    const Error& error() const noexcept
    {
        return *std::get_if<1>(&content);
    }

private:
    std::variant<T, Error> content;
};

} // namespace torvane::library
