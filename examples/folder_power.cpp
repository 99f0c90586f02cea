// What every ride of a folder took, on all cores: one calculator a thread, the rides dealt out as they come.
//   folder-power FOLDER [PROFILE.pro]
#include "torvane/calculator.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

using namespace torvane::library;

// The line of the report with the power, or what is wrong with the ride.
std::string powerOf(Calculator& calculator, const std::string& ride)
{
    Result<Answer> answer = calculator.loadRide(ride);
    if (answer)
        answer = calculator.analyseRide();
    if (!answer)
        return answer.error().text;
    size_t start = answer->lower.find("\tpedaling power") + 1;
    return answer->lower.substr(start, answer->lower.find('\n', start) - start);
}

int main(int count, char** values)
{
    if (count < 2)
        return 1;
    std::vector<std::string> rides;
    for (const auto& file : std::filesystem::directory_iterator(values[1]))
        if (file.path().extension() == ".fit")
            rides.push_back(file.path().string());
    std::ranges::sort(rides);
    std::vector<std::string> lines(rides.size());
    std::atomic<size_t> next = 0;
    auto work = [&] {
        Result<Calculator> calculator = Calculator::make();
        bool ready = calculator && (count < 3 || calculator->loadProfile(values[2]));
        for (size_t i = next++; i < rides.size(); i = next++)
            lines[i] = ready ? powerOf(*calculator, rides[i]) : "no calculator with this profile";
    };
    {
        std::vector<std::jthread> threads;
        for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i)
            threads.emplace_back(work);
    }
    for (size_t i = 0; i < rides.size(); ++i)
        std::cout << std::filesystem::path(rides[i]).filename().string() << ": " << lines[i] << '\n';
}
