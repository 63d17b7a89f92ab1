#include "recipients/RecipientDoubts.h"

#include <algorithm>
#include <string>
#include <vector>

#include "mime/AddressForms.h"
#include "mime/AddressSpans.h"
#include "reasons/CodeShapes.h"
#include "reasons/InnerReply.h"
#include "reasons/ReasonRow.h"
#include "reasons/Stage.h"
#include "reasons/UnknownHost.h"
#include "reasons/Words.h"
#include "recipients/tables/OwnHostWords.h"
#include "recipients/tables/PartialWords.h"
#include "text/Ascii.h"
#include "text/Lines.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Whether `holds` is true of the address of `recipient`, or of the one it was sent on to.
template <class Holds>
bool anyAddressOf(const Recipient& recipient, Holds holds) {
    return holds(std::string_view(recipient.address)) ||
           holds(std::string_view(recipient.finalAddress));
}

bool isAddressOf(const Recipient& recipient, std::string_view address) {
    return anyAddressOf(recipient,
                        [&](std::string_view own) { return ascii::equalsNoCase(address, own); });
}

/// What of the line that the byte `at` of `text` is in stands near it: the line is read again for
/// each recipient, and may be as long as the text.
std::string_view lineNear(std::string_view text, std::size_t at) {
    constexpr std::size_t near = 250;
    const std::size_t begin = at - std::min(at, near);
    return lineAt(text.substr(begin, 2 * near), at - begin);
}

bool isStatusInText(const ReasonFinding& finding) {
    return finding.basis == ReasonBasis::status && finding.length > 0;
}

/// Whether `span` is within the words that were found at `at` of the same text: "<me@own.example>
/// unknown", rather than the address of the command in front, which they answer.
bool overlapsWords(const AddressSpan& span, std::size_t at, const ReasonFinding& finding) {
    return !isStatusInText(finding) && span.begin < at + finding.length && at < span.end;
}

/// Whether `span` is beside what was found at `at` of the same text: words are around it or right
/// in front, a code is right behind.
bool isBeside(const AddressSpan& span, std::size_t at, const ReasonFinding& finding) {
    constexpr std::size_t most = 12;
    return isStatusInText(finding) ? span.begin >= at && span.begin < at + most
                                   : span.begin <= at + finding.length && at < span.end + most;
}

/// Whether nothing but words says that there is no mailbox. Where a status says so as well, it does
/// not matter who else is named, and when. One without a subject, 5.0.0 or 5.0.350, says nothing
/// (RFC 3463, section 3.1), nor does one in front of any reply: "5.1.0 Unknown address error
/// 550-'User unknown'".
bool areOnlyWords(const Explanation& explanation) {
    if (explanation.finding.basis != ReasonBasis::phrase) return false;
    const auto saysNothing = [](std::string_view status) {
        return status.empty() || status.substr(1).starts_with(".0.");
    };
    if (saysNothing(explanation.codes.status)) return true;
    const InnerReply inner = innerReplyOf(explanation.recipient.diagnostic, {});
    return inner.isFound() && saysNothing(codesIn(inner.text.substr(inner.at)).status);
}

/// The reply around what was found at `at` of `text`, as one line, since replies are folded
/// anywhere: from its code, or else the start of the line, up to `end`, and not much more than a
/// sentence of it.
std::string replyAround(std::string_view text, std::size_t at, std::size_t end) {
    constexpr std::size_t near = 300;
    const std::size_t farthest = at - std::min(at, near);
    const auto line = static_cast<std::size_t>(lineAt(text, at).data() - text.data());
    std::size_t begin = std::max(farthest, line);
    std::string_view code;
    for (std::size_t i = at; i-- > farthest;) {
        const bool beginsWord =
            i == 0 || ascii::isSpace(text[i - 1]) || ascii::isOneOf(text[i - 1], ";#'");
        if (!beginsWord || replyCodeLength(text, i) == 0) continue;
        // "550-One or more", "550 recipients failed"
        const bool goesOn = text.substr(i, code.size()) == code && text.substr(i + 3, 1) == "-";
        if (!code.empty() && !goesOn) break;
        code = text.substr(i, 3);
        begin = i;
    }
    end = std::min({end, at + near, text.size()});
    return unfolded(text.substr(begin, end - begin));
}

/// "No such account (ann@x.example)": the words of a reply go on, in their line, with the
/// recipient's own address in brackets.
bool goesOnWithRecipient(const Explanation& explanation) {
    constexpr std::size_t reach = 80;
    const ReasonFinding& finding = explanation.finding;
    const std::string_view reply = explanation.recipient.diagnostic;
    const std::string_view line = lineAt(reply, finding.at);
    const auto lineEnd = static_cast<std::size_t>(line.data() + line.size() - reply.data());
    if (lineEnd < finding.end()) return false;
    const std::string_view address = explanation.recipient.address;
    const std::string_view behind =
        reply.substr(finding.end(), std::min(lineEnd - finding.end(), reach + address.size()));
    const std::size_t at = findBytesNoCase(behind, address);
    return at != npos && at > 0 && ascii::isOneOf(behind[at - 1], "(<");
}

