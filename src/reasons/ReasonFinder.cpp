#include "reasons/ReasonFinder.h"

#include <algorithm>
#include <array>
#include <optional>

#include "mime/AddressSpans.h"
#include "reasons/CodeReasons.h"
#include "reasons/CodeShapes.h"
#include "reasons/GivenCodes.h"
#include "reasons/HintParty.h"
#include "reasons/NamedParty.h"
#include "reasons/PhraseReasons.h"
#include "reasons/TopicWords.h"
#include "reasons/tables/PartyNames.h"
#include "text/Ascii.h"
#include "text/Lines.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Whether a vague code for one reason says more than a hint at another. Policy and a system at
/// fault are what such codes stand for where there is no better one.
bool countsBefore(Reason code, Reason hint) noexcept {
    if (code == hint || code == Reason::system) return false;
    return code != Reason::policy || hint == Reason::unknownMailbox;
}

/// The paragraph of `text`, in CRLF, that the byte `at` is in.
std::string_view paragraphAt(std::string_view text, std::size_t at) {
    constexpr std::string_view blankLine = "\r\n\r\n";
    const std::size_t before = text.substr(0, at).rfind(blankLine);
    const std::size_t begin = before == npos ? 0 : before;
    return text.substr(begin, std::min(text.find(blankLine, at), text.size()) - begin);
}

/// Whether the byte `at` of `notice` is in what sendmail says for any reply 550 to a recipient:
/// "550 5.1.1 <a@b.example>... User unknown", below the reply itself.
bool restatesReply(std::string_view notice, std::size_t at) {
    const std::string_view line = lineAt(notice, at);
    return line.starts_with("550 5.1.1 <") && contains(line, ">... ") &&
           contains(notice.substr(0, at), "\n<<< ");
}

/// What has been found of a reply, in the order in which it counts.
class Search {
public:
    Search(const Reply& reply, std::string_view notice) : reply_(reply), codes_(reply) {
        found_.isTransient = reply.outcome == Outcome::delayed || codes_.areTemporary();
        find(notice);
        if (mayHaveTopic()) takeTopic();
        found_.isSure = found_.isSure && !codes_.areAboutElse(found_.reason);
        // A host that is named by its address has no mailboxes.
        const bool mayBeOfHost =
            found_.reason == Reason::unknownDomain || found_.reason == Reason::inactiveMailbox;
        if (mayBeOfHost && found_.length > 0 && !found_.inNotice &&
            isSaidOfHost(reply.text, found_.at, found_.length)) {
            found_.reason = Reason::reputation;
        }
        if (isAboutMailbox(found_.reason) && isAboutSender(notice)) {
            found_.reason = Reason::policy;
            found_.isSure = false;
        }
        // No answer, to the end of the tries.
        const bool gaveUp = reply.outcome == Outcome::failed &&
                            (reply.status == "4.4.1" || reply.status == "4.4.2");
        if (gaveUp && found_.reason == Reason::unreachable) found_.reason = Reason::expired;
    }

    const ReasonFinding& found() const noexcept { return found_; }

private:
    /// Whether the mail was refused for its sender, before any recipient was named.
    bool isAboutSender(std::string_view notice) const {
        const std::string_view where =
            found_.inNotice ? paragraphAt(notice, found_.at) : reply_.text;
        if (codes_.areAboutSender() || codes_.areAboutLogin()) return true;
        const bool isInReply = !found_.inNotice && found_.length > 0;
        if (isInReply && isSaidOfSender(reply_.text, found_.at)) return true;
        return stageIn(where) == Stage::sender && !isSaidOfRecipient();
    }

    /// Whether the recipient's address stands right beside the words.
    bool isSaidOfRecipient() const {
        if (found_.inNotice || found_.length == 0 || reply_.address.empty()) return false;
        const std::string_view text = reply_.text;
        const std::size_t end = found_.at + found_.length;
        const std::size_t reach = reply_.address.size() + std::size("... <:>");
        const std::size_t begin = found_.at < reach ? 0 : found_.at - reach;
        return findBytesNoCase(text.substr(begin, end + reach - begin), reply_.address) != npos;
    }

    /// Takes words in front of "If you think that it was taken for spam", which are more than those
    /// behind.
    bool takeInFront() {
        const std::size_t end = findBytesNoCase(reply_.text, "if you ");
        if (end == npos) return false;
        const PhraseMatches matches(reply_.text.substr(0, end));
        if (!take(matches, PhraseKind::clear, false)) return false;
        noteDuration(matches);
        // "Unknown user or sender refused"
        if (contains(matches.plain(), " or ") || containsNoCase(matches.plain(), "sender")) {
            found_.isSure = false;
        }
        return true;
    }

