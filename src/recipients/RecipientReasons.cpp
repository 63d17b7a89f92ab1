#include "recipients/RecipientReasons.h"

#include "reasons/AdviceFor.h"
#include "reasons/Outcomes.h"
#include "recipients/LinesAround.h"
#include "recipients/RecipientDoubts.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// Of more recipients, the lines that gave the reason would be repeated for each until there is no
/// room left.
constexpr std::size_t mostWithLines = 100;

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

void addCodes(Recipient& recipient, const ReplyCodes& codes) {
    if (recipient.replyCode.empty()) recipient.replyCode = codes.reply;
    if (recipient.status.empty()) recipient.status = codes.status;
}

/// Whether `finding` is in the notice, which says more there than the diagnostic with its `codes`.
bool saysMore(const ReasonFinding& finding, const Recipient& recipient, const ReplyCodes& codes) {
    const bool isReported =
        recipient.source == RecipientSource::report && !recipient.diagnostic.empty();
    return finding.inNotice && finding.length > 0 && !isReported && codes.reply.empty() &&
           codes.status.empty();
}

}  // namespace

bool RecipientReasons::explainReported() {
    bool areExplained = true;
    reported_.reserve(list_.all().size());
    for (const Recipient& recipient : list_.all()) {
        const ReplyCodes codes = codesIn(recipient.diagnostic);
        const ReasonFinding finding = reasonOf(replyOf(recipient, codes));
        // A status alone does not stop mail where words beside it say less.
        const bool isComplete = isExplained(recipient, finding) &&
                                (!recipient.diagnostic.empty() ||
                                 adviceFor(recipient.outcome, finding) != Advice::suppress);
        if (isTrouble(recipient.outcome) && !isComplete) areExplained = false;
        reported_.push_back({finding, !recipient.diagnostic.empty(), std::string(codes.reply),
                             std::string(codes.status)});
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

/// Why a recipient failed of whom the report does not say enough: by the reply, of which `codes`
/// are known, and then by what the notice says.
Explanation RecipientReasons::explain(const Recipient& recipient, const ReplyCodes& codes,
                                      const Notice* notice) {
    const bool isOnly = list_.all().size() == 1;
    Explanation explanation{recipient, codes};
    if (const auto said = said_.find(recipient.address); said != said_.end()) {
        explanation.notice = said->second;
    } else if (notice && isOnly) {
        explanation.notice = notice->text();
    }
    ReasonFinding& finding = explanation.finding;
    finding = reasonOf(replyOf(recipient, codes), explanation.notice);
    const bool isSilent = !finding.isFound() && recipient.diagnostic.empty();
    if (isSilent && notice && isTrouble(recipient.outcome)) {
        const bool isTransient = finding.isTransient;
        explanation.notice = notice->text();
        finding = ofNotice();
        finding.isTransient = finding.isTransient || isTransient;
        // It may be said of another one.
        finding.isSure = finding.isSure && isOnly;
    }
    return explanation;
}

void RecipientReasons::fill(std::size_t index, const Notice* notice) {
    Recipient& recipient = list_.all()[index];
    // An inner notice, or a request, has found its own.
    if (recipient.reason != Reason::none || recipient.advice != Advice::none) return;
    const Reported* known = explainedBefore(index);
    const ReplyCodes codes =
        known ? ReplyCodes{known->replyCode, known->status} : codesIn(recipient.diagnostic);
    addCodes(recipient, codes);
    const Explanation explanation =
        known ? Explanation{recipient, codes, known->finding} : explain(recipient, codes, notice);
    const ReasonFinding finding = RecipientDoubts(reading_, list_).doubted(explanation);
    recipient.reason = finding.reason;
    recipient.basis = finding.basis;
    recipient.row = finding.row;
    recipient.quote = list_.budget().keep(explanation.text().substr(finding.at, finding.length));
    recipient.advice = adviceFor(recipient.outcome, finding);
    if (list_.all().size() <= mostWithLines && saysMore(finding, recipient, codes)) {
        const std::string lines = linesAround(explanation.notice, {finding.at, finding.length});
        addCodes(recipient, codesIn(lines));
        recipient.diagnostic = list_.budget().keep(ascii::trim(lines));
    }
}

/// What `explainReported` found of a recipient; null where others may have said more since.
const RecipientReasons::Reported* RecipientReasons::explainedBefore(std::size_t index) const {
    if (index >= reported_.size()) return nullptr;
    const Recipient& recipient = list_.all()[index];
    const Reported& reported = reported_[index];
    if (!reported.hasDiagnostic && !recipient.diagnostic.empty()) return nullptr;
    return isExplained(recipient, reported.finding) ? &reported : nullptr;
}

}  // namespace bouncecheck
