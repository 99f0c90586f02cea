#include "command/theory_command.h"

#include "model/theory.h"
#include "report/theory_report.h"

namespace torvane {

ResultStatus runTheory(Session& session)
{
    theorySetUp();
    const ResultStatus calculated = theoryCalculate();
    reportTheoryResult(session.screens, calculated);
    if (calculated != 0) {
        return calculated;
    }
    const ResultStatus verified = theoryVerify();
    reportTheoryReal(session.screens, verified);
    return verified;
}

} // namespace torvane
