#include <optional>
#include <utility>
#include <vector>

#include "bounce/BounceCheck.h"
#include "bounce/Marker.h"
#include "bounce/RecipientExtraction.h"
#include "bounce/Verdict.h"
#include "bounce/tables/AbuseIndicators.h"
#include "bounce/tables/BounceRules.h"
#include "bounce/tables/CannotDetermineRecipientStrings.h"
#include "bounce/tables/MailboxFullIndicators.h"
#include "bounce/tables/NetworkProblems.h"
#include "bounce/tables/ScanIndicators.h"
#include "bounce/tables/SenderBlockedIndicators.h"
#include "bounce/tables/SoftBounceAndVirusIndicators.h"
#include "bounce/tables/SpamFilterIndicators.h"
#include "bounce/tables/TransientIndicators.h"
#include "bounce/tables/UnsubscribeBodyIndicators.h"
#include "bounce/tables/UnsubscribeSubjectIndicators.h"
#include "log/LogContextExitor.h"
#include "mime/Email2.h"

namespace bouncecheck {
namespace {

/// `decide`, with the phrase that was found.
int decideMatched(LogBase& log, BounceType type, const char* line, const StringBuffer& matched) {
    log.LogDataSb("matchedIndicator", matched);
    return decide(log, type, line);
}

}  // namespace

int BounceCheck::checkEmailBody(Email2& email, LogBase& log) {
    LogContextExitor context(log, "checkEmailBody");
    m_sbBounceAddr.clear();
    if (const auto type = decideByNoLongerValid(log)) return *type;
    if (const auto type = decideByMarkers(email, log)) return *type;
    if (const auto type = decideByIndicators(email, log)) return *type;
    if (const auto type = decideByAttachedMessage(email, log)) return *type;
    return decideByRules(log);
}

void BounceCheck::fallBackToSender() {
    if (m_sbBounceAddr.isEmpty()) m_sbBounceAddr.setString(m_sbFromAddr);
}

/// An autoresponder of somebody who has left.
std::optional<int> BounceCheck::decideByNoLongerValid(LogBase& log) {
    if (!dataPhrases().has(noLongerValid)) return std::nullopt;
    if (!pickBeforeNoLongerValid(m_sbBounceData.view(), m_sbBounceAddr)) return std::nullopt;
    return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.8a");
}

/// The markers before a failed address. The first that is in the text makes it a
/// notice of some kind; the first with an address behind it, a bounce.
std::optional<int> BounceCheck::decideByMarkers(Email2& email, LogBase& log) {
    const auto decideOn = [&](MarkerOutcome outcome) -> std::optional<int> {
        if (outcome == MarkerOutcome::postmaster) {
            log.LogInfo("Postmaster is not the original recipient..");
        } else if (outcome == MarkerOutcome::candidate) {
            if (const auto type = decideNotice(email, log)) return type;
            if (!m_sbBounceAddr.isEmpty()) return decideBounce(log);
        }
        return std::nullopt;
    };
    BodyMemory* const known = memory();
    if (known && known->vainMarkers) {
        for (const MarkerOutcome outcome : *known->vainMarkers) {
            if (const auto type = decideOn(outcome)) return type;
        }
        return std::nullopt;
    }
    const PhraseScan& phrases = dataPhrases();
    MarkerCaptures captures(phrases.text());
    std::vector<MarkerOutcome> outcomes;
    for (std::size_t marker = 0; (marker = phrases.nextMarker(marker)) != npos; ++marker) {
        outcomes.push_back(captures.behind(Marker(BounceDataMarkers[marker]),
                                           phrases.markerPlace(marker), m_sbBounceAddr));
        if (const auto type = decideOn(outcomes.back())) return type;
    }
    if (known) known->vainMarkers = std::move(outcomes);
    return std::nullopt;
}

/// What a text with a marker may be besides a plain bounce.
std::optional<int> BounceCheck::decideNotice(Email2& email, LogBase& log) {
    StringBuffer matched;
    if (containsIndicator(m_sbBounceData, VirusIndicators, matched)) {
        return decideMatched(log, BOUNCE_VIRUS, "Bounce type 10.1", matched);
    }
    if (containsIndicator(m_sbBounceData, SenderBlockedIndicators, matched)) {
        return decideMatched(log, BOUNCE_BLOCKED, "Bounce type 5.3", matched);
    }
    if (containsIndicator(m_sbBounceData, MailboxFullIndicators, matched) ||
        containsIndicator(m_sbBounceData, SoftBounceIndicators, matched)) {
        return decideMatched(log, BOUNCE_SOFT, "Bounce type 2.3", matched);
    }
    if (containsIndicator(m_sbSubject, VirusIndicators, matched)) {
        return decideMatched(log, BOUNCE_VIRUS, "Bounce type 10.1.1", matched);
    }
    if (containsAutoReplyIndicator(email, m_sbBounceData, log)) {
        if (subjectPhrases().has("Please confirm")) {
            return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.10");
        }
        return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.8");
    }
    return std::nullopt;
}

/// A bounce with its address: which kind.
int BounceCheck::decideBounce(LogBase& log) {
    StringBuffer matched;
    const PhraseScan& data = dataPhrases();
    if (containsIndicator(m_sbBounceData, MailboxFullIndicators, matched) ||
        containsIndicator(m_sbBounceData, SoftBounceIndicators, matched) ||
        containsIndicator(m_sbBounceData, NetworkProblems, matched) ||
        data.hasNoCase("Temporary local problem") || data.hasNoCase("please try later") ||
        data.hasNoCase("451 Temporary") || data.hasNoCase("Status: 4.4.1")) {
        return decideMatched(log, BOUNCE_SOFT, "Bounce type 2.1", matched);
    }
    if (containsIndicator(m_sbBounceData, SenderBlockedIndicators, matched)) {
        return decideMatched(log, BOUNCE_BLOCKED, "Bounce type 5.1", matched);
    }
    if (containsIndicator(m_sbBounceData, TransientIndicators, matched)) {
        return decideMatched(log, BOUNCE_TRANSIENT, "Bounce type 7.2", matched);
    }
    if (containsIndicator(m_sbBounceData, SpamFilterIndicators, matched)) {
        return decideMatched(log, BOUNCE_CHALLENGE, "Bounce type 12.4", matched);
    }
    // Soft-bounce phrases once more (2.4) would come here; 2.1 has taken them.
    return decide(log, BOUNCE_HARD, "Bounce type 1.10");
}

/// No address in sight: phrases that tell the kind of message by themselves.
std::optional<int> BounceCheck::decideByIndicators(Email2& email, LogBase& log) {
    StringBuffer matched;
    if (containsIndicator(m_sbBounceData, VirusIndicators, matched) ||
        containsIndicator(m_sbSubject, VirusIndicators, matched)) {
        if (matched.containsSubstring("GFI MailSecurity")) fallBackToSender();
        return decide(log, BOUNCE_VIRUS, "Bounce type 10.2");
    }
    if (containsIndicator(m_sbBounceData, CannotDetermineRecipientStrings, matched)) {
        return decide(log, BOUNCE_NO_RECIPIENT, "Bounce type 3.2");
    }
    if (containsAutoReplyIndicator(email, m_sbBounceData, log)) return decideAutoReply(log);
    if (containsIndicator(m_sbBounceData, UnsubscribeBodyIndicators, matched) ||
        containsIndicator(m_sbSubject, UnsubscribeSubjectIndicators, matched)) {
        fallBackToSender();
        log.LogData("MatchedUnsubscribeIndicator", matched.getString());
        return decide(log, BOUNCE_UNSUBSCRIBE, "Bounce type 9.1");
    }
    if (containsIndicator(m_sbBounceData, TransientIndicators, matched)) {
        return decide(log, BOUNCE_TRANSIENT, "Bounce type 7.1");
    }
    if (containsIndicator(m_sbBounceData, SoftBounceIndicators, matched)) {
        return decide(log, BOUNCE_SOFT, "Bounce type 2.5");
    }
    if (containsIndicator(m_sbBounceData, ScanIndicators, matched)) {
        scanWords(m_sbBounceData, m_sbBounceAddr);
        if (m_sbBounceAddr.isEmpty()) return std::nullopt;
        return decide(log, BOUNCE_HARD, "Bounce type 1.11");
    }
    if (containsIndicator(m_sbBounceData, SpamFilterIndicators, matched)) {
        return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.5");
    }
    return std::nullopt;
}

int BounceCheck::decideAutoReply(LogBase& log) {
    fallBackToSender();
    if (m_sbBounceAddr.containsSubstringNoCase("postmaster")) m_sbBounceAddr.clear();
    const PhraseScan& data = dataPhrases();
    if (data.has("Sender Address Verification")) {
        return decide(log, BOUNCE_CHALLENGE, "Bounce type 12.7");
    }
    if (data.has("account is inactive")) return decide(log, BOUNCE_HARD, "Bounce type 1.9049");
    return decide(log, BOUNCE_AUTO_REPLY, "Bounce type 6.9");
}

/// The returned message tells the address; the text around it, the kind.
std::optional<int> BounceCheck::decideByAttachedMessage(Email2& email, LogBase& log) {
    BodyMemory* const known = memory();
    if (known && known->namesNoAttachedRecipient) return std::nullopt;
    switch (lookUpAttachedRecipient(email, m_sbBounceAddr)) {
        case AttachedRecipient::noCertStore: return BOUNCE_NONE;
        case AttachedRecipient::none:
            if (known) known->namesNoAttachedRecipient = true;
            return std::nullopt;
        case AttachedRecipient::found: return decideByPlainBody(email, log);
    }
    return std::nullopt;
}

int BounceCheck::decideByPlainBody(Email2& email, LogBase& log) {
    const std::string_view body = email.plainTextBody().view();
    StringBuffer matched;
    // Phrases of the bounce data decide too, so those of a part of it need no look.
    std::optional<PhraseScan> own;
    const PhraseScan& bodyPhrases = isPartOfBounceData(body) ? dataPhrases() : own.emplace(body);
    if (findIndicator(bodyPhrases, MailboxFullIndicators, matched) ||
        containsIndicator(m_sbBounceData, MailboxFullIndicators, matched) ||
        findIndicator(bodyPhrases, SenderBlockedIndicators, matched) ||
        containsIndicator(m_sbBounceData, NetworkProblems, matched) ||
        containsIndicator(m_sbBounceData, SenderBlockedIndicators, matched)) {
        return decide(log, BOUNCE_SOFT, "Bounce type 2.2");
    }
    if (containsIndicator(m_sbSubject, AbuseIndicators, matched)) {
        return decide(log, BOUNCE_ABUSE, "Bounce type 15.2");
    }
    if (m_sbSubject.containsSubstringNoCase("delay")) {
        return decide(log, BOUNCE_TRANSIENT, "Bounce type 7.10");
    }
    if (dataPhrases().hasNoCase("452 4.1.1")) {
        return decide(log, BOUNCE_SOFT, "Bounce type 2.14");
    }
    return decide(log, BOUNCE_HARD, "Bounce type 1.14");
}

/// The last word: subjects and senders that bounces share with other mail.
int BounceCheck::decideByRules(LogBase& log) {
    int ruleIndex = 0;
    if (const int type = applyRules(BounceRules, ruleIndex, log)) {
        log.LogDataLong("BounceType", type);
        return type;
    }
    // A report is left to the pipeline, which knows more about it.
    if (m_isMultipartReport) return BOUNCE_NONE;
    log.LogDataSb("m_sbBounceData", m_sbBounceData);
    return decide(log, BOUNCE_UNCLASSIFIED, "Bounce type 11.1");
}

}  // namespace bouncecheck
