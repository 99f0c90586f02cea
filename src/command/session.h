// One user's Torvane: what a front end owns and every command is handed. A second session knows nothing of the first.
#pragma once

#include "core/screens.h"
#include "gps/loaded_ride.h"
#include "model/model.h"
#include "ride/ride_records.h"

#include <atomic>
#include <optional>
#include <string>
#include <utility>

namespace torvane {

struct Session {
    Screens screens;
    std::optional<GraphSeries> graph; // curves that the last command left; empty where it has nothing to plot
    std::string profilePath;          // answer of the profile file prompts; UTF-8
    std::string profileFault = {};    // the figure of the last profile file that its page would not take; empty: none
    std::string chosenRide = {};      // answer of the prompt of the load; UTF-8
    Model model = {};
    Drive lastDrive = {}; // of the last ride simulation
    // The ride that 902 to 904 work on. Each reads its file anew. A load that fails, and a stroke that does, leave it
    // as it was.
    LoadedRide ride = {};
    std::atomic<AnalysisReadiness> readiness = readyForAnalysis; // of the ride: the menu asks while a load may run

    void take(LoadedRide&& loaded)
    {
        loaded.image.data = {};
        ride = std::move(loaded);
        readiness = ride.readiness;
    }
};

} // namespace torvane
