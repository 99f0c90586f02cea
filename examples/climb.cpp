// Which largest sprocket for a climb? What velocity and cadence a power gives with each of some.
//   climb POWER GRADIENT [PROFILE.pro]       W, percent
#include "torvane/calculator.h"

#include <iostream>
#include <string>

using namespace torvane::library;

// The line of a report that tells of something, without the tabs around its figures.
std::string lineOf(const std::string& report, const std::string& name)
{
    size_t start = report.find("\n\t" + name + "\t") + 1;
    std::string line;
    for (char c : report.substr(start, report.find('\n', start) - start))
        if (c != '\t')
            line += c;
    return line;
}

int fail(const Error& error)
{
    std::cerr << "climb: " << error.text << '\n';
    return 1;
}

int main(int count, char** values)
{
    if (count < 3)
        return fail({.text = "give power and gradient"});
    Result<Calculator> calculator = Calculator::make();
    if (!calculator)
        return fail(calculator.error());
    if (count > 3)
        if (Result<Answer> profile = calculator->loadProfile(values[3]); !profile)
            return fail(profile.error());
    for (double teeth : {25, 28, 32, 36}) {
        if (Result<Answer> fitted = calculator->set({{"sprocketCount", 11}, {"sprocket[10]", teeth}}); !fitted)
            return fail(fitted.error());
        Result<Answer> answer = calculator->ask(
            {.command = "power-and-velocity",
             .entries = {{"rideTarget", "velocity"}, {"ridePower", values[1]}, {"rideInclination", values[2]}}});
        if (!answer)
            return fail(answer.error());
        std::cout << teeth << " teeth: " << lineOf(answer->lower, "velocity") << ", "
                  << lineOf(answer->lower, "cadence") << '\n';
    }
}
