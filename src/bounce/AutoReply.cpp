#include <optional>

#include "bounce/BounceCheck.h"
#include "bounce/tables/AutoReplyIndicators.h"
#include "bounce/tables/AutoReplySubjectIndicators.h"
#include "bounce/tables/providers.h"
#include "log/LogContextExitor.h"
#include "mime/Email2.h"

namespace bouncecheck {

bool BounceCheck::containsAutoReplyIndicator(Email2& email, StringBuffer& text,
                                             LogBase& log) const {
    LogContextExitor context(log, "CheckingForAutoReply");
    BodyMemory* const known = &text == &m_sbBounceData ? memory() : nullptr;
    const char* const line =
        known && known->autoReplyLine ? *known->autoReplyLine : autoReplyLine(email, text, log);
    if (known) known->autoReplyLine = line;
    if (line) log.LogInfo(line);
    return line != nullptr;
}

/// What tells that `email` with that text is an automatic reply, or null.
const char* BounceCheck::autoReplyLine(Email2& email, const StringBuffer& text,
                                       LogBase& log) const {
    // People write "OUT OF OFFICE" and "autoreply" too, machines as in the list.
    TextScan* known = scanOf(text);
    std::optional<PhraseScan> ownText;
    const PhraseScan& body = known ? known->phrases() : ownText.emplace(text.view());
    if (body.firstOf(AutoReplyIndicators, LetterCase::exact)) {
        return "Found auto-reply indicator in body.";
    }

    StringBuffer fromAddr;
    email.getFromAddrUtf8(fromAddr);
    if (fromAddr.equals(providers::automaticAssistanceAddress) ||
        fromAddr.equals(providers::automatedResponseAddress) ||
        fromAddr.containsSubstringNoCase("listserv@")) {
        return "Found auto-reply indicator (1)";
    }
    StringBuffer fromName;
    email.getFromNameUtf8(fromName, log);
    if (fromName.containsSubstringNoCase("auto response")) {
        return "Found auto-reply indicator (2)";
    }

    // The subject as it came: the tags of spam filters are still in it.
    StringBuffer rawSubject;
    email.getSubjectUtf8(rawSubject, log);
    rawSubject.trim2();
    const bool isKnown = rawSubject.equals(m_sbSubject);
    std::optional<PhraseScan> ownSubject;
    const PhraseScan& subject = isKnown ? subjectPhrases() : ownSubject.emplace(rawSubject.view());
    if (subject.hasNoCase("Auto reply")) return "Found auto-reply indicator (3)";
    if (fromAddr.containsSubstringNoCase("postmaster") && subject.hasNoCase("Email changed")) {
        return "Found auto-reply indicator (4)";
    }
    // What somebody forwards is not an answer, whatever its subject was.
    if (rawSubject.beginsWithIgnoreCaseN("Fwd:", 4)) return nullptr;
    if (subject.firstOf(AutoReplySubjectIndicators, LetterCase::ignored)) {
        return "Found auto-reply indicator in subject.";
    }
    return nullptr;
}

}  // namespace bouncecheck
