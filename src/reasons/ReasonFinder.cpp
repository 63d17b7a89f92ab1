#include "reasons/ReasonFinder.h"

#include <optional>

#include "reasons/CodeReasons.h"
#include "reasons/CodeShapes.h"
#include "reasons/Findings.h"
#include "reasons/HintParty.h"
#include "reasons/InnerReply.h"
#include "reasons/NoticeReasons.h"
#include "reasons/Outcomes.h"
#include "reasons/PhraseReasons.h"
#include "reasons/ReplyDoubts.h"
#include "reasons/ReplyReading.h"
#include "reasons/Stage.h"
#include "reasons/TopicWords.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Whether what a hint or a vague code gave is so vague that a word may say better what it is
/// about.
bool mayHaveTopic(const ReasonFinding& finding) noexcept {
    // That of a refusal is vague even where its code agrees.
    const bool isRefusal = finding.basis == ReasonBasis::phrase && finding.reason == Reason::policy;
    if (finding.isSure && !isRefusal) return false;
    switch (finding.reason) {
        case Reason::unknownMailbox:
        case Reason::policy:
        case Reason::system:
        case Reason::other: return true;
        default: return false;
    }
}

/// What the words of a reply, its codes and its notice give as the reason, each by itself, and the
/// order in which they count.
class Candidates {
public:
    explicit Candidates(const ReplyReading& reading)
        : reading_(reading), text_(reading.reply.text), matches_(text_), notice_(reading) {}

    /// The first that there is; later ones are not looked for.
    ReasonFinding first() const {
        // Systems give wrong codes more often than wrong words.
        if (matches_.firstOf(PhraseKind::clear)) return ofClearWords();
        bool isTransient = isTransient_ || matches_.saysTemporary();
        // Definite codes say more than words that any failure may have ("access denied").
        if (const StatusRow* definite = reading_.codes.definite()) {
            return ofStatus(*definite, true, isTransient);
        }
        // The notice has the other lines.
        if (isFirstLineOnly(text_)) {
            const ReasonFinding quoted = notice_.ofQuotedReply(isTransient);
            if (quoted.isFound()) return quoted;
            isTransient = quoted.isTransient;
        }
        const ReasonFinding fair = phraseFinding(matches_, PhraseKind::fair, isTransient);
        if (fair.isFound()) return fair;
        if (const std::optional<PhraseRow> hint = matches_.firstOf(PhraseKind::hint)) {
            return ofHint(*hint, isTransient);
        }
        // The notice may speak of other recipients, or in general.
        const ReasonFinding noticed = notice_.ofAll(isTransient);
        if (noticed.isFound()) return noticed;
        // Other codes are given to any failure.
        return orTopic(ofVagueCodes(noticed.isTransient));
    }

private:
    ReasonFinding ofClearWords() const {
        const ReasonFinding front = ofClearWordsInFront();
        if (front.isFound()) return front;
        return clearWordsOf(matches_, text_);
    }

    ReasonFinding clearWordsOf(const PhraseMatches& matches, std::string_view text) const {
        const bool isTransient = isTransient_ || matches.saysTemporary();
        return reading_.codes.definite() ? phraseFinding(matches, PhraseKind::clear, isTransient)
                                         : judgedClearWords(matches, text, isTransient);
    }

    /// Words in front of "If you think that it was taken for spam" say more than those behind.
    ReasonFinding ofClearWordsInFront() const {
        const std::size_t advice = findBytesNoCase(text_, "if you ");
        if (advice == npos) return {};
        const std::string_view text = text_.substr(0, advice);
        const PhraseMatches front(text);
        ReasonFinding finding = clearWordsOf(front, text);
        if (mayBeAboutSender(text)) finding.isSure = false;
        return finding;
    }

    /// What words that only hint at why give, unless a vague code, or the notice that they
    /// introduce, says more.
    ReasonFinding ofHint(const PhraseRow& hint, bool isTransient) const {
        const GivenCodes& codes = reading_.codes;
        const Party party =
            partyOf(hint, text_, matches_.placeOfFirst(PhraseKind::hint), reading_.reply.address);
        const bool isNamed = party == Party::domain || party == Party::mailbox;
        const StatusRow* vague = codes.any();
        const bool isOwn = vague && !codes.isRestated(vague);
        if (isOwn && !isNamed && codes.sayMore(*vague, hint)) {
            return orTopic(ofStatus(*vague, false, isTransient));
        }
        if (!vague && codes.areMissing()) {
            const ReasonFinding noticed = hint.reason == Reason::system
                                              ? notice_.ofExplanation(isTransient)
                                              : notice_.ofQuotedReply(isTransient);
            if (noticed.isFound()) return noticed;
            isTransient = noticed.isTransient;
        }
        ReasonFinding finding = hintFinding(matches_, party, isTransient);
        // A hint and a code that agree are enough.
        if (isOwn && vague->reason == hint.reason) finding.isSure = true;
        return orTopic(finding);
    }

