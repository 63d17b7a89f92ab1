#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

#include "ledger/AddressState.h"
#include "ledger/Bearing.h"

namespace bouncecheck::ledger {

/// What a report says about its address, with texts that live elsewhere.
struct ReportedFact {
    Time seen = 0;
    Bearing bearing = Bearing::none;
    std::string_view reason;

    /// The order in which reports count: of several at one time, successes are the last, and of
    /// the others those whose reason is last by name.
    std::strong_ordering operator<=>(const ReportedFact& other) const noexcept;
    bool operator==(const ReportedFact& other) const noexcept = default;
};

/// Reports against an address.
struct Counted {
    std::int64_t count = 0;
    std::optional<Time> first{};
    std::optional<Time> last{};

    void add(Time seen) noexcept;
    void add(const Counted& more) noexcept;
    bool operator==(const Counted&) const = default;
};

/// What follows from all reports on an address, told one after the other in the order in which they
/// count.
class ReportedHistory {
public:
    explicit ReportedHistory(const Rules& rules) : days_(rules) {}

    void add(const ReportedFact& fact);

    /// Without protection and decisions, which no report tells of.
    AddressHistory history(bool isMailbox) const;
    const Counted& counted() const noexcept { return counted_; }

private:
    RetryDays days_;
    std::optional<ReportSummary> retries_, suppressed_, unsubscribed_;
    Counted counted_;
};

}  // namespace bouncecheck::ledger
