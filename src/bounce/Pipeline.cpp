#include <bouncecheck/classes/LogContextExitor.h>
#include "bounce/Checks.h"

namespace bouncecheck::checks {

int inOrder(const Evidence& evidence, Finding& finding, LogBase& log) {
    const auto run = [&](const char* name, auto check) {
        LogContextExitor context(log, name);
        return check(evidence, finding, log);
    };

    if (const int type = run("checkAVGMAIL", avgMail)) return type;
    if (const int type = run("checkSpecialCases1", specialCases1)) return type;

    bool mprNoBody = false;
    if (evidence.isReport) {
        LogContextExitor context(log, "checkMultipartReport");
        if (const int type = multipartReport(evidence, finding, log, mprNoBody)) return type;
    }
    if (const int type = run("checkSpecialSubjects", specialSubjects)) return type;
    if (const int type = run("checkSubjectList", subjectList)) return type;
    if (const int type = run("checkFromAddrList", fromAddrList)) return type;
    if (const int type = run("checkSpecialCases2", specialCases2)) return type;

    if (!evidence.isReport) return run("checkSpecialCases3", specialCases3);
    if (!mprNoBody) return run("checkEmailBody_mpr", emailBody);

    // A report with fields, but without an action that decides.
    Match match = evidence.data.firstOf(MailboxFullIndicators);
    if (!match) match = evidence.data.firstOf(NetworkProblems);
    if (match) return finding.decide("2.6", log, match);
    return finding.decide("1.8", log);
}

}  // namespace bouncecheck::checks
