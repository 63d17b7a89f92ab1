#include "recipients/RecipientReasons.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "mime/AddressForms.h"
#include "mime/AddressSpans.h"
#include "reasons/AdviceFor.h"
#include "reasons/PhraseReasons.h"
#include "reasons/UnknownHost.h"
#include "recipients/tables/PartialWords.h"
#include "text/Ascii.h"
#include "text/Lines.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Whether an outcome has a reason.
bool isTrouble(Outcome outcome) {
    return outcome == Outcome::failed || outcome == Outcome::delayed || outcome == Outcome::unknown;
}

bool isExplained(const Recipient& recipient, const ReasonFinding& finding) {
    return (finding.basis == ReasonBasis::phrase || finding.isSure) &&
           !isFirstLineOnly(recipient.diagnostic);
}

/// `codes` are those of the diagnostic.
Reply replyOf(const Recipient& recipient, const ReplyCodes& codes) {
    return {.outcome = recipient.outcome,
            .status = recipient.status,
            .replyCode = recipient.replyCode,
            .text = recipient.diagnostic,
            .codes = codes,
            .address = recipient.address};
}

/// Whether that there is no mailbox is said by words, without a status. Who was accepted as a
/// recipient is unknown only to a filter then, and another's address beside them counts.
bool isOnlySaid(const ReasonFinding& finding, const ReplyCodes& codes) {
    return finding.isSure && isAboutMailbox(finding.reason) &&
           finding.basis == ReasonBasis::phrase && codes.status.empty();
}

/// Whether the words of a reply go on with the recipient's own address in brackets: "No such
/// account (ann@x.example)".
bool namesOwn(const Recipient& recipient, const ReasonFinding& finding) {
    if (finding.inNotice) return false;
    constexpr std::size_t reach = 80;
    const std::size_t end = finding.at + finding.length;
    const std::string_view line = lineAt(recipient.diagnostic, finding.at);
    const std::string_view behind =
        std::string_view(recipient.diagnostic).substr(end, reach + recipient.address.size());
    const std::size_t at = findBytesNoCase(behind, recipient.address);
    return at != npos && at > 0 && ascii::isOneOf(behind[at - 1], "(<") &&
           line.data() + line.size() >= behind.data() + at + recipient.address.size();
}

/// Whether another's address follows the words of a reply at once: "User unknown (bob@y.example)".
bool namesOther(const Recipient& recipient, const ReasonFinding& finding) {
    if (finding.inNotice || finding.basis != ReasonBasis::phrase) return false;
    constexpr std::string_view between = " (<[:'\"";
    constexpr std::size_t most = 300;
    const std::string_view text =
        std::string_view(recipient.diagnostic).substr(finding.at + finding.length, most);
    const std::vector<AddressSpan> spans = findAddresses(text);
    if (spans.empty() || text.find_first_not_of(between) < spans[0].begin) return false;
    const std::string_view named = spans[0].in(text);
    const auto isOwn = [&](std::string_view own) {
        return ascii::equalsNoCase(domainOf(named), domainOf(own)) ||
               ascii::equalsNoCase(localPartOf(named), localPartOf(own));
    };
    return !isOwn(recipient.address) && !isOwn(recipient.finalAddress);
}

/// Whether the words that were found in `text` are said of "one or more recipients".
bool saysSome(std::string_view text, const ReasonFinding& finding) {
    if (finding.basis != ReasonBasis::phrase) return false;
    const std::string_view line = lineAt(text, finding.at);
    return std::ranges::any_of(partialWords,
                               [&](std::string_view words) { return containsNoCase(line, words); });
}

/// What of the line that the byte `at` of `text` is in stands near it: the line is read again for
/// each recipient, and may be as long as the text.
std::string_view lineNear(std::string_view text, std::size_t at) {
    constexpr std::size_t near = 250;
    const std::size_t begin = at - std::min(at, near);
    return lineAt(text.substr(begin, 2 * near), at - begin);
}

bool isAddressOf(const Recipient& recipient, std::string_view address) {
    return ascii::equalsNoCase(address, recipient.address) ||
           ascii::equalsNoCase(address, recipient.finalAddress);
}

}  // namespace

bool RecipientReasons::explainReported() {
    bool areExplained = true;
    reported_.reserve(list_.all().size());
    for (const Recipient& recipient : list_.all()) {
        const ReplyCodes codes = codesIn(recipient.diagnostic);
        const ReasonFinding finding = reasonOf(replyOf(recipient, codes));
        if (isTrouble(recipient.outcome) && !isExplained(recipient, finding)) areExplained = false;
        reported_.push_back({finding, std::string(codes.reply), std::string(codes.status)});
    }
    return areExplained;
}

