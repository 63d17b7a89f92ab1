#include "ledger/Decisions.h"

namespace bouncecheck::ledger {

std::vector<SparedAddress> decide(Ledger& ledger, Decision decision,
                                  const std::vector<std::string>& addresses, std::string_view text,
                                  Time now) {
    Transaction transaction(ledger.database());
    AddressStates states(ledger, now);
    Statement add(ledger.database(),
                  "INSERT INTO decisions (address, made, decision, text) VALUES (?1, ?2, ?3, ?4)");
    for (const std::string& address : addresses) {
        const std::int64_t id = states.idOf(address, true);
        add.with(id, now, nameOf(decision), orNull(text)).run();
        states.update(id);
    }
    transaction.commit();
    return states.spared();
}

}  // namespace bouncecheck::ledger
