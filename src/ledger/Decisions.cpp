#include "ledger/Decisions.h"

#include "ledger/AddressKey.h"

namespace bouncecheck::ledger {

std::vector<SparedAddress> decide(Ledger& ledger, Decision decision,
                                  const std::vector<std::string>& addresses, std::string_view text,
                                  Time now) {
    Transaction transaction(ledger.database());
    AddressStates states(ledger, now);
    Statement add(ledger.database(),
                  "INSERT INTO decisions (address, made, decision, text) VALUES (?1, ?2, ?3, ?4)");
    for (const std::string& address : addresses) {
        const std::string key = keyOf(address);
        const auto known = states.find(key);
        const std::int64_t id = known.value_or(states.nextId());
        if (!known) states.insert({id, key, address, true}, {});
        add.with(id, now, nameOf(decision), orNull(text)).run();
        states.update(id);
    }
    transaction.commit();
    return states.spared();
}

}  // namespace bouncecheck::ledger
