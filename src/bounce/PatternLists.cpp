#include <cstddef>
#include <string_view>

#include "bounce/Checks.h"
#include "text/Wildcard.h"

namespace bouncecheck::checks {
namespace {

/// A pattern with a '*' has to match the whole text, with letter case; one
/// without is a prefix.
bool matchesPattern(std::string_view text, const char* pattern, LetterCase ofPrefix) {
    return ascii::viewOf(pattern).find('*') != npos
               ? wildcardMatch(text, pattern, LetterCase::exact)
               : startsWith(text, pattern, ofPrefix);
}

}  // namespace

int fromAddrList(const Evidence& evidence, Finding& finding, LogBase& log) {
    log.LogInfo("Checking fromAddr...");
    // A postmaster who writes about an invoice is a person.
    if (evidence.firstOf("postmaster") && evidence.firstOf("invoice")) return BOUNCE_NONE;
    const ScannedText& sender = evidence.senderAddress;
    std::size_t next = 0;
    while ((next = sender.nextPattern(BounceFromAddrList, next)) != npos) {
        const std::size_t row = next++;
        const char* const pattern = BounceFromAddrList[row];
        if (!matchesPattern(sender.view(), pattern, LetterCase::exact)) continue;
        log.LogData("FromMatch", pattern);
        const int type = emailBody(evidence, finding, log);
        if (type == BOUNCE_NONE) continue;
        // A report is not unclassified: its own phrases decide it later.
        if (type == BOUNCE_UNCLASSIFIED && evidence.isReport) continue;
        finding.pattern = {"BounceFromAddrList", row, pattern, sender.kind()};
        log.LogInfo("Bounce type determined after checking email body..");
        log.LogDataLong("bType", type);
        return type;
    }
    return BOUNCE_NONE;
}

int subjectList(const Evidence& evidence, Finding& finding, LogBase& log) {
    const ScannedText& subject = evidence.subject;
    if (ascii::startsWithNoCase(subject.view(), "Fwd:")) return BOUNCE_NONE;
    long matched = 0;
    std::size_t next = 0;
    while ((next = subject.nextPattern(BounceSubjectList, next)) != npos) {
        const std::size_t row = next++;
        const char* const pattern = BounceSubjectList[row];
        if (!matchesPattern(subject.view(), pattern, LetterCase::ignored)) continue;
        ++matched;
        log.LogData("SubjectMatch", pattern);
        const int type = emailBody(evidence, finding, log);
        if (type == BOUNCE_NONE) continue;
        finding.pattern = {"BounceSubjectList", row, pattern, subject.kind()};
        log.LogInfo("Bounce type determined after checking email body.");
        log.LogDataLong("bType", type);
        return type;
    }
    log.LogDataLong("numSubjectsMatched", matched);
    return BOUNCE_NONE;
}

}  // namespace bouncecheck::checks
