// The FIT tools as commands: run, show, report.
#include "command/fit_tool_command.h"

#include "core/progress.h"
#include "fit/field_rows.h"
#include "fit/fit_tools.h"
#include "report/fit_report.h"

#include <optional>

namespace torvane {

namespace {

using ToolRun = ToolOutcome (*)(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress);

ResultStatus runTool(Session& session, ToolRun run)
{
    std::optional<Progress> progress(session.screens); // gone before anything is shown
    ToolOutcome outcome = run(session.inputs, session.working, &*progress);
    progress.reset();
    for (const Box& box : outcome.boxes)
        session.screens.showMessage(box.title, box.text);
    return outcome.reported ? reportStatus(session.screens, outcome.path, outcome.code) : outcome.code;
}

} // namespace

ResultStatus combineCommand(Session& session)
{
    return runTool(session, runCombine);
}

ResultStatus convertCommand(Session& session)
{
    return runTool(session, runConvert);
}

ResultStatus addMessagesCommand(Session& session)
{
    return runTool(session, runAddMessages);
}

ResultStatus divideCommand(Session& session)
{
    return runTool(session, runDivide);
}

ResultStatus excludeCommand(Session& session)
{
    return runTool(session, runExclude);
}

ResultStatus increaseTimestampCommand(Session& session)
{
    session.working.timestampOffset = timestampShift(session.working); // what the dialog opens with next
    return runTool(session, runTimestamp);
}

ResultStatus fieldDumpCommand(Session& session)
{
    ResultStatus result = runTool(session, runFieldDump);
    return result == fitOk && session.rows ? writeFieldRows(*session.rows, session.inputs.files[0].path) : result;
}

} // namespace torvane
