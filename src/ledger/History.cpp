#include "ledger/History.h"

#include <utility>

#include "ledger/AddressKey.h"
#include "ledger/AddressRows.h"
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
    const Snapshot snapshot(ledger.database());
    auto row = AddressRows(ledger, "WHERE key = ?1").only(key);
    if (!row) return std::nullopt;
    FullHistory history = {.address = std::move(row->written),
                           .state = std::move(row->state),
                           .isMailbox = row->isMailbox,
                           .count = row->counted.count};
    history.protectedBy = Protection(ledger).patternFor(key);
    history.rules = rulesOf(ledger);
    history.lines = linesOf(ledger, row->id);
    return history;
}

}  // namespace bouncecheck::ledger
