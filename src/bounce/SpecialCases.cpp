#include <algorithm>
#include <optional>
#include <string_view>

#include "bounce/BounceCheck.h"
#include "bounce/Verdict.h"
#include "bounce/tables/SenderBlockedIndicators.h"
#include "bounce/tables/providers.h"
#include "log/LogBase.h"
#include "mime/Email2.h"
#include "text/ByteSet.h"
#include "text/DataBuffer.h"

namespace bouncecheck {
namespace {

StringBuffer headerField(const Email2& email, const char* name, LogBase& log) {
    StringBuffer value;
    email.getHeaderFieldUtf8(name, value, log);
    return value;
}

bool hasField(const Email2& email, const char* name, LogBase& log) {
    return !headerField(email, name, log).isEmpty();
}

/// The first word of `text`, behind white space.
std::string_view firstWord(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const auto end = std::ranges::find_if(text, ascii::isSpace);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

}  // namespace

void BounceCheck::takeSender() { m_sbBounceAddr.setString(m_sbFromAddr); }

void BounceCheck::takeWord(std::string_view text, std::string_view unwanted) {
    const std::string_view word = firstWord(text);
    if (word.find('@') == npos) return;
    m_sbBounceAddr.setString(word);
    m_sbBounceAddr.removeAnyOf(ByteSet(unwanted));
    m_sbBounceAddr.trim2();
}

int BounceCheck::checkSpecialSubjects(Email2& email, LogBase& log) {
    if (const int type = checkSubjectForms(email, log)) return type;
    if (subjectPhrases().hasNoCase("confirmation") &&
        hasField(email, "X-WhiteList-Confirmation", log)) {
        takeSender();
        return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.1");
    }
    return BOUNCE_NONE;
}

/// Subjects of mail servers that name the failed address themselves.
int BounceCheck::checkSubjectForms(Email2& email, LogBase& log) {
    const std::string_view subject = m_sbSubject.view();
    const auto rest = [&](std::string_view form) { return subject.substr(form.size()); };

    constexpr std::string_view userUnknown = "Returned mail: User unknown:";
    if (subject.starts_with(userUnknown)) {
        const std::size_t bracket = subject.find('<');
        if (bracket == npos) return BOUNCE_NONE;
        m_sbBounceAddr.setString(subject.substr(bracket));
        m_sbBounceAddr.removeCharOccurances('<');
        m_sbBounceAddr.removeCharOccurances('>');
        m_sbBounceAddr.trim2();
        return decide(log, BOUNCE_HARD, "Bounce type 1.1");
    }
    constexpr std::string_view deliveryFailure = "Delivery failure (";
    if (subject.starts_with(deliveryFailure)) {
        m_sbBounceAddr.setString(rest(deliveryFailure));
        m_sbBounceAddr.removeCharOccurances(')');
        m_sbBounceAddr.trim2();
        return decide(log, BOUNCE_HARD, "Bounce type 1.2");
    }
    constexpr std::string_view unableToDeliver = "Unable to deliver to ";
    if (subject.starts_with(unableToDeliver)) {
        takeWord(rest(unableToDeliver), "");
        return decide(log, BOUNCE_HARD, "Bounce type 1.3");
    }
    constexpr std::string_view failureOfUser = "DELIVERY FAILURE: User ";
    if (subject.starts_with(failureOfUser)) {
        const std::string_view user = rest(failureOfUser);
        const std::size_t bracket = user.find('(');
        if (bracket != npos) takeWord(user.substr(bracket + 1), "()");
        return decide(log, BOUNCE_HARD, "Bounce type 1.4");
    }
    if (subject == "Invalid E-Mail Address") {
        m_sbBounceAddr.clear();
        email.getHeaderFieldUtf8("original-recipient", m_sbBounceAddr, log);
        m_sbBounceAddr.replaceAllOccurances("rfc822;", "");
        m_sbBounceAddr.trim2();
        if (!m_sbBounceAddr.isEmpty()) return decide(log, BOUNCE_HARD, "Bounce type 1.5");
    }
    return BOUNCE_NONE;
}

int BounceCheck::checkSpecialCases1(Email2& email, LogBase& log) {
    const PhraseScan& name = fromNamePhrases();
    const PhraseScan& sender = fromAddrPhrases();
    const PhraseScan& subject = subjectPhrases();
    const PhraseScan& data = dataPhrases();

    if (email.hasHeaderMatchingUtf8("X-Autoreply", "yes", true, log) ||
        name.hasNoCase("Autoresponder")) {
        email.getFromAddrUtf8(m_sbBounceAddr);
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.15");
    }
    if (m_sbFromAddr.equalsIgnoreCase(providers::aolMailerDaemon)) {
        if (const int type = checkAolBounce(log)) return type;
    }
    if (sender.hasNoCase(providers::challengeServiceSender)) {
        if (const int type = checkChallengeService(email, log)) return type;
    }

    if (name.has("Bluebottle Verification System") ||         //
        data.has("protected by Bluebottle") ||                //
        subject.has("My spam filter requires") ||             //
        name.has("Challenge Response") ||                     //
        sender.has("rfxnoreply") ||                           //
        data.has("one-time request to confirm") ||            //
        data.has("To authenticate your email, go to") ||      //
        (data.has("antispam") && data.has("captcha.jsp")) ||  //
        data.has("MailInBlack")) {
        if (m_sbBounceAddr.isEmpty()) takeSender();
        return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.11");
    }
    if (m_sbSubject.equalsIgnoreCase("Out of office") || name.hasNoCase("Auto-reply") ||
        data.has("We will get back to you within")) {
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.13");
    }
    return BOUNCE_NONE;
}

/// This provider's bounces end in the local part of the failed address.
int BounceCheck::checkAolBounce(LogBase& log) {
    const std::size_t colon = m_sbBounceData.view().rfind(':');
    if (colon == npos) {
        log.LogInfo("No colon found.");
        log.LogDataSb("sbBounceData", m_sbBounceData);
        return BOUNCE_NONE;
    }
    constexpr std::size_t longestLocalPart = 49;
    StringBuffer localPart;
    localPart.append(ascii::trim(m_sbBounceData.view().substr(colon + 1)));
    if (localPart.containsChar(' ') || localPart.containsChar('\n') ||
        localPart.view().size() > longestLocalPart) {
        log.LogInfo("No email address found in AOL bounce.");
        log.LogDataSb("sb", localPart);
        return BOUNCE_NONE;
    }
    m_sbBounceAddr.setString(localPart);
    m_sbBounceAddr.append("@");
    m_sbBounceAddr.append(providers::aolDomain);
    StringBuffer matched;
    if (containsIndicator(m_sbBounceData, SenderBlockedIndicators, matched)) {
        return decide(log, BOUNCE_BLOCKED, "Bounce type 5.AOL");
    }
    return decide(log, BOUNCE_HARD, "Bounce type 1.AOL");
}

int BounceCheck::checkChallengeService(Email2& email, LogBase& log) {
    if (m_sbFromName.containsChar('@')) {
        m_sbBounceAddr.setString(m_sbFromName);
        return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.6");
    }
    const StringBuffer errorsTo = headerField(email, "Errors-to", log);
    if (!errorsTo.containsSubstringNoCase(providers::challengeServiceNoReply)) return BOUNCE_NONE;
    if (subjectPhrases().has("(verification)")) {
        return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.8");
    }
    return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.1");
}

int BounceCheck::checkSpecialCases2(Email2& email, LogBase& log) {
    log.LogInfo("Checking specific headers...");
    if (email.hasHeaderMatchingUtf8("X-Autoreply", "yes", true, log)) {
        takeSender();
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.14");
    }
    if (hasField(email, "X-ChoiceMail-Registration-Request", log)) {
        takeSender();
        if (m_sbBounceAddr.containsSubstringNoCase("donotreply")) m_sbBounceAddr.clear();
        return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.2");
    }
    if (headerField(email, "Reply-To", log).containsSubstringNoCase("webmaster-confirm")) {
        checkEmailBody(email, log);  // for the address that it finds
        return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.3");
    }
    if (hasField(email, "X-DSNContext", log)) return checkEmailBody(email, log);
    if (headerField(email, "delivered-to", log).equalsIgnoreCase("autoresponder")) {
        takeSender();
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.2");
    }

    DataBuffer effectiveBody;
    email.getEffectiveBodyData(email, effectiveBody, log);
    const bool isKnown = effectiveBody.view() == m_sbBounceData.view();
    std::optional<PhraseScan> own;
    const PhraseScan& body = isKnown ? dataPhrases() : own.emplace(effectiveBody.view());
    if (body.hasNoCase("this is an auto response") ||
        body.hasNoCase("This is an automatic reply")) {
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.3");
    }
    if (body.hasNoCase(providers::challengeWebHost)) {
        log.LogInfo("Bounce type 12.12");
        if (m_sbBounceAddr.isEmpty()) email.getRecipientAddrUtf8(1, 0, m_sbBounceAddr);
        return BOUNCE_CHALLENGE;
    }
    return BOUNCE_NONE;
}

int BounceCheck::checkSpecialCases3(Email2& email, LogBase& log) {
    if (hasField(email, "X-Apple-Unsubscribe", log)) {
        takeSender();
        return decide(log, BOUNCE_UNSUBSCRIBE, "Bounce type 9.01");
    }
    // The value does not matter: "no" too is said by programs that answer.
    if (hasField(email, "Auto-Submitted", log)) {
        takeSender();
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.4");
    }
    if (headerField(email, "Precedence", log).equals("auto_reply")) {
        takeSender();
        if (dataPhrases().has("one-time inconvenience")) {
            return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.9");
        }
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.5");
    }
    if (headerField(email, "Reply-To", log).containsSubstringNoCase("challengereply")) {
        takeSender();
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.6");
    }
    if (fromAddrPhrases().hasNoCase("Autoresponder")) {
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.7");
    }
    return BOUNCE_NONE;
}

}  // namespace bouncecheck
