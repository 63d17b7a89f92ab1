#include <optional>
#include <utility>
#include <vector>

#include <bouncecheck/classes/LogContextExitor.h>
#include "bounce/Checks.h"
#include "bounce/Marker.h"
#include "bounce/RecipientExtraction.h"
#include "mime/Entity.h"

namespace bouncecheck::checks {
namespace {

void fallBackToSender(const Evidence& evidence, Finding& finding) {
    if (!finding.address.isEmpty()) return;
    finding.address.set(evidence.senderAddress.view(), AddressSource::sender);
}

/// The first phrase of several lists, one list after the other.
template <class... Lists>
Match firstOfAny(const ScannedText& text, Lists... lists) {
    Match match;
    ((match = text.firstOf(lists)) || ...);
    return match;
}

/// An autoresponder of somebody who has left.
std::optional<int> decideByNoLongerValid(const Evidence& evidence, Finding& finding, LogBase& log) {
    const Match match = evidence.firstOf("6.8a");
    if (!match) return std::nullopt;
    StringBuffer address;
    if (!pickBefore(match.phrase, evidence.data.view(), address)) return std::nullopt;
    finding.address.set(address.view(), AddressSource::text);
    return finding.decide("6.8a", log, match);
}

/// What a text with a marker may be besides a plain bounce.
std::optional<int> decideNotice(const Evidence& evidence, Finding& finding, LogBase& log) {
    const ScannedText& data = evidence.data;
    if (const Match match = data.firstOf(VirusIndicators)) {
        return finding.decideLogged("10.1", log, match);
    }
    if (const Match match = data.firstOf(SenderBlockedIndicators)) {
        return finding.decideLogged("5.3", log, match);
    }
    if (const Match match =
            firstOfAny(data, ListId(MailboxFullIndicators), ListId(SoftBounceIndicators))) {
        return finding.decideLogged("2.3", log, match);
    }
    if (const Match match = evidence.subject.firstOf(VirusIndicators)) {
        return finding.decideLogged("10.1.1", log, match);
    }
    if (const AutoReplySign sign = autoReplySign(evidence, data, log)) {
        if (const Match match = evidence.firstOf("12.10")) {
            return finding.decide("12.10", log, match);
        }
        return finding.decide("6.8", log, sign.match);
    }
    return std::nullopt;
}

/// A bounce with its address: which kind.
int decideBounce(const Evidence& evidence, Finding& finding, LogBase& log) {
    const ScannedText& data = evidence.data;
    if (const Match match = firstOfAny(data, ListId(MailboxFullIndicators),
                                       ListId(SoftBounceIndicators), ListId(NetworkProblems))) {
        return finding.decideLogged("2.1", log, match);
    }
    if (const Match match = evidence.firstOf("2.1")) {
        log.LogData("matchedIndicator", "");  // of a list there is none
        return finding.decide("2.1", log, match);
    }
    if (const Match match = data.firstOf(SenderBlockedIndicators)) {
        return finding.decideLogged("5.1", log, match);
    }
    if (const Match match = data.firstOf(TransientIndicators)) {
        return finding.decideLogged("7.2", log, match);
    }
    if (const Match match = data.firstOf(SpamFilterIndicators)) {
        return finding.decideLogged("12.4", log, match);
    }
    // Soft-bounce phrases once more (2.4) would come here; 2.1 has taken them.
    return finding.decide("1.10", log);
}

/// The markers before a failed address. The first that is in the text makes it a
/// notice of some kind; the first with an address behind it, a bounce.
std::optional<int> decideByMarkers(const Evidence& evidence, Finding& finding, LogBase& log) {
    const auto decideOn = [&](MarkerOutcome outcome) -> std::optional<int> {
        if (outcome == MarkerOutcome::postmaster) {
            log.LogInfo("Postmaster is not the original recipient..");
        } else if (outcome == MarkerOutcome::candidate) {
            if (const auto type = decideNotice(evidence, finding, log)) return type;
            if (!finding.address.isEmpty()) return decideBounce(evidence, finding, log);
        }
        return std::nullopt;
    };
    BodyMemory* const known = evidence.memory();
    if (known && known->vainMarkers) {
        for (const MarkerOutcome outcome : *known->vainMarkers) {
            if (const auto type = decideOn(outcome)) return type;
        }
        return std::nullopt;
    }
    const ScannedText& data = evidence.data;
    FoundAddress& address = finding.address;
    MarkerCaptures captures(data.view());
    std::vector<MarkerOutcome> outcomes;
    for (std::size_t marker = 0; (marker = data.nextMarker(marker)) != npos; ++marker) {
        outcomes.push_back(captures.behind(Marker(BounceDataMarkers[marker]),
                                           data.markerPlace(marker), address.text));
        if (!address.isEmpty()) {
            address.source = AddressSource::text;
            address.marker = marker;
        }
        if (const auto type = decideOn(outcomes.back())) return type;
    }
    if (known) known->vainMarkers = std::move(outcomes);
    return std::nullopt;
}

int decideAutoReply(const Evidence& evidence, Finding& finding, LogBase& log,
                    const AutoReplySign& sign) {
    fallBackToSender(evidence, finding);
    if (finding.address.text.containsSubstringNoCase("postmaster")) finding.address.clear();
    if (const Match match = evidence.firstOf("12.7")) return finding.decide("12.7", log, match);
    if (const Match match = evidence.firstOf("1.9049")) {
        return finding.decide("1.9049", log, match);
    }
    return finding.decide("6.9", log, sign.match);
}

/// No address in sight: phrases that decide by themselves what the message is.
std::optional<int> decideByIndicators(const Evidence& evidence, Finding& finding, LogBase& log) {
    const ScannedText& data = evidence.data;
    const ScannedText& subject = evidence.subject;
    Match virus = data.firstOf(VirusIndicators);
    if (!virus) virus = subject.firstOf(VirusIndicators);
    if (virus) {
        if (contains(virus.phrase, "GFI MailSecurity")) fallBackToSender(evidence, finding);
        return finding.decide("10.2", log, virus);
    }
    if (const Match match = data.firstOf(CannotDetermineRecipientStrings)) {
        return finding.decide("3.2", log, match);
    }
    if (const AutoReplySign sign = autoReplySign(evidence, data, log)) {
        return decideAutoReply(evidence, finding, log, sign);
    }
    Match unsubscribe = data.firstOf(UnsubscribeBodyIndicators);
    if (!unsubscribe) unsubscribe = subject.firstOf(UnsubscribeSubjectIndicators);
    if (unsubscribe) {
        fallBackToSender(evidence, finding);
        log.LogData("MatchedUnsubscribeIndicator", unsubscribe.phrase);
        return finding.decide("9.1", log, unsubscribe);
    }
    if (const Match match = data.firstOf(TransientIndicators)) {
        return finding.decide("7.1", log, match);
    }
    if (const Match match = data.firstOf(SoftBounceIndicators)) {
        return finding.decide("2.5", log, match);
    }
    if (const Match match = data.firstOf(ScanIndicators)) {
        StringBuffer address;
        scanWords(evidence.dataBuffer, address);
        finding.address.set(address.view(), AddressSource::text);
        if (finding.address.isEmpty()) return std::nullopt;
        return finding.decide("1.11", log, match);
    }
    if (const Match match = data.firstOf(SpamFilterIndicators)) {
        return finding.decide("12.5", log, match);
    }
    return std::nullopt;
}

int decideByPlainBody(const Evidence& evidence, Finding& finding, LogBase& log) {
    const ScannedText& data = evidence.data;
    const std::string_view plainText = evidence.message.plainText().view();
    // Phrases of the data decide too, so those of a part of it need no look.
    const ScannedText own = evidence.scanned(TextOf::body, plainText);
    const ScannedText& body = evidence.isPartOfData(plainText) ? data : own;
    Match match = body.firstOf(MailboxFullIndicators);
    if (!match) match = data.firstOf(MailboxFullIndicators);
    if (!match) match = body.firstOf(SenderBlockedIndicators);
    if (!match) match = firstOfAny(data, ListId(NetworkProblems), ListId(SenderBlockedIndicators));
    if (match) return finding.decide("2.2", log, match);
    if (const Match abuse = evidence.subject.firstOf(AbuseIndicators)) {
        return finding.decide("15.2", log, abuse);
    }
    if (containsNoCase(evidence.subject.view(), "delay")) return finding.decide("7.10", log);
    if (const Match trouble = evidence.firstOf("2.14")) {
        return finding.decide("2.14", log, trouble);
    }
    return finding.decide("1.14", log);
}

/// The returned message gives the address; the text around it, the kind.
std::optional<int> decideByAttachedMessage(const Evidence& evidence, Finding& finding,
                                           LogBase& log) {
    BodyMemory* const known = evidence.memory();
    if (known && known->namesNoAttachedRecipient) return std::nullopt;
    if (!evidence.canOpenAttached) return BOUNCE_NONE;
    StringBuffer address;
    if (lookUpAttachedRecipient(evidence.message, address)) {
        finding.address.set(address.view(), AddressSource::returned);
        return decideByPlainBody(evidence, finding, log);
    }
    if (known) known->namesNoAttachedRecipient = true;
    return std::nullopt;
}

/// The last word: subjects and senders that bounces share with other mail.
int decideByRules(const Evidence& evidence, Finding& finding, LogBase& log) {
    if (const int type = lastResort(evidence, finding)) {
        log.LogDataLong("BounceType", type);
        return type;
    }
    // A report is left to the pipeline, which knows more about it.
    if (evidence.isReport) return BOUNCE_NONE;
    log.LogDataSb("m_sbBounceData", evidence.dataBuffer);
    return finding.decide("11.1", log);
}

}  // namespace

int emailBody(const Evidence& evidence, Finding& finding, LogBase& log) {
    LogContextExitor context(log, "checkEmailBody");
    finding.address.clear();
    if (const auto type = decideByNoLongerValid(evidence, finding, log)) return *type;
    if (const auto type = decideByMarkers(evidence, finding, log)) return *type;
    if (const auto type = decideByIndicators(evidence, finding, log)) return *type;
    if (const auto type = decideByAttachedMessage(evidence, finding, log)) return *type;
    return decideByRules(evidence, finding, log);
}

}  // namespace bouncecheck::checks
