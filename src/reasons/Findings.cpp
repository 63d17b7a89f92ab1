#include "reasons/Findings.h"

#include <optional>

namespace bouncecheck {

ReasonFinding phraseFinding(const PhraseMatches& matches, PhraseKind kind, bool isTransient) {
    const std::optional<PhraseRow> row = matches.firstOf(kind);
    if (!row) return {.isTransient = isTransient};
    const TextPart part = matches.placeOfFirst(kind);
    return {.reason = row->reason,
            .basis = ReasonBasis::phrase,
            .at = part.at,
            .length = part.length,
            .row = row->phrase,
            .isTransient = isTransient && !row->lasts,
            .isSure = kind != PhraseKind::hint};
}

ReasonFinding hintFinding(const PhraseMatches& matches, Party party, bool isTransient) {
    ReasonFinding finding = phraseFinding(matches, PhraseKind::hint, isTransient);
    switch (party) {
        case Party::unnamed: break;
        case Party::host: finding.reason = Reason::reputation; break;
        case Party::domain:
            finding.reason = Reason::unknownDomain;
            finding.isSure = true;
            break;
        case Party::mailbox:
            if (finding.reason != Reason::inactiveMailbox) finding.reason = Reason::unknownMailbox;
            finding.isSure = true;
            break;
    }
    return finding;
}

ReasonFinding statusFinding(const StatusRow& row, bool isSure, bool isTransient) {
    return {.reason = row.reason,
            .basis = ReasonBasis::status,
            .row = row.code,
            .isTransient = isTransient,
            .isSure = isSure};
}

ReasonFinding replyCodeFinding(const ReplyCodeRow& row, bool isTransient) {
    return {.reason = row.reason,
            .basis = ReasonBasis::replyCode,
            .row = row.code,
            .isTransient = isTransient,
            .isSure = row.trust == Trust::definite};
}

ReasonFinding placed(ReasonFinding finding, std::string_view code, std::string_view text) {
    if (code.empty()) return finding;
    finding.at = static_cast<std::size_t>(code.data() - text.data());
    finding.length = code.size();
    return finding;
}

}  // namespace bouncecheck
