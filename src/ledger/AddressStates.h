#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ledger/AddressRows.h"
#include "ledger/AddressState.h"
#include "ledger/Ledger.h"
#include "ledger/Protection.h"
#include "ledger/ReportedHistory.h"
#include "ledger/StoredHistories.h"

namespace bouncecheck::ledger {

/// An address that would be suppressed, and the pattern that protects it.
struct SparedAddress {
    std::string address;
    std::string pattern;
    /// What it would be suppressed for: a reason, or "".
    std::string reason;
};

/// An address that the ledger does not have.
struct NewAddress {
    std::int64_t id = 0;
    std::string key;
    /// As it was first written.
    std::string written;
    bool isMailbox = false;
};

/// Writes the states of addresses within one transaction: makes them follow from what the ledger
/// holds, whatever order that has come in.
class AddressStates {
public:
    /// Everything that changes does so at one time: `now`, or later where the ledger has later
    /// changes. So the times of changes rise in the order in which they can be read.
    AddressStates(Ledger& ledger, Time now);

    std::optional<std::int64_t> find(std::string_view key);
    /// The id that the next address gets.
    std::int64_t nextId();
    /// Adds an address with all reports on it, in the order in which they count.
    void insert(const NewAddress& address, std::span<const ReportedFact> reports);
    /// Writes the state that follows for the address, to which `more` reports were added. What it
    /// finds to be protected from suppression is added to `spared`.
    void update(std::int64_t id, const Counted& more = {});

    const std::vector<SparedAddress>& spared() const noexcept { return spared_; }

private:
    AddressState spare(AddressState state, std::string_view address, std::string_view pattern);

    Protection protection_;
    Rules rules_;
    Time now_;
    AddressRows rows_;
    StoredHistories histories_;
    Statement find_, last_, add_, write_;
    std::vector<SparedAddress> spared_;
};

}  // namespace bouncecheck::ledger
