// What stands behind a calculator, and what every operation of one does alike.
#pragma once

#include "command/session.h"
#include "core/parameter_block.h"
#include "torvane/calculator.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace torvane::library {

struct Calculator::State {
    Session session;
};

// While it lives, the screens of a session write into an answer.
class Gathering {
public:
    Gathering(Session& session, Answer& answer);
    ~Gathering();
    Gathering(const Gathering&) = delete;
    Gathering& operator=(const Gathering&) = delete;

private:
    Session& session;
};

// The figures that the last command has left go to its answer.
void takeFigures(Session& session, Answer& answer);

// Blocks, model and ride as they are now. They come back at the end, unless they were let go.
class Held {
public:
    explicit Held(Session& session);
    ~Held();
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    void letGo()
    {
        held = false;
    }

private:
    Session& session;
    const ParameterBlock saved, working;
    FormMarks formMarks;
    Model model;
    Drive lastDrive;
    LoadedRide ride;
    bool held = true;
};

// The work of an operation, whose exceptions end here. The texts fit into a string that takes no memory.
template <class T, class Work>
Result<T> guarded(Work&& work) noexcept
{
    try {
        return std::forward<Work>(work)();
    } catch (const std::bad_alloc&) {
        return Error{ErrorKind::outOfMemory, "out of memory"};
    } catch (const std::length_error&) {
        return Error{ErrorKind::outOfMemory, "out of memory"};
    } catch (...) {
        return Error{ErrorKind::internal, "internal fault"};
    }
}

} // namespace torvane::library
