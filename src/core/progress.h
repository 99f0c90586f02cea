// How far an operation is. The command that begins one makes a Progress and hands it down to the loops that move it;
// where they move it a run ends that is asked to stop.
#pragma once

#include "core/screens.h"

namespace torvane {

// Thrown where a run is asked to stop, through all that it has begun; operate.h makes a status of it.
struct Stopped {};

// The progress bar for as long as this lives. For one thread at a time.
class Progress {
public:
    Progress() = default;                      // nobody looks
    explicit Progress(const Screens& screens); // which outlive it: shows the bar at 0
    ~Progress();                               // hides it
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Passed on when the whole percentage has changed since the last call. Throws Stopped where the screens' run is
    // asked to stop.
    void report(int percent);
    // Only looks whether to stop, as report does: for a loop that has no share of the bar.
    void look() const;
    // What follows writes one file after the other, and none of them without the rest: it is no longer stopped.
    void goToTheEnd();

private:
    const Screens* screens = nullptr;
    int shown = 0;
    bool mayStop = true;
};

// Of an operation that may have nobody who looks: null.
void reportProgress(Progress* progress, int percent);
void lookForStop(const Progress* progress);

// Position of a value on the way from low to high, as a whole percentage; anything that is no number, or leads out of
// 0 to 100, is held at the nearer end.
int progressPercent(double low, double high, double present);

} // namespace torvane
