#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "ledger/Cause.h"
#include "ledger/Decision.h"
#include "ledger/Entries.h"
#include "ledger/Rules.h"

namespace bouncecheck::ledger {

/// Whether to mail an address, and what that follows from.
struct AddressState {
    bool isSuppressed = false;
    Cause cause = Cause::none;
    /// The name of the reason that was reported; "" where there is none.
    std::string reason;
    /// Since when it follows.
    std::optional<Time> since;

    bool operator==(const AddressState&) const = default;
};

/// The days on which mail failed for a while, told in their order.
class RetryDays {
public:
    explicit RetryDays(const Rules& rules) : rules_(rules) {}

    void add(Time seen);
    /// A success: the days before it no longer count.
    void clear();
    /// When there were as many days as the rules ask for.
    std::optional<Time> reached() const noexcept { return reached_; }

private:
    Rules rules_;
    /// The last days, at most as many as are asked for.
    std::deque<std::int64_t> days_;
    std::optional<Time> reached_;
};

/// All reports on an address that have the same bearing.
struct ReportSummary {
    Time first = 0;
    /// The reason of the last; of several at one time, the one that is last by name.
    std::string lastReason;
};

/// What is known of an address.
struct AddressHistory {
    bool isMailbox = false;
    bool isProtected = false;
    /// The last decision by hand.
    std::optional<Decision> decision{};
    Time decided = 0;
    std::optional<ReportSummary> unsubscribed{};
    std::optional<ReportSummary> suppressed{};
    /// Since when it has failed too often, with the reason of the last failure.
    std::optional<ReportSummary> exhausted{};
};

/// What follows from a history, by the first of these: a protection, what was decided, a wish to
/// be unsubscribed, a mailbox that does not exist, and failures on too many days.
AddressState stateOf(const AddressHistory& history);

}  // namespace bouncecheck::ledger
