#include "command/theory_command.h"

#include "model/theory.h"
#include "report/theory_report.h"

namespace torvane {

ResultStatus runTheory()
{
    theorySetUp();
    const ResultStatus calculated = theoryCalculate();
    reportTheoryResult(theScreens, calculated);
    if (calculated != 0) {
        return calculated;
    }
    const ResultStatus verified = theoryVerify();
    reportTheoryReal(theScreens, verified);
    return verified;
}

} // namespace torvane
