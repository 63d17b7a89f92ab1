#include "reasons/ReplyDoubts.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "reasons/ClauseEnd.h"
#include "reasons/Findings.h"
#include "reasons/HintParty.h"
#include "reasons/NamedHost.h"
#include "reasons/Said.h"
#include "reasons/Stage.h"
#include "reasons/TopicWords.h"
#include "reasons/Words.h"
#include "reasons/tables/PartyNames.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// The paragraph of `text`, in CRLF, that the byte `at` is in.
std::string_view paragraphAt(std::string_view text, std::size_t at) {
    constexpr std::string_view blankLine = "\r\n\r\n";
    const std::size_t before = text.substr(0, at).rfind(blankLine);
    const std::size_t begin = before == npos ? 0 : before;
    return text.substr(begin, std::min(text.find(blankLine, at), text.size()) - begin);
}

/// Whether the recipient's address stands right beside the words: "<a@b.example>... Unknown".
bool isBesideRecipient(const ReasonFinding& finding, const Reply& reply) {
    if (!finding.isInReply() || reply.address.empty()) return false;
    const std::size_t reach = reply.address.size() + std::size("... <:>");
    const std::size_t begin = finding.at < reach ? 0 : finding.at - reach;
    const std::string_view beside = reply.text.substr(begin, finding.end() + reach - begin);
    return findBytesNoCase(beside, reply.address) != npos;
}

/// "Host 192.0.2.1 does not exist": a host that is named by its address has no mailboxes.
bool isAboutHost(const ReasonFinding& finding, std::string_view text) {
    const bool mayBeOfHost =
        finding.reason == Reason::unknownDomain || finding.reason == Reason::inactiveMailbox;
    return mayBeOfHost && finding.isInReply() && isSaidOfHost(text, finding.at, finding.length);
}

/// "Sender: unknown user", "550 no such user (in reply to MAIL FROM)": the mail was refused for its
/// sender, before any recipient was named.
bool isAboutSender(const ReasonFinding& finding, const ReplyReading& reading) {
    const Reply& reply = reading.reply;
    if (reading.codes.areAboutSender() || reading.codes.areAboutLogin()) return true;
    if (finding.isInReply() && Said(reply.text, finding.at).isOfSender()) return true;
    const std::string_view where =
        finding.inNotice ? paragraphAt(reading.notice, finding.at) : reply.text;
    return stageIn(where) == Stage::sender && !isBesideRecipient(finding, reply);
}

/// The first phrase of `kind`, where it is about something else than a mailbox.
std::optional<PhraseRow> otherPhrase(const PhraseMatches& matches, PhraseKind kind) {
    const std::optional<PhraseRow> row = matches.firstOf(kind);
    return row && !isAboutMailbox(row->reason) ? row : std::nullopt;
}

/// "No such user in SPF", "SPF: domain not found": a check of the sender did not find it. Not "No
/// such user. If you get spam from us ..."
bool isOfCheck(const ReasonFinding& finding, std::string_view text) {
    const bool isDomain = finding.reason == Reason::unknownDomain;
    const std::optional<Topic> topic = topicOf(isDomain ? text : text.substr(finding.end()));
    return topic && topic->row.reason != Reason::content;
}

/// "User unknown or access denied"
bool hasAlternative(const ReasonFinding& finding, std::string_view text,
                    const PhraseMatches& matches) {
    return ascii::startsWithNoCase(text.substr(finding.end()), " or ") &&
           (otherPhrase(matches, PhraseKind::fair) || otherPhrase(matches, PhraseKind::hint));
}

/// "User not found: LDAP timeout"
bool hasFailureBehind(const ReasonFinding& finding, const PhraseMatches& matches) {
    // "Host not found" is said of what a name server says.
    if (finding.reason != Reason::unknownMailbox) return false;
    const auto isFailure = [&](PhraseKind kind) {
        const std::optional<PhraseRow> row = otherPhrase(matches, kind);
        if (!row || matches.placeOfFirst(kind).at <= finding.at) return false;
        // "Mailbox unavailable" is said of any.
        return row->reason == Reason::unreachable ||
               (row->reason == Reason::system && kind == PhraseKind::fair);
    };
    return isFailure(PhraseKind::fair) || isFailure(PhraseKind::hint);
}

/// "License for user not found", "if the mailbox was deleted", "disabled at the moment"
bool isQualified(const ReasonFinding& finding, std::string_view text) {
    const Said said(text, finding.at);
    const bool isOfPart = beginsWithMailbox(finding.row) && said.isOfPart(mailboxNames);
    return isOfPart || said.isSupposed() || goesOnOtherwise(text, finding.end());
}

bool namesOtherCause(const ReasonFinding& finding, std::string_view text,
                     const PhraseMatches& matches) {
    return isOfCheck(finding, text) || hasAlternative(finding, text, matches) ||
           hasFailureBehind(finding, matches);
}

}  // namespace

ReasonFinding judgedClearWords(const PhraseMatches& matches, std::string_view text,
                               bool isTransient) {
    ReasonFinding finding = phraseFinding(matches, PhraseKind::clear, isTransient);
    const bool isDoubtful = isAboutMailbox(finding.reason) &&
                            (namesOtherCause(finding, text, matches) || isQualified(finding, text));
    if (isDoubtful) finding.isSure = false;
    return finding;
}

ReasonFinding judgedClearWordsOfNotice(const PhraseMatches& matches, std::string_view notice,
                                       bool isTransient) {
    ReasonFinding finding = phraseFinding(matches, PhraseKind::clear, isTransient);
    if (!isAboutMailbox(finding.reason)) return finding;
    const std::string_view paragraph = paragraphAt(notice, finding.at);
    const PhraseMatches around(paragraph);
    if (!judgedClearWords(around, paragraph, isTransient).isSure) finding.isSure = false;
    return finding;
}

bool mayBeAboutSender(std::string_view front) {
    const std::string plain = unfolded(front);
    return contains(plain, " or ") || containsNoCase(plain, "sender");
}

ReasonFinding doubted(ReasonFinding finding, const ReplyReading& reading) {
    // "550 5.7.26 user unknown"
    if (reading.codes.areAboutElse(finding.reason)) finding.isSure = false;
    if (isAboutHost(finding, reading.reply.text)) finding.reason = Reason::reputation;
    if (isAboutMailbox(finding.reason) && isAboutSender(finding, reading)) {
        finding.reason = Reason::policy;
        finding.isSure = false;
    }
    return finding;
}

}  // namespace bouncecheck
