#pragma once

#include <cstdint>
#include <optional>

#include "ledger/AddressState.h"
#include "ledger/Bearing.h"
#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

/// What a ledger knows of addresses, found by its indexes. What that takes does not grow with the
/// number of reports on an address, only with that of the days on which mail failed.
class StoredHistories {
public:
    StoredHistories(Ledger& ledger, const Rules& rules);

    /// As far as it decides: once something does, the rest is not looked at. Without protection,
    /// which is by the key of the address.
    AddressHistory of(std::int64_t id, bool isMailbox);

private:
    std::optional<ReportSummary> summary(std::int64_t id, Bearing bearing);
    std::optional<ReportSummary> exhaustion(std::int64_t id);

    Rules rules_;
    Statement known_, decision_, ends_, lastSuccess_, nextRetry_;
};

}  // namespace bouncecheck::ledger
