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
/// "550 5.1.1 <a@b.example>... User unknown", below the reply itself; older ones have no status.
bool restatesReply(std::string_view notice, std::size_t at) {
    const std::string_view line = lineAt(notice, at);
    return line.starts_with("550 ") && contains(line, "... ") && line.find('@') != npos &&
           contains(notice.substr(0, at), "\n<<< ");
}

}  // namespace

ReasonFinding NoticeReasons::ofQuotedReply(bool isTransient) const {
    if (codes().reply.empty()) return {.isTransient = isTransient};
    return ofExplanation(isTransient);
}

ReasonFinding NoticeReasons::ofExplanation(bool isTransient) const {
    isTransient = isTransient || saysTemporary();
    const ReasonFinding clear = judgedClearWordsOfNotice(matches(), reading_.notice, isTransient);
    if (clear.isFound()) return onlyNews(clear);
    return onlyNews(phraseFinding(matches(), PhraseKind::fair, isTransient));
}

ReasonFinding NoticeReasons::ofAll(bool isTransient) const {
    if (reading_.notice.empty()) return {.isTransient = isTransient};
    isTransient = isTransient || saysTemporary();
    const ReasonFinding clear = judgedClearWordsOfNotice(matches(), reading_.notice, isTransient);
    if (clear.isFound()) return onlyNews(clear);
    const ReasonFinding status = ofStatus(isTransient);
    if (status.isFound()) return status;
    const ReasonFinding fair = phraseFinding(matches(), PhraseKind::fair, isTransient);
    if (fair.isFound()) return onlyNews(fair);
    return ofHint(isTransient);
}

const ReplyCodes& NoticeReasons::codes() const {
    if (!codes_) codes_ = codesIn(reading_.notice);
    return *codes_;
}

const PhraseMatches& NoticeReasons::matches() const {
    if (!matches_) matches_.emplace(reading_.notice);
    return *matches_;
}

/// By the definite status of the notice, where the reply has none.
ReasonFinding NoticeReasons::ofStatus(bool isTransient) const {
    const StatusRow* row = statusRowOf(codes().status);
    const bool isDefinite = row && row->trust == Trust::definite;
    const bool isOnly = reading_.codes.areMissing() && !reading_.codes.hasField();
    if (!isDefinite || !isOnly) return {.isTransient = isTransient};
    ReasonFinding finding =
        placed(statusFinding(*row, isOfRecipient(), isTransient), codes().status, reading_.notice);
    finding.inNotice = true;
    return finding;
}

ReasonFinding NoticeReasons::ofHint(bool isTransient) const {
    const std::optional<PhraseRow> hint = matches().firstOf(PhraseKind::hint);
    if (!hint || !countsBeside(*hint)) return {.isTransient = isTransient};
    const Party party = partyOf(*hint, reading_.notice, matches().placeOfFirst(PhraseKind::hint),
                                reading_.reply.address);
    return onlyNews(hintFinding(matches(), party, isTransient));
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
    const bool hasCause = code && code->reason != Reason::system && code->reason != Reason::other;
    return hint.reason != Reason::policy || !hasCause;
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
bool NoticeReasons::saysTemporary() const {
    if (matches().saysTemporary()) return true;
    return reading_.codes.areMissing() &&
           isTemporary(codes().reply.empty() ? codes().status : codes().reply);
}

/// Whether the codes of the notice are those of a reply, "550 5.1.1", and the only ones, and
/// nobody else stands in their line. A status alone may be the version of a program.
bool NoticeReasons::isOfRecipient() const {
    const std::string_view notice = reading_.notice;
    const auto& [reply, status] = codes();
    const bool areTogether = !reply.empty() && reply.data() + reply.size() + 1 == status.data();
    if (!areTogether) return false;
    const auto end = static_cast<std::size_t>(status.data() - notice.data()) + status.size();
    const std::string_view next = codesIn(notice.substr(end)).status;
    if (!next.empty() && next != status) return false;
    const std::string_view line = lineAt(notice, end);
    return std::ranges::all_of(findAddresses(line), [&](const AddressSpan& span) {
        return ascii::equalsNoCase(span.in(line), reading_.reply.address);
    });
}

}  // namespace bouncecheck
