#include "command/operate.h"

#include "command/session.h"
#include "core/progress.h"

namespace torvane {

ResultStatus operate(const Command& command, Session& session)
{
    session.page.clear();
    try {
        return command.operation(session);
    } catch (const Stopped&) {
        session.takeFigures();
        session.graph.reset();
        session.page.clear();
        session.screens.setStatus("status : stopped");
        return statusStopped;
    }
}

} // namespace torvane
