// The FIT tools as commands: run, show, report.
#include "command/fit_tool_command.h"

#include "core/screens.h"
#include "fit/fit_tools.h"
#include "report/fit_report.h"

namespace torvane {

namespace {

using ToolRun = ToolOutcome (*)(ToolInputs& inputs, ParameterBlock& options);

ResultStatus runTool(ToolRun run)
{
    beginProgress();
    ToolOutcome outcome = run(toolInputs, workingBlock);
    endProgress();
    for (const Box& box : outcome.boxes)
        theScreens.showMessage(box.title, box.text);
    return outcome.reported ? reportStatus(theScreens, outcome.path, outcome.code) : outcome.code;
}

} // namespace

ResultStatus combineCommand()
{
    return runTool(runCombine);
}

ResultStatus convertCommand()
{
    return runTool(runConvert);
}

ResultStatus addMessagesCommand()
{
    return runTool(runAddMessages);
}

ResultStatus divideCommand()
{
    return runTool(runDivide);
}

ResultStatus excludeCommand()
{
    return runTool(runExclude);
}

ResultStatus increaseTimestampCommand()
{
    return runTool(runTimestamp);
}

ResultStatus fieldDumpCommand()
{
    return runTool(runFieldDump);
}

} // namespace torvane