const ReasonFinding& RecipientReasons::ofNotice() {
    if (!noticeFinding_) noticeFinding_ = reasonOf({}, reading_.notice().text());
    return *noticeFinding_;
}

void RecipientReasons::fill(const Notice* notice) {
    for (std::size_t i = 0; i < list_.all().size(); ++i) fill(i, notice);
}

/// Whether the reply came after the message was sent; of a report, its text may say so.
bool RecipientReasons::isReplyToData(const Recipient& recipient) const {
    const Stage stage = stageIn(recipient.diagnostic);
    const bool isReported = recipient.source == RecipientSource::report;
    // What the text says may be about another one, of whom there is a reply.
    const bool mayBeSaid = isReported && (list_.all().size() == 1 || !recipient.replyCode.empty());
    return stage == Stage::data ||
           (stage == Stage::unknown && mayBeSaid && reading_.saysReplyToData());
}

/// Whether `text` names the sender of the original mail and not the recipient, or says of the very
/// address of the sender what was found there, at `at`; `npos` where it was found elsewhere.
bool RecipientReasons::namesSender(const Recipient& recipient, const ReasonFinding& finding,
                                   std::string_view text, std::size_t at) const {
    const std::vector<AddressSpan> spans = findAddresses(text);
    const auto isOwn = [&](const AddressSpan& span) {
        return isAddressOf(recipient, span.in(text));
    };
    const auto isOfSender = [&](const AddressSpan& span) {
        return reading_.bystanders().isAddressee(span.in(text));
    };
    // The words are around it or right behind it, a code is right in front.
    constexpr std::size_t most = 12;
    const bool isCode = finding.basis == ReasonBasis::status && finding.length > 0;
    const auto isMeant = [&](const AddressSpan& span) {
        return isCode ? span.begin >= at && span.begin < at + most
                      : span.begin <= at + finding.length && at < span.end + most;
    };
    const auto meant = at == npos ? spans.end() : std::ranges::find_if(spans, isMeant);
    if (meant != spans.end()) return !isOwn(*meant) && isOfSender(*meant);
    return std::ranges::none_of(spans, isOwn) && std::ranges::any_of(spans, isOfSender);
}

/// Whether the reply is about the sender of the original mail: it names them and not the recipient,
/// or came before any recipient was named.
bool RecipientReasons::isAboutSender(const Recipient& recipient, const ReasonFinding& finding,
                                     std::string_view notice) const {
    if (namesSenderDomain(recipient, finding)) return true;
    const std::string_view text = recipient.diagnostic;
    if (namesSender(recipient, finding, text, finding.inNotice ? npos : finding.at)) return true;
    if (finding.inNotice) {
        const std::string_view line = lineNear(notice, finding.at);
        const auto begin = static_cast<std::size_t>(line.data() - notice.data());
        if (namesSender(recipient, finding, line, finding.at - begin)) return true;
    }
    return isReplyToSender(recipient) &&
           std::ranges::none_of(findAddresses(text), [&](const AddressSpan& span) {
               return isAddressOf(recipient, span.in(text));
           });
}

/// Whether the report's text says so of a reply in the report.
bool RecipientReasons::isReplyToSender(const Recipient& recipient) const {
    return recipient.source == RecipientSource::report && !recipient.diagnostic.empty() &&
           reading_.saysReplyToSender();
}

/// Whether a domain is unknown in a line that has the domain of the sender, and not that of the
/// recipient.
bool RecipientReasons::namesSenderDomain(const Recipient& recipient,
                                         const ReasonFinding& finding) const {
    if (finding.reason != Reason::unknownDomain || finding.inNotice) return false;
    // What a name server does not know may be the relay of the sender's system.
    if (!unknownHostIn(recipient.diagnostic).empty()) return false;
    const std::string_view line = lineAt(recipient.diagnostic, finding.at);
    const auto isIn = [&](std::string_view address) {
        const std::string_view domain = domainOf(address);
        return !domain.empty() && containsNoCase(line, domain);
    };
    if (isIn(recipient.address) || isIn(recipient.finalAddress)) return false;
    return reading_.bystanders().isDomainOfAddresseeIn(line);
}