    /// Whether words behind those about a mailbox name another cause ("user unknown or access
    /// denied") or why it is not known ("user not found: LDAP timeout").
    bool saysAlternative(const PhraseMatches& matches) const {
        if (!isAboutMailbox(found_.reason)) return false;
        const std::size_t end = found_.at + found_.length;
        const std::string_view behind = reply_.text.substr(end);
        const bool hasOr = ascii::startsWithNoCase(behind, " or ");
        const bool isDomain = found_.reason == Reason::unknownDomain;
        const std::optional<Topic> topic = topicOf(isDomain ? reply_.text : behind);
        // "SPF: domain not found", "No such user in SPF", but "If you get spam from us"
        if (topic && topic->row.reason != Reason::content) return true;
        const auto isElse = [&](PhraseKind kind) {
            const std::optional<PhraseRow> row = matches.firstOf(kind);
            if (!row || isAboutMailbox(row->reason)) return false;
            if (hasOr) return true;
            // "Mailbox unavailable" is said of any, "host not found" of what a name server says.
            const bool isFailure = row->reason == Reason::unreachable ||
                                   (row->reason == Reason::system && kind == PhraseKind::fair);
            return isFailure && found_.reason == Reason::unknownMailbox &&
                   matches.placeOfFirst(kind).at > found_.at;
        };
        return isElse(PhraseKind::fair) || isElse(PhraseKind::weak);
    }

    /// Whether the words, which stand in `text`, are about something that belongs to a mailbox
    /// ("License for user not found"), only suppose it ("if the mailbox was deleted"), or go on to
    /// say less ("disabled at the moment").
    bool isQualified(std::string_view text) const {
        if (!isAboutMailbox(found_.reason)) return false;
        const bool isOtherwise =
            beginsWithMailbox(found_.row) &&
            (isSaidOfPart(text, found_.at, mailboxNames) || isSupposed(text, found_.at));
        return isOtherwise || goesOnOtherwise(text, found_.at + found_.length);
    }

    void find(std::string_view notice) {
        const PhraseMatches matches(reply_.text);
        if (matches.firstOf(PhraseKind::clear) && takeInFront()) return;
        noteDuration(matches);
        const StatusRow* definite = codes_.definite();
        // Why this order: systems give wrong codes more often than wrong words. A definite code
        // says more than words that many kinds of failures have in common ("access denied").
        // The notice may speak of other recipients, or in general; but words that only hint at
        // why, without a code, may be those that introduce a reply. Codes that are given to
        // any failure count last.
        if (take(matches, PhraseKind::clear, false)) {
            if (!definite && (saysAlternative(matches) || isQualified(reply_.text))) {
                found_.isSure = false;
            }
            return;
        }
        if (definite) return takeStatus(*definite, true);
        if (isFirstLineOnly(reply_.text) && takeReplyInNotice(notice)) return;
        if (take(matches, PhraseKind::fair, false)) return;
        const std::optional<PhraseRow> hint = matches.firstOf(PhraseKind::weak);
        const StatusRow* vague = codes_.any();
        const bool isRestated = codes_.isRestated(vague);
        const Party party = hint ? partyOf(*hint, reply_.text,
                                           matches.placeOfFirst(PhraseKind::weak), reply_.address)
                                 : Party::unnamed;
        const bool isNamed = party == Party::domain || party == Party::mailbox;
        const bool isElsewhere =
            hint && vague && !isRestated && !isNamed && isBetter(*vague, *hint);
        if (isElsewhere) return takeStatus(*vague, false);
        const bool isVagueHint = hint && !vague && codes_.areMissing();
        if (isVagueHint && takeReplyInNotice(notice, hint->reason == Reason::system)) return;
        if (take(matches, PhraseKind::weak, false)) {
            // A hint and a code that agree are enough.
            found_.isSure = vague && !isRestated && vague->reason == found_.reason;
            noteParty(party);
            return;
        }
        if (takeFromNotice(notice)) return;
        if (vague) return takeStatus(*vague, false);
        if (const ReplyCodeRow* row = replyCodeRowOf(codes_.reply())) return takeReplyCode(*row);
        found_.reason = Reason::other;
    }

