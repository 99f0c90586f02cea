// From accepted pages and profile files to the live model and its report.
#include "command/settings_command.h"

#include "command/kept_entries.h"
#include "command/session.h"
#include "core/parameter_file.h"
#include "forms/form.h"
#include "forms/profile_limits.h"
#include "report/profile_report.h"

#include <cstring>
#include <utility>

namespace torvane {

namespace {

void choose(int32_t& present, int32_t& target, int32_t number)
{
    if (present != number)
        target = 0;
    present = number;
}

} // namespace

// Of both sheets: what was accepted comes into force. A sheet that was cancelled leaves the figures as they are, those
// that a profile file has put into the model alone among them.
ResultStatus finishProfile(Session& session)
{
    commitProfile(session.saved, session.working);
    bool accepted = std::exchange(session.formMarks.profile, false);
    if (accepted) {
        applyProfile(session.model.state, session.working);
        session.model.calibration = session.working.calibration;
    }
    rebuildModel(session.model);
    if (accepted)
        reportProfile(session.screens, Pane::upper, session.model.state, session.working, allProfileSections);
    return 0;
}

ResultStatus finishCondition(Session& session)
{
    commitCondition(session.saved, session.working);
    bool accepted = std::exchange(session.formMarks.condition, false);
    if (accepted)
        applyCondition(session.model.state, session.working);
    rebuildModel(session.model);
    if (accepted)
        reportCondition(session.screens, Pane::upper, session.model.state, allConditionSections);
    return 0;
}

ResultStatus finishPreference(Session& session)
{
    commitPreference(session.saved, session.working);
    session.model.calibratesClassic = session.working.useCalibration != 0;
    rebuildModel(session.model);
    return 0;
}

// The file's condition enters the model alone: the blocks keep theirs, and the next accepted condition puts them back.
ResultStatus loadNamedProfile(Session& session)
{
    session.profileFault.clear();
    auto pagesTake = [&](const ModelState& state) {
        ParameterBlock block = session.working;
        fetchFigures(block, state);
        session.profileFault = figureBeyondLimits(session.model, block);
        return session.profileFault.empty();
    };
    Model& model = session.model;
    if (loadProfile(session.screens, model.state, model.calibration, session.working, session.profilePath, pagesTake))
        return 1;
    memcpy(session.saved.profileFileName, session.working.profileFileName, sizeof session.saved.profileFileName);
    for (ParameterBlock* block : {&session.working, &session.saved}) {
        fetchProfile(*block, model.state);
        block->calibration = model.calibration;
    }
    rebuildModel(model);
    reportProfile(session.screens, Pane::upper, model.state, session.working, allProfileSections);
    session.formMarks.profile = false;
    return 0;
}

ResultStatus saveNamedProfile(Session& session)
{
    const Model& model = session.model;
    return saveProfile(session.screens, model.state, model.calibration, session.working, session.profilePath);
}

void startFrom(Session& session, const ParameterBlock& defaults)
{
    session.saved = session.working = defaults;
    session.model = modelOf(session.working);
}

Verdict confirmPage(Session& session, FormState& page)
{
    Verdict verdict = confirmForm(page, session.working);
    Marks marks = verdict.passed ? page.form->marks : Marks::nothing;
    session.formMarks.profile = session.formMarks.profile || marks == Marks::profile;
    session.formMarks.condition = session.formMarks.condition || marks == Marks::condition;
    return verdict;
}

Verdict confirmDialog(Session& session, FormState& dialog)
{
    Verdict verdict = confirmForm(dialog, session.working);
    if (verdict.passed) {
        session.inputs = dialog.inputs;
        session.preparation = dialog.preparation;
        session.calibration = dialog.calibration;
        session.plan = dialog.plan;
        if (dialog.saveAsDefault)
            keepEntries(dialog, session.kept);
    }
    return verdict;
}

void chooseCalculator(const Command& command, ParameterBlock& working)
{
    if (command.family == Family::theory)
        choose(working.theoryCalculator, working.theoryTarget, command.member);
    if (command.family == Family::ride)
        choose(working.rideMode, working.rideTarget, command.member);
}

} // namespace torvane
