// The console program.
#include "cli/console.h"
#include "cli/ending_signals.h"
#include "cli/platform.h"
#include "core/shown_text.h"

#include <exception>
#include <iostream>

int main(int count, char** values)
{
    torvane::prepareStreams();
    torvane::catchEndingSignals();
    torvane::keepFreedMemory();
    std::ios::sync_with_stdio(false);
    try {
        return torvane::runConsole(torvane::commandLine(count, values), std::cout, std::cerr, torvane::isInteractive());
    } catch (const std::exception& fault) {
        std::cerr << "torvane-cli: " << torvane::shownText(fault.what()) << '\n';
        return 1;
    }
}