/// Whether the evidence may be about another address, or another host, than the recipient's.
bool RecipientReasons::mayBeAboutOthers(const Recipient& recipient,
                                        const ReasonFinding& finding) const {
    if (list_.isDoubted(recipient)) return true;
    if (!finding.inNotice && !containsNoCase(recipient.diagnostic, recipient.address) &&
        saysSome(recipient.diagnostic, finding)) {
        return true;
    }
    if (finding.reason != Reason::unknownDomain) return false;
    const std::string_view host = unknownHostIn(recipient.diagnostic);
    return !host.empty() && !isOfDomain(host, domainOf(recipient.address)) &&
           !isOfDomain(host, domainOf(recipient.finalAddress));
}

/// Whether a mail system says why the recipient failed. People write such words about other things,
/// too; codes, and the mail that comes back with them, are more than words.
bool RecipientReasons::isFromSystem(const Recipient& recipient) const {
    switch (reading_.author()) {
        case Author::person: return false;
        case Author::system: return true;
        case Author::perhapsSystem: break;
    }
    return !recipient.status.empty() || !recipient.replyCode.empty() ||
           reading_.returned().isFound();
}

/// Why a recipient failed of whom the report does not say enough: by the reply, of which `codes`
/// are known, and then by what the notice says.
RecipientReasons::Explanation RecipientReasons::explain(const Recipient& recipient,
                                                        const ReplyCodes& codes,
                                                        const Notice* notice) {
    const bool isOnly = list_.all().size() == 1;
    Explanation explanation;
    const auto said = said_.find(recipient.address);
    if (said != said_.end()) {
        explanation.notice = said->second;
    } else if (notice && isOnly) {
        explanation.notice = notice->text();
    }
    ReasonFinding& finding = explanation.finding;
    finding = reasonOf(replyOf(recipient, codes), explanation.notice);
    const bool isSilent = finding.basis == ReasonBasis::none && recipient.diagnostic.empty();
    if (isSilent && notice && isTrouble(recipient.outcome)) {
        const bool isTransient = finding.isTransient;
        explanation = {ofNotice(), notice->text()};
        finding.isTransient = finding.isTransient || isTransient;
        // It may be said of another one.
        finding.isSure = finding.isSure && isOnly;
    }
    return explanation;
}

/// Makes `finding` unsure where the words may be those of a filter or a person, or said of somebody
/// else.
void RecipientReasons::doubt(const Recipient& recipient, const ReplyCodes& codes,
                             std::string_view notice, ReasonFinding& finding) const {
    // Of other reasons it does not matter how sure they are.
    if (!isAboutMailbox(finding.reason)) return;
    const bool areOnlyWords = isOnlySaid(finding, codes);
    const bool mayBeOfFilter = areOnlyWords && !namesOwn(recipient, finding);
    if (mayBeOfFilter && isReplyToData(recipient)) finding.isSure = false;
    if (finding.isSure && mayBeAboutOthers(recipient, finding)) finding.isSure = false;
    if (areOnlyWords && namesOther(recipient, finding)) finding.isSure = false;
    if (isAboutSender(recipient, finding, notice)) {
        finding.reason = Reason::policy;
        finding.isSure = false;
    }
    finding.isSure = finding.isSure && isFromSystem(recipient);
}

void RecipientReasons::fill(std::size_t index, const Notice* notice) {
    Recipient& recipient = list_.all()[index];
    // An inner notice, or a request, has found its own.
    if (recipient.reason != Reason::none || recipient.advice != Advice::none) return;
    const bool isKnown =
        index < reported_.size() && isExplained(recipient, reported_[index].finding);
    const ReplyCodes codes = isKnown
                                 ? ReplyCodes{reported_[index].replyCode, reported_[index].status}
                                 : codesIn(recipient.diagnostic);
    if (recipient.replyCode.empty()) recipient.replyCode = codes.reply;
    if (recipient.status.empty()) recipient.status = codes.status;
    Explanation explanation =
        isKnown ? Explanation{reported_[index].finding} : explain(recipient, codes, notice);
    ReasonFinding& finding = explanation.finding;
    doubt(recipient, codes, explanation.notice, finding);
    recipient.reason = finding.reason;
    recipient.basis = finding.basis;
    recipient.row = finding.row;
    if (finding.length > 0) {
        const std::string_view from = finding.inNotice ? explanation.notice : recipient.diagnostic;
        recipient.quote = list_.budget().keep(from.substr(finding.at, finding.length));
    }
    recipient.advice = adviceFor(recipient.outcome, finding);
}

}  // namespace bouncecheck
