#include "bounce/BounceCheck.h"
#include "bounce/Verdict.h"
#include "bounce/tables/MailboxFullIndicators.h"
#include "bounce/tables/NetworkProblems.h"
#include "log/LogContextExitor.h"

namespace bouncecheck {

int BounceCheck::checkEmailInner(Email2& email, LogBase& log) {
    const auto run = [&](const char* name, int (BounceCheck::*check)(Email2&, LogBase&)) {
        LogContextExitor context(log, name);
        return (this->*check)(email, log);
    };

    if (int type = run("checkAVGMAIL", &BounceCheck::checkAVGMAIL)) return type;
    if (int type = run("checkSpecialCases1", &BounceCheck::checkSpecialCases1)) return type;

    bool mprNoBody = false;
    if (m_isMultipartReport) {
        LogContextExitor context(log, "checkMultipartReport");
        if (int type = checkMultipartReport(email, log, mprNoBody)) return type;
    }
    if (int type = run("checkSpecialSubjects", &BounceCheck::checkSpecialSubjects)) return type;
    if (int type = run("checkSubjectList", &BounceCheck::checkSubjectList)) return type;
    if (int type = run("checkFromAddrList", &BounceCheck::checkFromAddrList)) return type;
    if (int type = run("checkSpecialCases2", &BounceCheck::checkSpecialCases2)) return type;

    if (!m_isMultipartReport) return run("checkSpecialCases3", &BounceCheck::checkSpecialCases3);
    if (!mprNoBody) return run("checkEmailBody_mpr", &BounceCheck::checkEmailBody);

    // A report with fields, but without an action that decides.
    StringBuffer matched;
    if (containsIndicator(m_sbBounceData, MailboxFullIndicators, matched) ||
        containsIndicator(m_sbBounceData, NetworkProblems, matched)) {
        return decide(log, BOUNCE_SOFT, "Bounce type 2.6");
    }
    return decide(log, BOUNCE_HARD, "Bounce type 1.8");
}

}  // namespace bouncecheck