/// "<ann@x.example>: no such account": the words of a reply follow the recipient's own address.
bool followsRecipient(const Explanation& explanation) {
    const std::string_view address = explanation.recipient.address;
    std::string_view front = explanation.recipient.diagnostic;
    front = front.substr(0, explanation.finding.at);
    front = front.substr(0, front.find_last_not_of(" .:") + 1);
    if (!front.ends_with('>') || front.size() < address.size() + 2) return false;
    front = front.substr(front.size() - address.size() - 2);
    return front.starts_with('<') && ascii::equalsNoCase(front.substr(1, address.size()), address);
}

/// Whether the words of a reply are said of the recipient by the address beside them.
bool namesRecipient(const Explanation& explanation) {
    return !explanation.finding.inNotice &&
           (goesOnWithRecipient(explanation) || followsRecipient(explanation));
}

/// "User unknown (bob@y.example)", "bob@y.example not found": another's address follows the words
/// of a reply at once, or is one of them.
bool namesAnother(const Explanation& explanation) {
    const ReasonFinding& finding = explanation.finding;
    // In a notice, the next line may be that of the next recipient.
    const std::string_view between = finding.inNotice ? " (<[:'\"" : " \r\n(<[:'\"";
    constexpr std::size_t most = 300;
    const std::string_view text = explanation.text().substr(finding.at, most);
    const std::vector<AddressSpan> spans = findAddresses(text);
    if (spans.empty() || text.find_first_not_of(between, finding.length) < spans[0].begin) {
        return false;
    }
    const std::string_view named = spans[0].in(text);
    const auto isOwn = [&](std::string_view own) {
        return ascii::equalsNoCase(domainOf(named), domainOf(own)) ||
               ascii::equalsNoCase(localPartOf(named), localPartOf(own));
    };
    return !anyAddressOf(explanation.recipient, isOwn);
}

/// "One or more recipients do not exist": the words of a reply, which does not name this one, are
/// said of several of whom not all have to have failed.
bool saysSome(const Explanation& explanation) {
    const ReasonFinding& finding = explanation.finding;
    const std::string_view text = explanation.recipient.diagnostic;
    if (finding.inNotice || finding.basis != ReasonBasis::phrase) return false;
    const std::size_t lineEnd = text.find_first_of("\r\n", finding.end());
    const auto isSaidIn = [&](std::string_view part) {
        return !containsNoCase(part, explanation.recipient.address) &&
               std::ranges::any_of(partialWords, [&](std::string_view words) {
                   return containsNoCase(part, words);
               });
    };
    return isSaidIn(lineAt(text, finding.at)) || isSaidIn(replyAround(text, finding.at, lineEnd));
}

/// "Host not found, name=relay.z.example", "relay.z.example: no such host", "Smart host not found":
/// another host than that of the recipient's domain was not found, such as the one that the
/// sender's mail goes through.
bool namesAnotherHost(const Explanation& explanation) {
    const ReasonFinding& finding = explanation.finding;
    if (finding.reason != Reason::unknownDomain) return false;
    const auto isOwn = [&](std::string_view host) {
        return anyAddressOf(explanation.recipient, [&](std::string_view address) {
            return isOfDomain(host, domainOf(address));
        });
    };
    const std::string_view unknown = unknownHostIn(explanation.recipient.diagnostic);
    if (!unknown.empty()) return !isOwn(unknown);
    if (finding.basis != ReasonBasis::phrase) return false;
    const std::string_view text = explanation.text();
    const std::vector<std::string_view> hosts = hostsBeside(text, finding.at, finding.length);
    if (!hosts.empty()) return std::ranges::none_of(hosts, isOwn);
    const std::string_view line = lineNear(text, finding.at);
    return std::ranges::any_of(ownHostWords,
                               [&](std::string_view words) { return containsNoCase(line, words); });
}

}  // namespace

ReasonFinding RecipientDoubts::doubted(const Explanation& explanation) const {
    ReasonFinding finding = explanation.finding;
    // Of other reasons it does not matter how sure they are.
    if (!isAboutMailbox(finding.reason)) return finding;
    if (isAboutSender(explanation)) {
        finding.reason = Reason::policy;
        finding.isSure = false;
    }
    finding.isSure = finding.isSure && !mayBeOfFilter(explanation) &&
                     !mayBeAboutOthers(explanation) && isFromSystem(explanation.recipient);
    return finding;
}

/// The reply is about the sender of the original mail: it names them and not the recipient, or came
/// before any recipient was named.
bool RecipientDoubts::isAboutSender(const Explanation& explanation) const {
    return namesDomainOfSender(explanation) || namesSender(explanation) ||
           isReplyToSender(explanation);
}

