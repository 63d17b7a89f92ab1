#include "recipients/RecipientReasons.h"

#include "recipients/AddressSpans.h"
#include "recipients/AdviceFor.h"
#include "recipients/Bystanders.h"
#include "recipients/PhraseReasons.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// Whether an outcome has a reason.
bool isTrouble(Outcome outcome) {
    return outcome == Outcome::failed || outcome == Outcome::delayed || outcome == Outcome::unknown;
}

bool isExplained(const ReasonFinding& finding) {
    return finding.basis == ReasonBasis::phrase || finding.isSure;
}

/// `codes` are those of the diagnostic.
Reply replyOf(const Recipient& recipient, const ReplyCodes& codes) {
    return {.outcome = recipient.outcome,
            .status = recipient.status,
            .replyCode = recipient.replyCode,
            .text = recipient.diagnostic,
            .codes = codes};
}

/// Whether it matters when the reply was given. Who was accepted as a recipient is unknown only
/// to a filter, whatever its words, unless it has a code that says so.
bool needsStage(const ReasonFinding& finding, const ReplyCodes& codes) {
    return finding.isSure && isAboutMailbox(finding.reason) &&
           finding.basis == ReasonBasis::phrase && codes.status.empty();
}

}  // namespace

bool RecipientReasons::explainReported() {
    bool areExplained = true;
    for (const Recipient& recipient : list_.all()) {
        const ReplyCodes codes = codesIn(recipient.diagnostic);
        const ReasonFinding& finding = findings_.emplace_back(reasonOf(replyOf(recipient, codes)));
        if (isTrouble(recipient.outcome) && !isExplained(finding)) areExplained = false;
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
    return stage == Stage::data ||
           (stage == Stage::unknown && isReported && reading_.saysReplyToData());
}

/// Whether the reply names the sender of the original mail, and not the recipient.
bool RecipientReasons::isAboutSender(const Recipient& recipient) const {
    const Bystanders others(reading_, Bystanders::From::message);
    bool isAboutSender = false;
    for (const AddressSpan& span : findAddresses(recipient.diagnostic)) {
        const std::string_view address = span.in(recipient.diagnostic);
        if (ascii::equalsNoCase(address, recipient.address) ||
            ascii::equalsNoCase(address, recipient.finalAddress)) {
            return false;
        }
        isAboutSender = isAboutSender || others.isAddressee(address);
    }
    return isAboutSender;
}

void RecipientReasons::fill(std::size_t index, const Notice* notice) {
    const std::vector<Recipient>& all = list_.all();
    Recipient& recipient = list_.all()[index];
    // An inner notice, or a request, has found its own.
    if (recipient.reason != Reason::none || recipient.advice != Advice::none) return;
    const ReplyCodes codes = codesIn(recipient.diagnostic);
    if (recipient.replyCode.empty()) recipient.replyCode = codes.reply;
    if (recipient.status.empty()) recipient.status = codes.status;
    std::string_view weaker;
    const auto said = said_.find(recipient.address);
    if (said != said_.end()) {
        weaker = said->second;
    } else if (notice && all.size() == 1) {
        weaker = notice->text();
    }
    const bool isKnown = index < findings_.size() && isExplained(findings_[index]);
    ReasonFinding finding =
        isKnown ? findings_[index] : reasonOf(replyOf(recipient, codes), weaker);
    const bool isSilent = finding.basis == ReasonBasis::none && recipient.diagnostic.empty();
    if (isSilent && notice && isTrouble(recipient.outcome)) {
        weaker = notice->text();
        const bool isTransient = finding.isTransient;
        finding = ofNotice();
        finding.isTransient = finding.isTransient || isTransient;
        // It may be said of another one.
        finding.isSure = finding.isSure && all.size() == 1;
    }
    if (needsStage(finding, codes) && isReplyToData(recipient)) finding.isSure = false;
    if (isAboutMailbox(finding.reason) && isAboutSender(recipient)) {
        finding.reason = Reason::policy;
        finding.isSure = false;
    }
    // People write such words about other things, too.
    finding.isSure = finding.isSure && reading_.isBySystem();
    recipient.reason = finding.reason;
    recipient.basis = finding.basis;
    recipient.row = finding.row;
    const std::string_view from = finding.inNotice ? weaker : recipient.diagnostic;
    if (finding.length > 0) {
        recipient.quote = list_.budget().keep(from.substr(finding.at, finding.length));
    }
    recipient.advice = adviceFor(recipient.outcome, finding);
}

}  // namespace bouncecheck
