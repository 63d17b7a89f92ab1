#include "reasons/NoticeReasons.h"

#include <algorithm>
#include <optional>

#include "mime/AddressSpans.h"
#include "reasons/CodeReasons.h"
#include "reasons/Findings.h"
#include "reasons/HintParty.h"
#include "reasons/ReplyDoubts.h"
#include "text/Ascii.h"
#include "text/Lines.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Whether the byte `at` of `notice` is in what sendmail says for any reply 550 to a recipient:
/// "550 5.1.1 <a@b.example>... User unknown", below the reply itself.
bool restatesReply(std::string_view notice, std::size_t at) {
    const std::string_view line = lineAt(notice, at);
    return line.starts_with("550 5.1.1 <") && contains(line, ">... ") &&
           contains(notice.substr(0, at), "\n<<< ");
}

}  // namespace

ReasonFinding NoticeReasons::ofQuotedReply(bool isTransient) const {
    const ReplyCodes codes = codesIn(reading_.notice);
    if (codes.reply.empty()) return {.isTransient = isTransient};
    return explanation(codes, isTransient);
}

ReasonFinding NoticeReasons::ofExplanation(bool isTransient) const {
    return explanation(codesIn(reading_.notice), isTransient);
}

ReasonFinding NoticeReasons::explanation(const ReplyCodes& codes, bool isTransient) const {
    const PhraseMatches matches(reading_.notice);
    isTransient = isTransient || isTemporaryBy(matches, codes);
    ReasonFinding clear = phraseFinding(matches, PhraseKind::clear, isTransient);
    if (clear.isFound()) return onlyNews(clear);
    return onlyNews(phraseFinding(matches, PhraseKind::fair, isTransient));
}

ReasonFinding NoticeReasons::ofAll(bool isTransient) const {
    if (reading_.notice.empty()) return {.isTransient = isTransient};
    const PhraseMatches matches(reading_.notice);
    const ReplyCodes codes = codesIn(reading_.notice);
    isTransient = isTransient || isTemporaryBy(matches, codes);
    ReasonFinding clear = phraseFinding(matches, PhraseKind::clear, isTransient);
    if (clear.isFound()) {
        if (isQualified(clear, reading_.notice)) clear.isSure = false;
        return onlyNews(clear);
    }
    const ReasonFinding status = ofStatus(codes, isTransient);
    if (status.isFound()) return status;
    const ReasonFinding fair = phraseFinding(matches, PhraseKind::fair, isTransient);
    if (fair.isFound()) return onlyNews(fair);
    return ofHint(matches, isTransient);
}

/// By the definite status of the notice, where the reply has none.
ReasonFinding NoticeReasons::ofStatus(const ReplyCodes& codes, bool isTransient) const {
    const StatusRow* row = statusRowOf(codes.status);
    const bool isDefinite = row && row->trust == Trust::definite;
    const bool isOnly = reading_.codes.areMissing() && !reading_.codes.hasField();
    if (!isDefinite || !isOnly) return {.isTransient = isTransient};
    ReasonFinding finding = placed(statusFinding(*row, isOfRecipient(codes), isTransient),
                                   codes.status, reading_.notice);
    finding.inNotice = true;
    return finding;
}

ReasonFinding NoticeReasons::ofHint(const PhraseMatches& matches, bool isTransient) const {
    const std::optional<PhraseRow> hint = matches.firstOf(PhraseKind::weak);
    if (!hint || !countsBeside(*hint)) return {.isTransient = isTransient};
    const Party party = partyOf(*hint, reading_.notice, matches.placeOfFirst(PhraseKind::weak),
                                reading_.reply.address);
    return onlyNews(hintFinding(matches, party, isTransient));
}

/// Whether a hint of the notice says more than the codes of the reply.
bool NoticeReasons::countsBeside(const PhraseRow& hint) const {
    const GivenCodes& codes = reading_.codes;
    const StatusRow* vague = codes.textStatus();
    if (vague && codes.sayMore(*vague, hint)) return false;
    const ReplyCodeRow* code = replyCodeRowOf(codes.reply());
    // That the mail is late is no news beside any code, nor that it was refused beside one that
    // says why.
    if (hint.reason == Reason::expired) return !codes.any() && !code;
    const bool saysWhy = code && code->reason != Reason::system && code->reason != Reason::other;
    return hint.reason != Reason::policy || !saysWhy;
}

/// `finding`, or nothing where it says no more than the reply: of a mailbox that the reply itself
/// says nothing of, but has a code for something else.
ReasonFinding NoticeReasons::onlyNews(ReasonFinding finding) const {
    finding.inNotice = finding.isFound();
    if (!isAboutMailbox(finding.reason) || reading_.reply.text.empty()) return finding;
    const StatusRow* code = reading_.codes.textStatus();
    const bool isElsewhere = code && code->reason != Reason::other && !isAboutMailbox(code->reason);
    const bool isNews = !isElsewhere && !restatesReply(reading_.notice, finding.at);
    return isNews ? finding : ReasonFinding{.isTransient = finding.isTransient};
}

/// Whether the failure is for the time being by the words of the notice, or by its codes, where the
/// reply has none.
bool NoticeReasons::isTemporaryBy(const PhraseMatches& matches, const ReplyCodes& codes) const {
    if (matches.saysTemporary()) return true;
    return reading_.codes.areMissing() &&
           isTemporary(codes.reply.empty() ? codes.status : codes.reply);
}

/// Whether the codes of the notice are those of a reply, "550 5.1.1", and the only ones, and
/// nobody else stands in their line. A status alone may be the version of a program.
bool NoticeReasons::isOfRecipient(const ReplyCodes& codes) const {
    const std::string_view notice = reading_.notice;
    const bool areTogether =
        !codes.reply.empty() && codes.reply.data() + codes.reply.size() + 1 == codes.status.data();
    if (!areTogether) return false;
    const auto end =
        static_cast<std::size_t>(codes.status.data() - notice.data()) + codes.status.size();
    const std::string_view next = codesIn(notice.substr(end)).status;
    if (!next.empty() && next != codes.status) return false;
    const std::string_view line = lineAt(notice, end);
    return std::ranges::all_of(findAddresses(line), [&](const AddressSpan& span) {
        return ascii::equalsNoCase(span.in(line), reading_.reply.address);
    });
}

}  // namespace bouncecheck
