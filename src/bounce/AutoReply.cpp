#include <string>
#include <string_view>

#include <bouncecheck/classes/LogContextExitor.h>
#include "bounce/Checks.h"
#include "bounce/tables/providers.h"
#include "mime/Entity.h"
#include "text/Ascii.h"

namespace bouncecheck::checks {
namespace {

AutoReplySign signOf(const Evidence& evidence, const ScannedText& text) {
    // People write "OUT OF OFFICE" and "autoreply" too, machines as in the list.
    if (const Match match = text.firstOf(AutoReplyIndicators)) {
        return {"Found auto-reply indicator in body.", match};
    }

    const std::string_view sender = evidence.message.from().address;
    if (sender == providers::automaticAssistanceAddress ||
        sender == providers::automatedResponseAddress || containsNoCase(sender, "listserv@")) {
        return {"Found auto-reply indicator (1)", {}};
    }
    if (containsNoCase(evidence.message.from().name, "auto response")) {
        return {"Found auto-reply indicator (2)", {}};
    }

    // The subject as it came: the tags of spam filters are still in it.
    std::string room;
    const std::string_view rawSubject = ascii::trim(evidence.message.fieldIn("Subject", room));
    const bool isKnown = rawSubject == evidence.subject.view();
    const ScannedText own = evidence.scanned(TextOf::subject, rawSubject);
    const ScannedText& subject = isKnown ? evidence.subject : own;
    if (const Match match = subject.firstOf("auto reply")) {
        return {"Found auto-reply indicator (3)", match};
    }
    const Match newAddress = subject.firstOf("new address");
    if (newAddress && containsNoCase(sender, "postmaster")) {
        return {"Found auto-reply indicator (4)", newAddress};
    }
    // What somebody forwards is not an answer, whatever its subject was.
    if (ascii::startsWithNoCase(rawSubject, "Fwd:")) return {};
    if (const Match match = subject.firstOf(AutoReplySubjectIndicators)) {
        return {"Found auto-reply indicator in subject.", match};
    }
    return {};
}

}  // namespace

AutoReplySign autoReplySign(const Evidence& evidence, const ScannedText& text, LogBase& log) {
    LogContextExitor context(log, "CheckingForAutoReply");
    BodyMemory* const known = &text == &evidence.data ? evidence.memory() : nullptr;
    const AutoReplySign sign =
        known && known->autoReply ? *known->autoReply : signOf(evidence, text);
    if (known) known->autoReply = sign;
    if (sign) log.LogInfo(sign.line);
    return sign;
}

}  // namespace bouncecheck::checks
