// The mutant that is on is MUTANT of the environment. With MUTANT_MAP, the name of a file, a run of the tests writes
// there a line for each: its name, its milliseconds of the processor, the folder of its file, and the mutants that it
// came by.
#include "mutants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/mman.h>
#include <sys/resource.h>

namespace mutation {

int number = -1;
unsigned char* visits = nullptr;

namespace {

constexpr int most = 1 << 16;

class Map : public testing::EmptyTestEventListener {
public:
    explicit Map(const char* path) : out_(path) {}
    void OnTestProgramStart(const testing::UnitTest&) override
    {
        everywhere_ = take();
    }
    void OnTestStart(const testing::TestInfo& test) override
    {
        // What came by before the first test of a suite served to set up all of it.
        if (test.test_suite_name() != suite_) {
            suite_ = test.test_suite_name();
            shared_ = everywhere_ + take();
        }
        began_ = milliseconds();
    }
    void OnTestEnd(const testing::TestInfo& test) override
    {
        std::string file = test.file();
        std::string folder = file.substr(0, file.rfind('/'));
        out_ << test.test_suite_name() << '.' << test.name() << ' ' << milliseconds() - began_ << ' '
             << folder.substr(folder.rfind('/') + 1) << shared_ << take() << std::endl;
    }

private:
    // Also of children that ended.
    static long milliseconds()
    {
        long sum = 0;
        for (int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
            rusage use = {};
            getrusage(who, &use);
            for (const timeval& time : {use.ru_utime, use.ru_stime})
                sum += time.tv_sec * 1000000 + time.tv_usec;
        }
        return sum / 1000;
    }
    static std::string take()
    {
        std::string numbers;
        for (int i = 0; i < most; ++i) {
            if (visits[i])
                numbers += ' ' + std::to_string(i);
        }
        std::fill(visits, visits + most, 0);
        return numbers;
    }

    std::ofstream out_;
    std::string everywhere_;
    std::string suite_;
    long began_ = 0;
    std::string shared_;
};

// Before anything else that is set up when a program starts. The visits of a child count as well.
__attribute__((constructor(101))) void begin()
{
    void* shared = mmap(nullptr, most, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED)
        std::abort();
    visits = static_cast<unsigned char*>(shared);
    if (const char* given = std::getenv("MUTANT"))
        number = std::atoi(given);
}

__attribute__((constructor)) void listen()
{
    if (const char* path = std::getenv("MUTANT_MAP"))
        testing::UnitTest::GetInstance()->listeners().Append(new Map(path));
}

} // namespace
} // namespace mutation
