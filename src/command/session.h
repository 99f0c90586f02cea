// One user's Torvane: what a front end owns and every command is handed. Made as it is, it holds the defaults and their
// model, and speaks to nobody. A second session knows nothing of the first.
#pragma once

#include "core/entry_file.h"
#include "core/parameter_block.h"
#include "core/screens.h"
#include "gps/loaded_ride.h"
#include "gps/prepare.h"
#include "model/model.h"
#include "plan/calibrate.h"
#include "plan/plan_entries.h"
#include "report/figures.h"
#include "ride/ride_records.h"

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace torvane {

class RowWriter;
struct ShownPlan;

// What the pages of a sheet have accepted and its command has not yet brought into force.
struct FormMarks {
    bool profile = false, condition = false;
};

struct Session {
    Screens screens = {};
    ParameterBlock saved = defaultBlock(); // the defaults: what the parameter file holds
    ParameterBlock working = saved;        // what dialogs edit and commands run from
    EntryFile kept = {};                   // defaults without a place in the parameter file
    FormMarks formMarks = {};
    std::optional<GraphSeries> graph = {};     // curves that the last command left; empty where it has nothing to plot
    bool keepsRideCurves = false;              // recorded rides leave curves as well, which keep their rows
    bool keepsRidePlaces = false;              // and with these the places, for a map
    Figures figures = {};                      // numbers of the last answer that came from the worker
    Figures pageFigures = {};                  // of the last report, which may be asked for while the worker runs
    bool figuresAlone = false;                 // nobody reads a report: one that takes time may be left out
    RowWriter* rows = nullptr;                 // where the table of the present command goes as well; null: nowhere
    bool wantsPage = false;                    // of the command: it leaves one in `page`
    std::string page = {};                     // HTML of the last answer; empty: it has none
    std::shared_ptr<ShownPlan> shownPlan = {}; // of the last page of a plan
    std::shared_ptr<const ShownPlan> against = {}; // that the next such page has beside its own
    std::string profilePath = {};                  // answer of the profile file prompts; UTF-8
    std::string profileFault = {}; // the figure of the last profile file that its page would not take; empty: none
    std::string chosenRide = {};   // answer of the prompt of the load; UTF-8
    ToolInputs inputs = {};        // of the dialog that was confirmed last: files of a tool, of a written ride
    Preparation preparation = {};  // of the same
    CalibrationOptions calibration = {}; // of the same
    PlanEntries plan = {};               // of the same
    Model model = modelOf(working);
    Drive lastDrive = {}; // of the last ride simulation
    // The ride that express, analyse and create work on. Each reads its file anew, unless the ride is in
    // memory. A load that fails, and a stroke that does, leave it as it was.
    LoadedRide ride = {};
    std::atomic<AnalysisReadiness> readiness = readyForAnalysis; // of the ride: the menu asks while a load may run

    // Those of the command that has just ended; none stay.
    Figures takeFigures()
    {
        Figures ofReport = std::exchange(pageFigures, {});
        Figures ofWorker = std::exchange(figures, {});
        return ofWorker.values.empty() ? ofReport : ofWorker;
    }

    void take(LoadedRide&& loaded)
    {
        loaded.image.data = std::vector<uint8_t>(); // gives its memory back, which {} would not
        loaded.image.progress = nullptr;            // goes with the command
        ride = std::move(loaded);
        readiness = ride.readiness;
    }
};

} // namespace torvane
