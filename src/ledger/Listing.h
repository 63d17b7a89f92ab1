#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "ledger/Cause.h"
#include "ledger/Entries.h"
#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

/// An address as `forEachAddress` hands it out. What is not known is empty.
struct ListedAddress {
    std::string_view address;
    bool isSuppressed = false;
    Cause cause = Cause::none;
    std::string_view reason;
    std::optional<Time> since;
    /// Of the reports against it.
    std::optional<Time> firstSeen;
    std::optional<Time> lastSeen;
    std::int64_t count = 0;
    /// The words of the last report that counts, or those of the decision.
    std::string_view evidence;
    std::optional<Time> changed;
    std::int64_t id = 0;
};

using OnAddress = std::function<void(const ListedAddress& address)>;

/// The addresses that are suppressed, in the order of their keys.
void forEachSuppressed(Ledger& ledger, const OnAddress& onAddress);
/// Those that would be, but are protected.
void forEachProtected(Ledger& ledger, const OnAddress& onAddress);
/// All whose suppression began, ended or got another cause at `time` or later, in the order of
/// these changes. A reader that asks with the last `changed` that it has got misses none.
void forEachChanged(Ledger& ledger, Time time, const OnAddress& onAddress);

/// A report that an address is suppressed for, with the message that has it. What is not known is
/// empty.
struct DecidingReport {
    std::string_view outcome, status, replyCode, diagnostic, messageId, place;
};

/// Finds the last report of those that count.
class DecidingReports {
public:
    explicit DecidingReports(Ledger& ledger);

    /// Valid until the next. Empty for what was decided by hand.
    DecidingReport of(const ListedAddress& address);

private:
    Statement find_;
};

}  // namespace bouncecheck::ledger
