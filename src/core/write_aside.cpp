#include "core/write_aside.h"

#include <cstdint>
#include <system_error>
#include <utility>

namespace torvane {

WriteAside::~WriteAside()
{
    if (!thread.joinable())
        return;
    {
        std::lock_guard lock(guard);
        ends = true;
    }
    changed.notify_all();
    thread.join();
}

void WriteAside::hand(std::unique_ptr<char[]>& block, size_t length)
{
    if (!thread.joinable() && !start()) {
        taken = taken && write({reinterpret_cast<const uint8_t*>(block.get()), length});
        return;
    }
    std::unique_lock lock(guard);
    changed.wait(lock, [&] { return pending == 0; });
    std::swap(block, other);
    pending = length;
    changed.notify_all();
}

bool WriteAside::finish()
{
    std::unique_lock lock(guard);
    changed.wait(lock, [&] { return pending == 0; });
    return taken;
}

bool WriteAside::start()
{
    other = std::make_unique_for_overwrite<char[]>(blockBytes);
    try {
        thread = std::thread([this] { run(); });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void WriteAside::run()
{
    std::unique_lock lock(guard);
    while (changed.wait(lock, [&] { return pending != 0 || ends; }), pending != 0) {
        size_t length = pending;
        bool goesOn = taken;
        lock.unlock();
        bool written = goesOn && write({reinterpret_cast<const uint8_t*>(other.get()), length});
        lock.lock();
        taken = written;
        pending = 0;
        changed.notify_all();
    }
}

} // namespace torvane
