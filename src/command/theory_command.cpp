#include "command/theory_command.h"

#include "model/theory.h"
#include "report/theory_figures.h"
#include "report/theory_report.h"

namespace torvane {

namespace {

ResultStatus answer(Session& session, Theory& theory)
{
    ResultStatus calculated = theoryCalculate(session.model, theory);
    reportTheoryResult(session.screens, theory, calculated);
    if (!isFatal(calculated))
        addTheoryFigures(session.figures, theory);
    if (calculated != 0)
        return calculated;
    ResultStatus verified = theoryVerify(session.model, theory);
    if (!isFatal(verified))
        addRoadFigures(session.figures, theory);
    reportTheoryReal(session.screens, theory, verified);
    return verified;
}

} // namespace

ResultStatus runTheory(Session& session)
{
    Theory theory = theorySetUp(session.model, session.working);
    ResultStatus status = answer(session, theory);
    keepEvaluation(session.model.state, theory.road);
    return status;
}

} // namespace torvane
