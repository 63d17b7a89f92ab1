#include "bounce/BounceCheck.h"
#include "bounce/PhraseSearch.h"
#include "bounce/tables/AutoReplyIndicators.h"
#include "bounce/tables/AutoReplySubjectIndicators.h"
#include "bounce/tables/providers.h"
#include "log/LogContextExitor.h"
#include "mime/Email2.h"

namespace bouncecheck {

bool BounceCheck::containsAutoReplyIndicator(Email2& email, StringBuffer& text,
                                             LogBase& log) const {
    LogContextExitor context(log, "CheckingForAutoReply");
    const auto found = [&](const char* line) {
        log.LogInfo(line);
        return true;
    };
    // People write "OUT OF OFFICE" and "autoreply" too, machines as in the list.
    if (PhraseSearch(text).firstOf(AutoReplyIndicators, LetterCase::exact)) {
        return found("Found auto-reply indicator in body.");
    }

    StringBuffer fromAddr;
    email.getFromAddrUtf8(fromAddr);
    const PhraseSearch sender(fromAddr);
    if (fromAddr.equals(providers::automaticAssistanceAddress) ||
        fromAddr.equals(providers::automatedResponseAddress) || sender.hasNoCase("listserv@")) {
        return found("Found auto-reply indicator (1)");
    }
    StringBuffer fromName;
    email.getFromNameUtf8(fromName, log);
    if (PhraseSearch(fromName).hasNoCase("auto response")) {
        return found("Found auto-reply indicator (2)");
    }

    // The subject as it came: the tags of spam filters are still in it.
    StringBuffer rawSubject;
    email.getSubjectUtf8(rawSubject, log);
    rawSubject.trim2();
    XString xSubject;
    xSubject.appendUtf8(rawSubject.view());
    StringBuffer ansiSubject;
    ansiSubject.append(xSubject.ansiView());
    const PhraseSearch subject(ansiSubject);
    if (subject.hasNoCase("Auto reply")) return found("Found auto-reply indicator (3)");
    if (sender.hasNoCase("postmaster") && subject.hasNoCase("Email changed")) {
        return found("Found auto-reply indicator (4)");
    }
    // What somebody forwards is not an answer, whatever its subject was.
    if (ansiSubject.beginsWithIgnoreCaseN("Fwd:", 4)) return false;
    if (subject.firstOf(AutoReplySubjectIndicators, LetterCase::ignored)) {
        return found("Found auto-reply indicator in subject.");
    }
    return false;
}

}  // namespace bouncecheck
