#include "ledger/History.h"

#include "ledger/AddressKey.h"
#include "ledger/Protection.h"
#include "ledger/RuleSettings.h"

namespace bouncecheck::ledger {
namespace {

std::vector<HistoryLine> linesOf(Ledger& ledger, std::int64_t id) {
    Statement statement(
        ledger.database(),
        "SELECT e.seen, e.outcome, 0, e.bearing, e.reason, e.advice, e.status, e.reply_code, "
        "e.diagnostic, e.evidence, m.verdict, m.rule, m.message_id, m.place, e.id AS "
        "place_in_order "
        "FROM events e JOIN messages m ON m.id = e.message WHERE e.address = ?1 UNION ALL "
        "SELECT made, decision, 1, NULL, NULL, NULL, NULL, NULL, NULL, text, NULL, NULL, NULL, "
        "NULL, id FROM decisions WHERE address = ?1 ORDER BY 1, 3, place_in_order");
    std::vector<HistoryLine> lines;
    statement.with(id);
    while (statement.step()) {
        const auto text = [&](int column) { return std::string(statement.text(column)); };
        lines.push_back(
            {.time = statement.number(0),
             .what = text(1),
             .decision = statement.number(2) != 0 ? decisionNamed(statement.text(1)) : std::nullopt,
             .bearing = bearingNamed(statement.text(3)),
             .reason = text(4),
             .advice = text(5),
             .status = text(6),
             .replyCode = text(7),
             .diagnostic = text(8),
             .evidence = text(9),
             .verdict = text(10),
             .rule = text(11),
             .messageId = text(12),
             .place = text(13)});
    }
    return lines;
}

}  // namespace

std::optional<FullHistory> historyOf(Ledger& ledger, std::string_view address) {
    const std::string key = keyOf(address);
    Statement find(ledger.database(),
                   "SELECT id, coalesce(written, key), state, cause, reason, since, is_mailbox, "
                   "count FROM addresses WHERE key = ?1");
    if (!find.with(key).step()) return std::nullopt;
    FullHistory history = {.address = std::string(find.text(1)),
                           .state = {find.text(2) == "suppressed", causeNamed(find.text(3)),
                                     std::string(find.text(4)), find.optionalNumber(5)},
                           .isMailbox = find.number(6) != 0,
                           .count = find.number(7)};
    history.protectedBy = Protection(ledger).patternFor(key);
    history.rules = rulesOf(ledger);
    history.lines = linesOf(ledger, find.number(0));
    return history;
}

}  // namespace bouncecheck::ledger
