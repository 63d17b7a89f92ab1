#include "ledger/RuleSettings.h"

#include <vector>

#include "ledger/AddressStates.h"

namespace bouncecheck::ledger {

Rules rulesOf(Ledger& ledger) {
    Rules rules;
    Statement statement(ledger.database(), "SELECT name, value FROM settings");
    while (statement.step()) {
        if (statement.text(0) == "after") rules.after = statement.number(1);
        if (statement.text(0) == "within") rules.within = statement.number(1);
    }
    return rules;
}

void changeRules(Ledger& ledger, const Rules& rules, Time now) {
    if (rulesOf(ledger) == rules) return;
    Transaction transaction(ledger.database());
    Statement set(ledger.database(), "UPDATE settings SET value = ?2 WHERE name = ?1");
    set.with("after", rules.after).run();
    set.with("within", rules.within).run();
    std::vector<std::int64_t> failing;
    Statement find(ledger.database(),
                   "SELECT DISTINCT address FROM events WHERE bearing = 'retry' "
                   "AND address IS NOT NULL");
    while (find.step()) failing.push_back(find.number(0));
    AddressStates states(ledger, now);
    for (const std::int64_t id : failing) states.update(id);
    transaction.commit();
}

}  // namespace bouncecheck::ledger
