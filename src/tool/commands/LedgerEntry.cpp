#include "tool/commands/LedgerEntry.h"

#include <utility>

#include <bouncecheck/BounceType.h>
#include "mime/MailDate.h"
#include "tool/output/Address.h"
#include "tool/output/Evidence.h"

namespace bouncecheck {
namespace {

ledger::Report reportOf(Recipient& recipient) {
    std::string evidence(evidenceOf(recipient));
    const bool isMailbox = isAddress(recipient.address);
    return {.address = std::move(recipient.address),
            .isMailbox = isMailbox,
            .tag = std::move(recipient.tag),
            .outcome = recipient.outcome,
            .reason = recipient.reason,
            .advice = recipient.advice,
            .status = std::move(recipient.status),
            .replyCode = std::move(recipient.replyCode),
            .diagnostic = std::move(recipient.diagnostic),
            .evidence = std::move(evidence)};
}

}  // namespace

ledger::MessageEntry entryOf(Classified& message, const ledger::Digest& digest, std::string place,
                             ledger::Time now) {
    ledger::MessageEntry entry = {.digest = digest,
                                  .seen = parseMailDate(message.date).value_or(now),
                                  .verdict = bounceTypeName(message.type),
                                  .rule = message.label(),
                                  .messageId = std::move(message.messageId),
                                  .place = std::move(place),
                                  .problem = {},
                                  .reports = {}};
    entry.reports.reserve(message.recipients.size());
    for (Recipient& recipient : message.recipients) {
        entry.reports.push_back(reportOf(recipient));
    }
    return entry;
}

ledger::MessageEntry unreadEntry(const ledger::Digest& digest, std::string problem,
                                 std::string place, ledger::Time now) {
    return {.digest = digest,
            .seen = now,
            .verdict = "unread",
            .rule = {},
            .messageId = {},
            .place = std::move(place),
            .problem = std::move(problem),
            .reports = {}};
}

}  // namespace bouncecheck
