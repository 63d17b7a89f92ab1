#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ledger/AddressState.h"
#include "ledger/Ledger.h"
#include "ledger/Protection.h"

namespace bouncecheck::ledger {

/// An address that would be suppressed, and the pattern that protects it.
struct SparedAddress {
    std::string address;
    std::string pattern;
    /// What it would be suppressed for: a reason, or "".
    std::string reason;
};

/// Reports against an address.
struct Counted {
    std::int64_t count = 0;
    std::optional<Time> first;
    std::optional<Time> last;

    void add(Time seen) noexcept;
};

/// The states of addresses within one transaction: makes them follow from what the ledger holds,
/// whatever order that has come in. What it takes does not grow with the number of reports on an
/// address, only with that of the days on which mail failed.
class AddressStates {
public:
    /// Everything that changes does so at one time: `now`, or later where the ledger has later
    /// changes. So the times of changes rise in the order in which they can be read.
    AddressStates(Ledger& ledger, Time now);

    /// The id of `address`, which is added when the ledger does not have it.
    std::int64_t idOf(std::string_view address, bool isMailbox);
    /// Writes the state that follows for the address, to which `more` reports were added. What it
    /// finds to be protected from suppression is added to `spared`.
    void update(std::int64_t id, const Counted& more = {});

    const std::vector<SparedAddress>& spared() const noexcept { return spared_; }

private:
    AddressHistory historyOf(std::int64_t id, bool isProtected);
    std::optional<Bearing> bearing(std::int64_t id, std::string_view name);
    std::optional<Bearing> exhaustion(std::int64_t id);

    Protection protection_;
    Rules rules_;
    Time now_;
    Statement find_, add_, read_, write_, decision_, ends_, lastSuccess_, nextRetry_;
    Database& database_;
    std::vector<SparedAddress> spared_;
};

/// The rules of a ledger, and other ones from now on.
Rules rulesOf(Ledger& ledger);
void changeRules(Ledger& ledger, const Rules& rules, Time now);

}  // namespace bouncecheck::ledger