    /// Takes the hint that was found last for what it says of `party`.
    void noteParty(Party party) {
        const bool isClosed = found_.reason == Reason::inactiveMailbox;
        if (party == Party::host) found_.reason = Reason::reputation;
        if (party == Party::domain) found_.reason = Reason::unknownDomain;
        if (party == Party::mailbox && !isClosed) found_.reason = Reason::unknownMailbox;
        if (party == Party::domain || party == Party::mailbox) found_.isSure = true;
    }

    /// Whether what was found is so vague that a word may say better what it is about.
    bool mayHaveTopic() const noexcept {
        // A refusal is sure where its code is vague, too.
        const bool isDefinite = found_.isSure && !(isHint_ && found_.reason == Reason::policy);
        if (found_.inNotice || isDefinite) return false;
        switch (found_.reason) {
            case Reason::unknownMailbox:
            case Reason::policy:
            case Reason::system:
            case Reason::other: return isHint_ || found_.basis != ReasonBasis::phrase;
            default: return false;
        }
    }

    void takeTopic() {
        const std::optional<Topic> topic = topicOf(reply_.text);
        if (!topic) return;
        found_.reason = topic->row.reason;
        found_.basis = ReasonBasis::phrase;
        found_.row = topic->row.phrase;
        found_.at = topic->at;
        found_.length = topic->row.phrase.size();
    }

    /// Whether a vague code says more than a hint, as that of a system at fault does for the time
    /// being where the words are only those of a refusal.
    bool isBetter(const StatusRow& code, const PhraseRow& hint) const noexcept {
        const bool isFault = codes_.areTemporary() && code.reason == Reason::system;
        return countsBefore(code.reason, hint.reason) || (isFault && hint.reason == Reason::policy);
    }

    /// What was tried until the time was up failed for the time being, whatever else is said.
    void noteDuration(const PhraseMatches& matches) {
        if (matches.saysTemporary()) found_.isTransient = true;
    }

    bool take(const PhraseMatches& matches, PhraseKind kind, bool inNotice) {
        const std::optional<PhraseRow> row = matches.firstOf(kind);
        if (!row) return false;
        const TextPart part = matches.placeOfFirst(kind);
        found_.reason = row->reason;
        found_.basis = ReasonBasis::phrase;
        found_.inNotice = inNotice;
        found_.at = part.at;
        found_.length = part.length;
        found_.row = row->phrase;
        isHint_ = kind == PhraseKind::weak;
        found_.isSure = !isHint_;
        if (row->lasts) found_.isTransient = false;
        return true;
    }

    bool takeFromNotice(std::string_view notice) {
        if (notice.empty()) return false;
        const PhraseMatches matches(notice);
        noteDuration(matches);
        const ReplyCodes codes = codesIn(notice);
        noteCodesOf(codes);
        if (take(matches, PhraseKind::clear, true)) {
            if (!codes_.definite() && isQualified(notice)) found_.isSure = false;
            return isOfReply(notice);
        }
        if (takeStatusOf(notice, codes)) return true;
        if (take(matches, PhraseKind::fair, true)) return isOfReply(notice);
        const std::optional<PhraseRow> hint = matches.firstOf(PhraseKind::weak);
        const StatusRow* vague = codes_.textStatus();
        if (hint && vague && isBetter(*vague, *hint)) return false;
        // That the mail is late is no news beside any code, nor that it was refused beside one
        // that says why.
        const ReplyCodeRow* code = replyCodeRowOf(codes_.reply());
        if (hint && hint->reason == Reason::expired && (codes_.any() || code)) return false;
        if (hint && hint->reason == Reason::policy && code && code->reason != Reason::system &&
            code->reason != Reason::other) {
            return false;
        }
        if (!take(matches, PhraseKind::weak, true)) return false;
        noteParty(partyOf(*hint, notice, {found_.at, found_.length}, reply_.address));
        return isOfReply(notice);
    }

    /// What the definite code of the notice says, where the reply has none.
    bool takeStatusOf(std::string_view notice, const ReplyCodes& codes) {
        const StatusRow* row = statusRowOf(codes.status);
        const bool counts = row && row->trust == Trust::definite;
        if (!counts || !codes_.areMissing() || codes_.hasField()) return false;
        takeStatus(*row, isOfRecipient(notice, codes));
        found_.inNotice = true;
        found_.at = static_cast<std::size_t>(codes.status.data() - notice.data());
        found_.length = codes.status.size();
        return true;
    }

