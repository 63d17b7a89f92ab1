#include "c/Structures.h"

namespace bouncecheck {
namespace {

bouncecheck_match structureOf(const Match& match) noexcept {
    return {.table = textOfLiteral(match.table),
            .row = match.row,
            .phrase = textOfLiteral(match.phrase),
            .found_in = static_cast<int>(match.text)};
}

std::string_view meaningOf(const Verdict& verdict) noexcept {
    if (verdict.rule) return verdict.rule->meaning;
    const VerdictType* const type = verdictTypeOf(verdict.type);
    return type ? type->meaning : std::string_view();
}

}  // namespace

bouncecheck_text textOfLiteral(std::string_view literal) noexcept {
    if (literal.empty()) return {.bytes = "", .size = 0};
    return {.bytes = literal.data(), .size = literal.size()};
}

bouncecheck_text textOf(const std::string& text) noexcept { return textOfLiteral(text); }

bouncecheck_verdict structureOf(const Verdict& verdict) noexcept {
    return {.type = verdict.type,
            .address_source = static_cast<int>(verdict.addressSource),
            .address = textOf(verdict.address),
            .label = textOfLiteral(verdict.label()),
            .meaning = textOfLiteral(meaningOf(verdict)),
            .advice = textOfLiteral(adviceFor(verdict.type, verdict.rule)),
            .match = structureOf(verdict.match),
            .pattern = structureOf(verdict.pattern),
            .marker = structureOf(verdict.marker)};
}

bouncecheck_evidence evidenceOf(const Verdict& verdict) {
    return {.data = {.bytes = verdict.text.terminated(), .size = verdict.text.view().size()},
            .phrase_place = verdict.phrasePlace(),
            .address_place = verdict.addressPlace()};
}

bouncecheck_recipient structureOf(const Recipient& recipient) noexcept {
    return {.address = textOf(recipient.address),
            .final_address = textOf(recipient.finalAddress),
            .tag = textOf(recipient.tag),
            .outcome = static_cast<int>(recipient.outcome),
            .reason = static_cast<int>(recipient.reason),
            .advice = static_cast<int>(recipient.advice),
            .source = static_cast<int>(recipient.source),
            .basis = static_cast<int>(recipient.basis),
            .status = textOf(recipient.status),
            .reply_code = textOf(recipient.replyCode),
            .diagnostic = textOf(recipient.diagnostic),
            .remote_mta = textOf(recipient.remoteMta),
            .last_attempt = textOf(recipient.lastAttempt),
            .will_retry_until = textOf(recipient.willRetryUntil),
            .row = textOfLiteral(recipient.row),
            .quote = textOf(recipient.quote)};
}

bouncecheck_facts structureOf(const Facts& facts) noexcept {
    const ReturnedMessage& returned = facts.returned;
    return {.reporting_mta = textOf(facts.reportingMta),
            .returned_message_id = textOf(returned.messageId),
            .returned_from = textOf(returned.from),
            .returned_to = textOf(returned.to),
            .returned_subject = textOf(returned.subject),
            .returned_date = textOf(returned.date),
            .returned_list_id = textOf(returned.listId),
            .returned_return_path = textOf(returned.returnPath)};
}

bouncecheck_report_field structureOf(const ReportField& field) noexcept {
    return {.name = textOf(field.name), .value = textOf(field.value)};
}

}  // namespace bouncecheck