    /// What codes give that say little, or else that nothing says why.
    ReasonFinding ofVagueCodes(bool isTransient) const {
        if (const StatusRow* vague = reading_.codes.any()) {
            return ofStatus(*vague, false, isTransient);
        }
        if (const ReplyCodeRow* row = replyCodeRowOf(reading_.codes.reply())) {
            return placed(replyCodeFinding(*row, isTransient), reading_.codes.textCodes().reply,
                          text_);
        }
        return {.reason = Reason::other, .isTransient = isTransient};
    }

    ReasonFinding ofStatus(const StatusRow& row, bool isSure, bool isTransient) const {
        const GivenCodes& codes = reading_.codes;
        const bool isInText = &row == codes.textStatus();
        return placed(statusFinding(row, isSure, isTransient),
                      isInText ? codes.textCodes().status : std::string_view(), text_);
    }

    /// `finding`, or the word that says better what a refusal is about: "Refused (SPF)".
    ReasonFinding orTopic(ReasonFinding finding) const {
        if (!mayHaveTopic(finding)) return finding;
        const std::optional<Topic> topic = topicOf(text_);
        if (!topic) return finding;
        finding.reason = topic->row.reason;
        finding.basis = ReasonBasis::phrase;
        finding.at = topic->at;
        finding.length = topic->row.phrase.size();
        finding.row = topic->row.phrase;
        return finding;
    }

    const ReplyReading& reading_;
    std::string_view text_;
    PhraseMatches matches_;
    NoticeReasons notice_;
    /// Whether a later try may succeed, whatever the words say.
    bool isTransient_ = reading_.reply.outcome == Outcome::delayed || reading_.codes.areTemporary();
};

/// Whether a reply is that of a system which had no answer, to the end of its tries.
bool gaveUp(const Reply& reply) noexcept {
    return reply.outcome == Outcome::failed && (reply.status == "4.4.1" || reply.status == "4.4.2");
}

/// What all of the reply says, and its notice.
ReasonFinding reasonOfWhole(const Reply& reply, std::string_view notice) {
    const ReplyReading reading(reply, notice);
    ReasonFinding finding = doubted(Candidates(reading).first(), reading);
    if (finding.reason == Reason::unreachable && gaveUp(reply)) finding.reason = Reason::expired;
    return finding;
}

/// Whether nothing counts but `inner`: what stands in front has no words of its own, and was not
/// said of the sender.
bool isIntroduced(const InnerReply& inner) {
    return inner.isFound() && stageIn(inner.front) != Stage::sender && !explains(inner.front);
}

/// What `inner` says, however it is introduced.
ReasonFinding reasonOfInner(const Reply& reply, const InnerReply& inner) {
    Reply proper = reply;
    proper.text = inner.text.substr(inner.at);
    proper.codes.reset();
    // "550-'Unknown recipient [421]'"
    if (!inner.quotedCode.empty() && replyCodeLength(proper.text, 0) == 0) {
        proper.replyCode = inner.quotedCode;
        proper.codes = ReplyCodes{.reply = {}, .status = codesIn(proper.text).status};
    }
    if (contains(inner.text.substr(0, inner.at), reply.status)) proper.status = {};
    ReasonFinding finding = reasonOfWhole(proper, {});
    finding.isTransient = finding.isTransient || isTemporary(codesIn(inner.front).reply) ||
                          isTemporary(inner.quotedCode);
    if (finding.length == 0) return finding;
    finding.at += inner.at;
    finding.inNotice = inner.inNotice;
    return finding;
}

}  // namespace

ReasonFinding reasonOf(const Reply& reply, std::string_view notice) {
    if (!isTrouble(reply.outcome)) return {};
    const InnerReply inner = innerReplyOf(reply.text, notice);
    return isIntroduced(inner) ? reasonOfInner(reply, inner) : reasonOfWhole(reply, notice);
}

bool explains(std::string_view text) {
    return reasonOf({.text = text}).basis == ReasonBasis::phrase;
}

bool saysWhy(std::string_view text, std::string_view address) {
    const ReasonFinding finding = reasonOf({.text = text, .address = address});
    return finding.basis == ReasonBasis::phrase && finding.isSure &&
           finding.reason != Reason::system;
}

}  // namespace bouncecheck
