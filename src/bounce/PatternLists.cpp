#include <string_view>

#include "bounce/BounceCheck.h"
#include "bounce/tables/BounceFromAddrList.h"
#include "bounce/tables/BounceSubjectList.h"
#include "log/LogBase.h"
#include "text/CString.h"
#include "text/Wildcard.h"

namespace bouncecheck {
namespace {

/// A pattern with a '*' has to match the whole text, with letter case; one
/// without is a prefix.
bool matchesPattern(std::string_view text, const char* pattern, LetterCase ofPrefix) {
    return bxStrChr(pattern, '*') ? wildcardMatch(text, pattern, LetterCase::exact)
                                  : startsWith(text, pattern, ofPrefix);
}

}  // namespace

int BounceCheck::checkFromAddrList(Email2& email, LogBase& log) {
    log.LogInfo("Checking fromAddr...");
    // A postmaster who writes about an invoice is a person.
    if (fromAddrPhrases().hasNoCase("postmaster") && subjectPhrases().hasNoCase("invoice")) {
        return BOUNCE_NONE;
    }
    std::size_t next = 0;
    while ((next = fromAddrPhrases().nextPattern(BounceFromAddrList, next)) != npos) {
        const char* const pattern = BounceFromAddrList[next++];
        if (!matchesPattern(m_sbFromAddr.view(), pattern, LetterCase::exact)) continue;
        log.LogData("FromMatch", pattern);
        const int type = checkEmailBody(email, log);
        if (type == BOUNCE_NONE) continue;
        // A report is not unclassified: its own phrases decide it later.
        if (type == BOUNCE_UNCLASSIFIED && m_isMultipartReport) continue;
        log.LogInfo("Bounce type determined after checking email body..");
        log.LogDataLong("bType", type);
        return type;
    }
    return BOUNCE_NONE;
}

int BounceCheck::checkSubjectList(Email2& email, LogBase& log) {
    if (m_xSubject.getUtf8Sb().beginsWithIgnoreCaseN("Fwd:", 4)) return BOUNCE_NONE;
    long matched = 0;
    std::size_t next = 0;
    while ((next = subjectPhrases().nextPattern(BounceSubjectList, next)) != npos) {
        const char* const pattern = BounceSubjectList[next++];
        if (!matchesPattern(m_xSubject.view(), pattern, LetterCase::ignored)) continue;
        ++matched;
        log.LogData("SubjectMatch", pattern);
        const int type = checkEmailBody(email, log);
        if (type == BOUNCE_NONE) continue;
        log.LogInfo("Bounce type determined after checking email body.");
        log.LogDataLong("bType", type);
        return type;
    }
    log.LogDataLong("numSubjectsMatched", matched);
    return BOUNCE_NONE;
}

}  // namespace bouncecheck
