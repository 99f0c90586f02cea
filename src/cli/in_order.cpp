#include "cli/in_order.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace torvane {

namespace {

// What the threads share.
class Pieces {
public:
    Pieces(size_t count, const OrderedWork& workOfAll) : work(workOfAll), hasRun(count) {}

    // Of a thread: begins pieces until there are none or the rest is given up.
    void runAll()
    {
        for (size_t piece; begin(piece); end(piece))
            work.run(piece);
    }
    // Of the caller, where there is no thread.
    void runAndTakeAll()
    {
        for (size_t piece; begin(piece); take(piece)) {
            work.run(piece);
            end(piece);
            work.ended(ended);
        }
    }
    // Of the caller: waits for a piece, and tells of all that end meanwhile. False when it will not be begun.
    bool waitFor(size_t piece)
    {
        std::unique_lock lock(guard);
        for (;;) {
            if (told != ended) {
                told = ended;
                lock.unlock();
                work.ended(told);
                lock.lock();
            } else if (hasRun[piece] || atWork == 0) {
                return hasRun[piece];
            } else {
                changed.wait(lock);
            }
        }
    }
    void take(size_t piece)
    {
        work.take(piece);
        std::lock_guard lock(guard);
        ++taken;
        room.notify_all();
    }
    void join()
    {
        std::lock_guard lock(guard);
        ++atWork;
    }
    void leave()
    {
        std::lock_guard lock(guard);
        --atWork;
        changed.notify_one();
    }

private:
    // The next one to be taken is begun in any case.
    bool begin(size_t& piece)
    {
        std::unique_lock lock(guard);
        room.wait(lock, [this] { return begun == taken || work.isGivenUp() || !work.isFull(); });
        if (begun == hasRun.size() || work.isGivenUp())
            return false;
        piece = begun++;
        return true;
    }
    void end(size_t piece)
    {
        std::lock_guard lock(guard);
        hasRun[piece] = true;
        ++ended;
        changed.notify_one();
    }

    const OrderedWork& work;
    std::mutex guard;
    std::condition_variable changed, room;
    size_t begun = 0, ended = 0, taken = 0;
    size_t told = 0;   // of those that have ended
    size_t atWork = 0; // threads that have not left
    std::vector<bool> hasRun;
};

void workAndLeave(Pieces& pieces)
{
    pieces.runAll();
    pieces.leave();
}

std::vector<std::jthread> startThreads(Pieces& pieces, size_t threads)
{
    std::vector<std::jthread> started;
    started.reserve(threads);
    while (started.size() < threads) {
        pieces.join();
        try {
            started.emplace_back(workAndLeave, std::ref(pieces));
        } catch (const std::system_error&) { // no more of them to be had
            pieces.leave();
            break;
        }
    }
    return started;
}

} // namespace

void runInOrder(size_t count, size_t threads, const OrderedWork& work)
{
    Pieces pieces(count, work);
    std::vector<std::jthread> started = startThreads(pieces, threads);
    if (started.empty())
        return pieces.runAndTakeAll();
    for (size_t piece = 0; piece < count && pieces.waitFor(piece); ++piece)
        pieces.take(piece);
}

} // namespace torvane