/// "Domain own.example not found": a domain is unknown in a line that has the domain of the sender,
/// and not that of the recipient.
bool RecipientDoubts::namesDomainOfSender(const Explanation& explanation) const {
    const Recipient& recipient = explanation.recipient;
    const ReasonFinding& finding = explanation.finding;
    if (finding.reason != Reason::unknownDomain || finding.inNotice) return false;
    // What a name server does not know may be the relay of the sender's system.
    if (!unknownHostIn(recipient.diagnostic).empty()) return false;
    const auto isIn = [](std::string_view text, std::string_view address) {
        const std::string_view domain = domainOf(address);
        return !domain.empty() && containsNoCase(text, domain);
    };
    const auto isSaidOfSender = [&](std::string_view text) {
        return !anyAddressOf(recipient, [&](std::string_view own) { return isIn(text, own); }) &&
               reading_.bystanders().isDomainOfSenderIn(text);
    };
    return isSaidOfSender(lineAt(recipient.diagnostic, finding.at)) ||
           isSaidOfSender(replyAround(recipient.diagnostic, finding.at, npos));
}

/// "Unknown user me@own.example": in the reply, or in the line of the notice.
bool RecipientDoubts::namesSender(const Explanation& explanation) const {
    const ReasonFinding& finding = explanation.finding;
    const std::string_view reply = explanation.recipient.diagnostic;
    if (!finding.inNotice) return namesSenderIn(reply, finding.at, explanation);
    if (namesSenderIn(reply, std::nullopt, explanation)) return true;
    const std::string_view line = lineNear(explanation.notice, finding.at);
    const auto begin = static_cast<std::size_t>(line.data() - explanation.notice.data());
    return namesSenderIn(line, finding.at - begin, explanation);
}

/// Whether the address within or beside what was found at `at` of `text` is the sender's; without
/// one, whether `text` names the sender, and not the recipient.
bool RecipientDoubts::namesSenderIn(std::string_view text, std::optional<std::size_t> at,
                                    const Explanation& explanation) const {
    const std::vector<AddressSpan> spans = findAddresses(text);
    const auto isOwn = [&](const AddressSpan& span) {
        return isAddressOf(explanation.recipient, span.in(text));
    };
    const auto isOfSender = [&](const AddressSpan& span) {
        return reading_.bystanders().isOfSender(span.in(text));
    };
    const auto find = [&](auto isMeant) {
        return std::ranges::find_if(spans, [&](const AddressSpan& span) {
            return at && isMeant(span, *at, explanation.finding);
        });
    };
    auto meant = find(overlapsWords);
    if (meant == spans.end()) meant = find(isBeside);
    if (meant != spans.end()) return !isOwn(*meant) && isOfSender(*meant);
    return std::ranges::none_of(spans, isOwn) && std::ranges::any_of(spans, isOfSender);
}

/// ">>> MAIL From:<me@own.example>", "<<< 550 mailbox unavailable": the text beside a report says
/// so of the reply in it, which does not name the recipient.
bool RecipientDoubts::isReplyToSender(const Explanation& explanation) const {
    const Recipient& recipient = explanation.recipient;
    const bool mayBe = recipient.source == RecipientSource::report &&
                       !recipient.diagnostic.empty() && reading_.saysReplyToSender();
    if (!mayBe) return false;
    const std::string_view text = recipient.diagnostic;
    return std::ranges::none_of(findAddresses(text), [&](const AddressSpan& span) {
        return isAddressOf(recipient, span.in(text));
    });
}

/// The evidence may be about another address, or another host, than the recipient's.
bool RecipientDoubts::mayBeAboutOthers(const Explanation& explanation) const {
    return list_.isDoubted(explanation.recipient) || saysSome(explanation) ||
           namesAnotherHost(explanation) ||
           (areOnlyWords(explanation) && namesAnother(explanation));
}

/// "550 mailbox unavailable (in reply to end of DATA command)": who was accepted as a recipient is
/// unknown only to a filter.
bool RecipientDoubts::mayBeOfFilter(const Explanation& explanation) const {
    return areOnlyWords(explanation) && !namesRecipient(explanation) &&
           isReplyToData(explanation.recipient);
}

/// The reply came after the message was sent, as it says, or the text beside the report.
bool RecipientDoubts::isReplyToData(const Recipient& recipient) const {
    const Stage stage = stageIn(recipient.diagnostic);
    const bool isReported = recipient.source == RecipientSource::report;
    // What the text says may be about another one, of whom there is a reply.
    const bool mayBeSaid = isReported && (list_.all().size() == 1 || !recipient.replyCode.empty());
    return stage == Stage::data ||
           (stage == Stage::unknown && mayBeSaid && reading_.saysReplyToData());
}

/// A mail system says why the recipient failed. People write such words about other things, too;
/// codes, and the mail that comes back with them, are more than words.
bool RecipientDoubts::isFromSystem(const Recipient& recipient) const {
    switch (reading_.author()) {
        case Author::person: return false;
        case Author::system: return true;
        case Author::perhapsSystem: break;
    }
    return !recipient.status.empty() || !recipient.replyCode.empty() ||
           reading_.returned().isFound();
}

}  // namespace bouncecheck