    /// Whether the codes of the notice are those of a reply, "550 5.1.1", and the only ones, and
    /// nobody else stands in their line. A status alone may be the version of a program.
    bool isOfRecipient(std::string_view notice, const ReplyCodes& codes) const {
        const bool areTogether = !codes.reply.empty() &&
                                 codes.reply.data() + codes.reply.size() + 1 == codes.status.data();
        if (!areTogether) return false;
        const auto end =
            static_cast<std::size_t>(codes.status.data() - notice.data()) + codes.status.size();
        const std::string_view next = codesIn(notice.substr(end)).status;
        if (!next.empty() && next != codes.status) return false;
        const std::string_view line = lineAt(notice, end);
        return std::ranges::all_of(findAddresses(line), [&](const AddressSpan& span) {
            return ascii::equalsNoCase(span.in(line), reply_.address);
        });
    }

    /// Whether what was taken of the notice says more than the reply. A mailbox that the reply
    /// itself says nothing of, but has a code for something else, is no news.
    bool isOfReply(std::string_view notice) {
        if (!isAboutMailbox(found_.reason) || reply_.text.empty()) return true;
        const StatusRow* code = codes_.textStatus();
        const bool isElsewhere =
            code && code->reason != Reason::other && !isAboutMailbox(code->reason);
        if (!isElsewhere && !restatesReply(notice, found_.at)) return true;
        const bool isTransient = found_.isTransient;
        found_ = ReasonFinding{};
        found_.isTransient = isTransient;
        return false;
    }

    /// What the notice says of a reply that it quotes, or, `evenWithoutCode`, of the "temporary
    /// problem" that it begins with.
    bool takeReplyInNotice(std::string_view notice, bool evenWithoutCode = false) {
        const ReplyCodes codes = codesIn(notice);
        if (codes.reply.empty() && !evenWithoutCode) return false;
        const PhraseMatches matches(notice);
        noteDuration(matches);
        noteCodesOf(codes);
        return takeExplanation(matches) && isOfReply(notice);
    }

    bool takeExplanation(const PhraseMatches& matches) {
        return take(matches, PhraseKind::clear, true) || take(matches, PhraseKind::fair, true);
    }

    /// A reply without codes is for the time being where those of the notice are.
    void noteCodesOf(const ReplyCodes& notice) {
        if (!codes_.areMissing()) return;
        found_.isTransient = found_.isTransient || isTemporary(notice.reply) ||
                             (notice.reply.empty() && isTemporary(notice.status));
    }

    /// Notes where `code`, a part of the reply's text, stands.
    void takeCode(std::string_view code) {
        if (code.empty()) return;
        found_.at = static_cast<std::size_t>(code.data() - reply_.text.data());
        found_.length = code.size();
    }

    void takeStatus(const StatusRow& row, bool isDefinite) {
        found_.reason = row.reason;
        found_.basis = ReasonBasis::status;
        found_.row = row.code;
        found_.isSure = isDefinite;
        if (&row == codes_.textStatus()) takeCode(codes_.textCodes().status);
    }

    void takeReplyCode(const ReplyCodeRow& row) {
        found_.reason = row.reason;
        found_.basis = ReasonBasis::replyCode;
        found_.row = row.code;
        found_.isSure = row.trust == Trust::definite;
        takeCode(codes_.textCodes().reply);
    }

    const Reply& reply_;
    GivenCodes codes_;
    ReasonFinding found_;
    /// Whether a phrase was taken that only hints at why.
    bool isHint_ = false;
};

}  // namespace

bool isFirstLineOnly(std::string_view reply) noexcept {
    const std::string_view text = ascii::trim(reply);
    if (replyCodeLength(text, 0) == 0 || text.size() < 4 || text[3] != '-') return false;
    const std::array<char, 4> last = {text[0], text[1], text[2], ' '};
    return text.find(std::string_view(last.data(), last.size())) == npos;
}

ReasonFinding reasonOf(const Reply& reply, std::string_view notice) {
    const bool isFailure = reply.outcome == Outcome::failed || reply.outcome == Outcome::delayed ||
                           reply.outcome == Outcome::unknown;
    return isFailure ? Search(reply, notice).found() : ReasonFinding{};
}

bool explains(std::string_view text) {
    return reasonOf({.text = text}).basis == ReasonBasis::phrase;
}

bool saysWhy(std::string_view text) {
    const ReasonFinding finding = reasonOf({.text = text});
    return finding.basis == ReasonBasis::phrase && finding.isSure &&
           finding.reason != Reason::system;
}

}  // namespace bouncecheck
