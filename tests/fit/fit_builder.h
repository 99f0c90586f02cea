// What tests of FIT files need beside the builder: bytes to and from files, and a folder for them.
#pragma once

#include "fit/fit_image.h"
#include "rides/fit_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace torvane {

inline void writeBytes(const std::string& path, const Bytes& bytes)
{
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
}

inline Bytes bytesOf(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

// Tells of both from the first byte on that differs; the test library shows the front of long files alone.
inline testing::AssertionResult sameBytes(const Bytes& found, const Bytes& wanted)
{
    auto [own, other] = std::ranges::mismatch(found, wanted);
    return testing::AssertionResult(own == found.end() && other == wanted.end())
           << "from byte " << own - found.begin() << " on " << testing::PrintToString(Bytes(own, found.end()))
           << " instead of " << testing::PrintToString(Bytes(other, wanted.end()));
}

// A file in memory whose data block this is.
inline FitImage imageOf(const Bytes& data)
{
    FitImage image;
    image.data = data;
    image.dataSize = static_cast<int32_t>(data.size());
    return image;
}

// A folder of its own for each test and process, gone with it.
struct TestFolder {
    std::string path; // ends in "/"

    TestFolder()
    {
        const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string(test->test_suite_name()) + "-" + test->name();
        std::ranges::replace(name, '/', '-'); // of a test with parameters: the folders above it would stay
        path = testing::TempDir() + "torvane-" + std::to_string(getpid()) + "-" + name + "/";
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~TestFolder()
    {
        std::filesystem::remove_all(path);
    }
    size_t count() const
    {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(path), {}));
    }
};

} // namespace torvane
