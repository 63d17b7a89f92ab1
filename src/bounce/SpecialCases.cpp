#include <algorithm>
#include <string>
#include <string_view>

#include "bounce/Checks.h"
#include "bounce/tables/providers.h"
#include "mime/Entity.h"
#include "text/Ascii.h"
#include "text/ByteSet.h"

namespace bouncecheck::checks {
namespace {

void takeSender(const Evidence& evidence, Finding& finding) {
    finding.address.set(evidence.senderAddress.view(), AddressSource::sender);
}

/// The first word of `text`, behind white space.
std::string_view firstWord(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const auto end = std::ranges::find_if(text, ascii::isSpace);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// Takes `text`, which is from the subject, without the `unwanted` bytes.
void takeFromSubject(std::string_view text, std::string_view unwanted, FoundAddress& address) {
    address.set(text, AddressSource::subject);
    address.text.removeAnyOf(unwanted);
    address.text.trim2();
}

/// Takes the first word of `text`, if it holds an '@'.
void takeWordFromSubject(std::string_view text, std::string_view unwanted, FoundAddress& address) {
    const std::string_view word = firstWord(text);
    if (word.find('@') != npos) takeFromSubject(word, unwanted, address);
}

/// Subjects of mail servers that name the failed address themselves.
int subjectForms(const Evidence& evidence, Finding& finding, LogBase& log) {
    const std::string_view subject = evidence.subject.view();
    FoundAddress& address = finding.address;
    const auto rest = [&](std::string_view form) { return subject.substr(form.size()); };

    if (subject.starts_with("Returned mail: User unknown:")) {
        const std::size_t bracket = subject.find('<');
        if (bracket == npos) return BOUNCE_NONE;
        takeFromSubject(subject.substr(bracket), "<>", address);
        return finding.decide("1.1", log);
    }
    constexpr std::string_view deliveryFailure = "Delivery failure (";
    if (subject.starts_with(deliveryFailure)) {
        takeFromSubject(rest(deliveryFailure), ")", address);
        return finding.decide("1.2", log);
    }
    constexpr std::string_view unableToDeliver = "Unable to deliver to ";
    if (subject.starts_with(unableToDeliver)) {
        takeWordFromSubject(rest(unableToDeliver), "", address);
        return finding.decide("1.3", log);
    }
    constexpr std::string_view failureOfUser = "DELIVERY FAILURE: User ";
    if (subject.starts_with(failureOfUser)) {
        const std::string_view user = rest(failureOfUser);
        const std::size_t bracket = user.find('(');
        if (bracket != npos) takeWordFromSubject(user.substr(bracket + 1), "()", address);
        return finding.decide("1.4", log);
    }
    if (subject == "Invalid E-Mail Address") {
        StringBuffer recipient;
        std::string room;
        recipient.append(evidence.message.fieldIn("Original-Recipient", room));
        recipient.replaceAllOccurances("rfc822;", "");
        recipient.trim2();
        address.set(recipient.view(), AddressSource::header);
        if (!address.isEmpty()) return finding.decide("1.5", log);
    }
    return BOUNCE_NONE;
}

/// This provider's bounces end in the local part of the failed address.
int aolBounce(const Evidence& evidence, Finding& finding, LogBase& log) {
    const std::size_t colon = evidence.data.view().rfind(':');
    if (colon == npos) {
        log.LogInfo("No colon found.");
        log.LogDataSb("sbBounceData", evidence.dataBuffer);
        return BOUNCE_NONE;
    }
    constexpr std::size_t longestLocalPart = 49;
    StringBuffer localPart;
    localPart.append(ascii::trim(evidence.data.view().substr(colon + 1)));
    if (localPart.containsChar(' ') || localPart.containsChar('\n') ||
        localPart.view().size() > longestLocalPart) {
        log.LogInfo("No email address found in AOL bounce.");
        log.LogDataSb("sb", localPart);
        return BOUNCE_NONE;
    }
    localPart.append("@");
    localPart.append(providers::aolDomain);
    finding.address.set(localPart.view(), AddressSource::text);
    if (const Match match = evidence.data.firstOf(SenderBlockedIndicators)) {
        return finding.decide("5.AOL", log, match);
    }
    return finding.decide("1.AOL", log);
}

int challengeService(const Evidence& evidence, Finding& finding, LogBase& log) {
    if (contains(evidence.senderName.view(), "@")) {
        finding.address.set(evidence.senderName.view(), AddressSource::sender);
        return finding.decide("12.6", log);
    }
    std::string room;
    const std::string_view errorsTo = evidence.message.fieldIn("Errors-To", room);
    if (!containsNoCase(errorsTo, providers::challengeServiceNoReply)) return BOUNCE_NONE;
    if (const Match match = evidence.firstOf("12.8")) return finding.decide("12.8", log, match);
    return finding.decide("6.1", log);
}

}  // namespace

int specialSubjects(const Evidence& evidence, Finding& finding, LogBase& log) {
    if (const int type = subjectForms(evidence, finding, log)) return type;
    const Match match = evidence.firstOf("12.1");
    if (match && evidence.message.hasField("X-WhiteList-Confirmation")) {
        takeSender(evidence, finding);
        return finding.decide("12.1", log, match);
    }
    return BOUNCE_NONE;
}

int specialCases1(const Evidence& evidence, Finding& finding, LogBase& log) {
    const bool isAutoReply =
        evidence.message.hasFieldMatching("X-Autoreply", "yes", LetterCase::ignored);
    const Match autoresponder = isAutoReply ? Match() : evidence.firstOf("6.15");
    if (isAutoReply || autoresponder) {
        finding.address.set(evidence.message.from().address, AddressSource::sender);
        return finding.decide("6.15", log, autoresponder);
    }
    if (ascii::equalsNoCase(evidence.senderAddress.view(), providers::aolMailerDaemon)) {
        if (const int type = aolBounce(evidence, finding, log)) return type;
    }
    if (evidence.firstOf("challenge service")) {
        if (const int type = challengeService(evidence, finding, log)) return type;
    }
    if (const Match match = evidence.firstOf("12.11")) {
        if (finding.address.isEmpty()) takeSender(evidence, finding);
        return finding.decide("12.11", log, match);
    }
    const bool isOutOfOffice = ascii::equalsNoCase(evidence.subject.view(), "Out of office");
    const Match away = isOutOfOffice ? Match() : evidence.firstOf("6.13");
    if (isOutOfOffice || away) return finding.decide("6.13", log, away);
    return BOUNCE_NONE;
}

int specialCases2(const Evidence& evidence, Finding& finding, LogBase& log) {
    log.LogInfo("Checking specific headers...");
    std::string room;
    if (evidence.message.hasFieldMatching("X-Autoreply", "yes", LetterCase::ignored)) {
        takeSender(evidence, finding);
        return finding.decide("6.14", log);
    }
    if (evidence.message.hasField("X-ChoiceMail-Registration-Request")) {
        takeSender(evidence, finding);
        if (finding.address.text.containsSubstringNoCase("donotreply")) finding.address.clear();
        return finding.decide("12.2", log);
    }
    if (containsNoCase(evidence.message.fieldIn("Reply-To", room), "webmaster-confirm")) {
        emailBody(evidence, finding, log);  // for the address that it finds
        return finding.decide("12.3", log);
    }
    if (evidence.message.hasField("X-DSNContext")) return emailBody(evidence, finding, log);
    if (ascii::equalsNoCase(evidence.message.fieldIn("Delivered-To", room), "autoresponder")) {
        takeSender(evidence, finding);
        return finding.decide("6.2", log);
    }

    const std::string_view effectiveBody = evidence.message.effectiveBody().view();
    const bool isKnown = effectiveBody == evidence.data.view();
    const ScannedText own = evidence.scanned(TextOf::body, effectiveBody);
    const ScannedText& body = isKnown ? evidence.data : own;
    if (const Match match = body.firstOf("6.3")) return finding.decide("6.3", log, match);
    if (const Match match = body.firstOf("12.12")) {
        if (finding.address.isEmpty()) {
            finding.address.set(evidence.message.recipient("To", 0), AddressSource::header);
        }
        return finding.decide("12.12", log, match);
    }
    return BOUNCE_NONE;
}

int specialCases3(const Evidence& evidence, Finding& finding, LogBase& log) {
    if (evidence.message.hasField("X-Apple-Unsubscribe")) {
        takeSender(evidence, finding);
        return finding.decide("9.01", log);
    }
    // The value does not matter: "no" too is said by programs that answer.
    if (evidence.message.hasField("Auto-Submitted")) {
        takeSender(evidence, finding);
        return finding.decide("6.4", log);
    }
    std::string room;
    if (evidence.message.fieldIn("Precedence", room) == "auto_reply") {
        takeSender(evidence, finding);
        if (const Match match = evidence.firstOf("12.9")) {
            return finding.decide("12.9", log, match);
        }
        return finding.decide("6.5", log);
    }
    if (containsNoCase(evidence.message.fieldIn("Reply-To", room), "challengereply")) {
        takeSender(evidence, finding);
        return finding.decide("6.6", log);
    }
    if (const Match match = evidence.firstOf("6.7")) return finding.decide("6.7", log, match);
    return BOUNCE_NONE;
}

}  // namespace bouncecheck::checks
